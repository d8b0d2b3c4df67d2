#pragma once

#include "checks/forms/LiveCheck.h"

namespace quillmere {

class CheckTab;
class Commands;
class Hovers;
class LiveIndex;
class OutsideChanges;
class SourceBox;
class StatusLine;
class TabStrip;
class Talk;
class ThemeNames;
class ThemeProject;

// The checks in the main window: the tab, the marks in the source, the line below, and what mends a problem.
class ThemeChecks : public QObject
{
    Q_OBJECT

public:
    // Makes the tab, which belongs to `page`.
    ThemeChecks(LiveIndex &index, QWidget *page, QObject *parent = nullptr);

    struct Parts
    {
        ThemeNames &names;
        SourceBox &source;
        Hovers &hovers;
        StatusLine &status;
        OutsideChanges &outside;
        TabStrip &strip;
        int tab; // of the checks, in the strip
        const ThemeProject &theme;
        Commands &menu;
        Talk &talk;
    };
    void connectTo(const Parts &parts);

    LiveCheck check;
    CheckTab *tab;

private:
    LiveIndex &m_index;
};

} // namespace quillmere
