#pragma once

#include "app/RecentThemes.h"

#include <QObject>

#include <functional>

class QWidget;

namespace quillmere {

class MainMenu;
class Talk;

// The commands that lead to another theme: Open Theme, New Theme, Recent Themes.
class ThemeMenu : public QObject
{
    Q_OBJECT

public:
    // `open` opens the theme in a folder; `folder` is the one that is chosen now.
    ThemeMenu(MainMenu &menu, std::function<void(const QString &)> open, std::function<QString()> folder,
              Talk &talk, QWidget &window);

    // A theme was opened, and is a recent one from now on.
    void add(const QString &folder) { m_recent.add(folder); }
    // The person does not want to see it among the recent ones.
    void remove(const QString &folder) { m_recent.remove(folder); }

    // The folder to open for one that a person names: themes are handed on in a folder of their own, and it
    // is that one which people choose.
    static QString themeIn(const QString &folder);

private:
    void mnuOpenTheme_Click();
    void mnuNewTheme_Click();

    std::function<void(const QString &)> m_open;
    std::function<QString()> m_folder;
    Talk &m_talk;
    QWidget &m_window;
    RecentThemes m_recent;
};

} // namespace quillmere
