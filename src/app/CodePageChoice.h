#pragma once

#include "files/TextFile.h"

#include <QObject>

#include <functional>

namespace quillmere {

class Files;
class OpenDocument;
class StatusLine;
class Talk;
class ThemeProject;

// By which rule bytes become text: the person's choice in the status line, remembered. It holds for what is
// opened from then on; the theme is opened again at once, and so is the window, unless it was edited.
class CodePageChoice : public QObject
{
    Q_OBJECT

public:
    // `loadTheme` opens the theme again. Whoever cancels it cancels the choice.
    CodePageChoice(StatusLine &status, ThemeProject &theme, OpenDocument &window,
                   std::function<void()> loadTheme, Files &files, Talk &talk, QObject *parent = nullptr);

private:
    void choose(CodePageRule rule);

    StatusLine &m_status;
    ThemeProject &m_theme;
    OpenDocument &m_window;
    std::function<void()> m_loadTheme;
    Files &m_files;
    Talk &m_talk;
};

} // namespace quillmere
