#include "controls/Tips.h"

#include <QAction>
#include <QHash>

namespace quillmere {

namespace {

// An action without a tip gives its caption for one.
bool hasOwnTip(const QAction &action)
{
    QString caption = action.text();
    caption.remove(u'&').remove(QStringLiteral("..."));
    return !action.toolTip().isEmpty() && action.toolTip() != caption;
}

} // namespace

void giveTips(QWidget &window, std::span<const Tip> tips)
{
    QHash<QString, const char *> texts;
    for (const Tip &tip : tips)
        texts.insert(QLatin1String(tip.name), tip.text);
    const QList<QObject *> objects = window.findChildren<QObject *>();
    for (QObject *object : objects) {
        const char *text = object->objectName().isEmpty() ? nullptr : texts.value(object->objectName());
        if (!text)
            continue;
        if (auto *action = qobject_cast<QAction *>(object); action && !hasOwnTip(*action))
            action->setToolTip(QObject::tr(text));
        else if (auto *control = qobject_cast<QWidget *>(object); control && control->toolTip().isEmpty())
            control->setToolTip(QObject::tr(text));
    }
}

} // namespace quillmere
