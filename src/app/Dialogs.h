#pragma once

#include "files/Progress.h"

#include <QString>

#include <functional>
#include <memory>

class QAction;
class QMainWindow;

namespace quillmere {

class Commands;
class Files;
class LiveIndex;
class Talk;
class SourceTab;
class ThemeProject;
class frmReplace;

// The dialogs of the main window. Those that stay open beside it are made when they are first wanted.
class Dialogs
{
public:
    // `showSource` turns to the Source tab; `restored` is given the path of a file that was written anew from
    // one of its versions.
    Dialogs(QMainWindow &window, SourceTab &sourceTab, ThemeProject &theme, const LiveIndex &index,
            Files &files, Talk &talk, std::function<void()> showSource,
            std::function<void(const QString &path)> restored);
    ~Dialogs();

    void addCommands(Commands &menu);
    // What F3 is for while the dialog of replacements is not open; false where it has nothing to look for.
    std::function<bool()> findsInBar;

private:
    frmReplace &replaceDialog();
    void findNext();
    void openRestore();

    QMainWindow &m_window;
    SourceTab &m_sourceTab;
    ThemeProject &m_theme;
    const LiveIndex &m_index;
    Files &m_files;
    Talk &m_talk;
    std::function<void()> m_showSource;
    std::function<void(const QString &)> m_restored;
    QAction *m_findNext;       // F3
    QAction *m_save = nullptr; // of the source
    std::unique_ptr<frmReplace> m_replace;
};

} // namespace quillmere
