#pragma once

#include "app/ThemePictures.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace quillmere {

class MainMenu;
class OpenDocument;
class Overview;
class PreviewFrame;
class SourceTab;
class StartPage;
class Talk;
class ThemeMenu;
class WidgetTab;

// The start page in the main window: what its buttons do, and when it goes.
class FirstMinute : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        PreviewFrame &frame;
        const ThemeProject &theme;
        Overview &overview;
        const OpenDocument &document;
        const SourceTab &source;
        const WidgetTab &catalogue;
        const MainMenu &menu;
        ThemeMenu &themes;
        std::function<void(const QString &folder)> openTheme;
        Talk &talk;
    };
    FirstMinute(const Parts &parts, QWidget &window);

    // Shows the page, unless there is something to be seen already.
    void show();

private:
    void makePage();
    void leave();
    void openExample();
    void forget(const QString &folder);

    Parts m_parts;
    QWidget &m_window;
    ThemePictures m_pictures;
    QPointer<StartPage> m_page; // made when it is first wanted
};

} // namespace quillmere
