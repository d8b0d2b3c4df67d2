#include "app/MenuCommands.h"

#include <QAction>
#include <QMenu>

namespace quillmere {

namespace {

void gather(QList<MenuCommand> &commands, const QList<QAction *> &items, const QString &above,
            bool isAvailable)
{
    for (QAction *item : items) {
        if (!item->isVisible() || item->isSeparator() || item->text().isEmpty())
            continue;
        const QString caption =
            above.isEmpty() ? plainCaption(*item) : QString(above + u" > " + plainCaption(*item));
        const bool isItAvailable = isAvailable && item->isEnabled();
        if (item->menu())
            gather(commands, item->menu()->actions(), caption, isItAvailable);
        else
            commands.append({item, caption, isItAvailable});
    }
}

} // namespace

QList<MenuCommand> commandsOf(const QList<QAction *> &items)
{
    QList<MenuCommand> commands;
    gather(commands, items, {}, true);
    return commands;
}

QString plainCaption(const QAction &item)
{
    QString caption = item.text();
    return caption.remove(u'&');
}

} // namespace quillmere
