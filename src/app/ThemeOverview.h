#pragma once

#include "gallery/forms/Overview.h"

namespace quillmere {

class Commands;
class Files;
class LiveCheck;
class LiveIndex;
class OpenDocument;
class OutsideChanges;
class SourceBox;
class WidgetTab;

// The overview in the main window: when it comes and goes, and what its pictures and marks go by.
class ThemeOverview : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        PreviewFrame &frame;
        const ThemeProject &theme;
        LiveIndex &index;
        LiveCheck &check;
        SourceBox &source;
        WidgetTab &windows;
        OpenDocument &document;
        OutsideChanges &outside;
        Files &files;
        Talk &talk;
    };
    ThemeOverview(const Parts &parts, QWidget &window);
    ~ThemeOverview() override;

    void addCommands(Commands &menu);
    // The person has opened a theme: it is shown, unless a window is, or it has none.
    void themeOpened();
    Overview &overview() const { return *m_overview; }

private:
    void leave();
    void toggle();
    void showWindows();
    void showProblems();

    Parts m_parts;
    QWidget &m_window;
    QPointer<Overview> m_overview; // of the frame
    QTimer m_windows, m_problems;  // once for many changes
    bool m_cameItself = false;     // and goes when something is typed
};

} // namespace quillmere
