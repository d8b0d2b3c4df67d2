#pragma once

#include "catalogues/ColourConversion.h"

#include <QObject>

class QAction;

namespace quillmere {

class ColourTab;
class Commands;
class SourceBox;
class Talk;
class ThemeProject;
class frmcolor;

// The colour dialog, for the rows of the Color tab, and the commands that turn names into codes and back.
class ColourWork : public QObject
{
    Q_OBJECT

public:
    // The dialog opens a little into `beside`, so that it hides no list.
    ColourWork(ColourTab &tab, ThemeProject &theme, SourceBox &source, const QWidget &beside, Talk &talk,
               QWidget &window);

    void addCommands(Commands &menu);

private:
    frmcolor &dialog();
    void convert(ColourForm to);

    ColourTab &m_tab;
    ThemeProject &m_theme;
    SourceBox &m_source;
    const QWidget &m_beside;
    Talk &m_talk;
    QWidget &m_window;
    QAction *m_save = nullptr;      // of the Color menu
    frmcolor *m_frmcolor = nullptr; // made when it is first wanted
};

} // namespace quillmere
