#pragma once

#include <QList>
#include <QObject>

class QMenu;

namespace quillmere {

class Commands;
class ListView;
class TabFrame;
class Talk;
class ThemeProject;

// What the context menus of the tabs' lists offer for a row beside what every list has: its commands, copies
// of its name and path, and the folder that its file lies in.
class RowMenus : public QObject
{
    Q_OBJECT

public:
    RowMenus(const ThemeProject &theme, const QList<TabFrame *> &tabs, const Commands &menu, Talk &talk,
             QObject *parent);

private:
    enum class File { None, OfText, Unlisted, OfFont, OfEntry };
    struct Items;

    void add(const Items &items, const ListView &list, QMenu &menu, int row) const;
    QString pathOf(File file, const ListView &list, int row) const;
    QString folderToShow(const QString &path) const;
    void showFolder(const QString &path) const;

    const ThemeProject &m_theme;
    const Commands &m_menu;
    Talk &m_talk;
};

} // namespace quillmere
