#include "app/RowMenus.h"

#include "asking/Talk.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "controls/TabFrame.h"
#include "files/Paths.h"
#include "rows/ListRows.h"
#include "theme/ThemeProject.h"

#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QUrl>

#include <functional>

namespace quillmere {

struct RowMenus::Items
{
    int tab; // in the strip
    const char *list;
    int name = -1; // column; -1 where a row has none
    File file = File::None;
    QList<const char *> commands = {}; // of the menu bar, about the selected row
    const char *ofTicked = nullptr;    // the same about all rows with a tick
};

RowMenus::RowMenus(const ThemeProject &theme, const QList<TabFrame *> &tabs, const Commands &menu, Talk &talk,
                   QObject *parent)
    : QObject(parent), m_theme(theme), m_menu(menu), m_talk(talk)
{
    const Items lists[] = {
        {0, "lvTheme", 0, File::OfEntry},
        {1, "LvWidget", 1, File::OfText, {"mnuWidgetDuplicate"}, "mnuWidgetDel"},
        {1, "lvWidgetDel", 0, File::Unlisted, {"mnuWidgetFile", "mnuWidgetDelFile"}},
        {2, "lvImage", 1, File::OfText, {"mnuImgRubah", "mnuImgReplace", "mnuImgChe"}},
        {3, "lvColor", 1, File::None, {}, "mnuCHapus"},
        {4, "lvLang", 1, File::OfText},
        {4, "LvBhs", 1},
        {5, "lvFont", 1, File::OfFont},
        {6, "lvKeyMap", 0},
        {6, "lvKeyGroup", 1},
        {8, "lvBlock", 1},
        {8, "LvBlock2", 1},
    };
    for (const Items &items : lists) {
        auto *list = tabs[items.tab]->findChild<ListView *>(QLatin1String(items.list));
        connect(list, &ListView::menuWanted, this,
                [this, items, list](QMenu &popup, int row) { add(items, *list, popup, row); });
    }
    tabs[4]->findChild<ListView *>(QStringLiteral("LvBhs"))->setOpenCaption(tr("Translate..."));
    tabs[8]->findChild<ListView *>(QStringLiteral("lvBlock"))->setOpenCaption(tr("Show in the Source"));
}

void RowMenus::add(const Items &items, const ListView &list, QMenu &menu, int row) const
{
    menu.addSeparator();
    for (const char *command : items.commands)
        menu.addAction(m_menu.action(command));
    const QAbstractItemModel &rows = *list.model();
    bool anyTicked = false;
    for (int each = 0; items.ofTicked && each < rows.rowCount() && !anyTicked; ++each)
        anyTicked = rows.index(each, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    const auto item = [&](const QString &caption, const char *name, const QString &tip,
                          const std::function<void()> &command) {
        QAction *made = menu.addAction(caption);
        made->setObjectName(QLatin1String(name));
        made->setToolTip(tip);
        connect(made, &QAction::triggered, this, command);
        return made;
    };
    if (items.ofTicked)
        item(tr("Remove Ticked"), "mnuRemoveTicked", tr("Removes every ticked row."),
             [action = m_menu.action(items.ofTicked)] { action->trigger(); })
            ->setEnabled(anyTicked);
    menu.addSeparator();
    if (const QString name = rows.index(row, items.name).data().toString(); !name.isEmpty())
        item(tr("Copy Name"), "mnuCopyName", tr("Copies the name to the clipboard."),
             [name] { QGuiApplication::clipboard()->setText(name); });
    const QString path = pathOf(items.file, list, row);
    if (path.isEmpty())
        return;
    item(tr("Copy Path"), "mnuCopyPath", tr("Copies the path of the file to the clipboard."),
         [path] { QGuiApplication::clipboard()->setText(path); });
    item(tr("Show in Folder"), "mnuShowFolder", tr("Opens the folder of the file in the file manager."),
         [this, path] { showFolder(path); })
        ->setEnabled(!folderToShow(path).isEmpty());
}

QString RowMenus::pathOf(File file, const ListView &list, int row) const
{
    const QAbstractItemModel &rows = *list.model();
    const QString text = rows.index(row, 0).data().toString();
    switch (file) {
    case File::OfText:
        return text;
    case File::Unlisted:
        return m_theme.widgets.unlistedPath(row);
    case File::OfFont:
        return QString(folderOf(m_theme.fontFile.path()) +
                       withOwnSeparators(rows.index(row, 2).data().toString()));
    case File::OfEntry:
        return joinPath(m_theme.folder(), withOwnSeparators(rows.index(row, 1).data().toString()));
    case File::None:
        break;
    }
    return {};
}

// The system starts programs for files, and for folders that are programs. Nothing of a theme leads there: it
// is only ever a plain folder of the theme itself, once all links are followed.
QString RowMenus::folderToShow(const QString &path) const
{
    const QString file = findFile(path);
    const QString folder =
        realPlace(file.isEmpty() ? findFolder(folderOf(path).toString()) : folderOf(file).toString());
    const QFileInfo found(folder);
    const bool isOfTheme =
        found.isDir() && (liesBelow(folder, m_theme.folder()) || folder == realPlace(m_theme.folder()));
    return isOfTheme && !found.isBundle() ? folder : QString();
}

void RowMenus::showFolder(const QString &path) const
{
    const QString folder = folderToShow(path);
    if (folder.isEmpty() || !QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        m_talk.say(tr("No program can show the folder of %1.").arg(path));
}

} // namespace quillmere
