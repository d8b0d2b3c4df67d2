#pragma once

#include <QStringList>

#include <functional>

class QMenu;

namespace quillmere {

// The menu of the themes opened last, newest first; remembered between runs.
class RecentThemes
{
public:
    // `open` gets the folder of the theme chosen.
    RecentThemes(QMenu &menu, std::function<void(const QString &)> open);

    void add(const QString &folder);
    void remove(const QString &folder);
    // Their folders, newest first.
    static QStringList folders();

private:
    void fill();

    QMenu &m_menu;
    std::function<void(const QString &)> m_open;
};

} // namespace quillmere
