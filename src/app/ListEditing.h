#pragma once

#include "controls/RowsHistory.h"

#include <QTimer>

class QAction;
class QKeySequence;
class QMainWindow;

namespace quillmere {

class Commands;
class Files;
class SourceBox;
class TabFrame;
class TabStrip;
class ThemeProject;
class TranslationSteps;

// What the lists of the catalogues have in common with a text: undo and redo, a mark on the tab while
// something is not saved, Ctrl+S, and Ctrl+F to filter by.
class ListEditing : public QObject
{
    Q_OBJECT

public:
    ListEditing(ThemeProject &theme, const QList<TabFrame *> &tabs, TabStrip &strip, const SourceBox &source,
                TranslationSteps &translations, Files &files, const Commands &menu, QMainWindow &window);

signals:
    // A list or the source was edited.
    void edited();

private:
    void showMarks();
    // For the main window, while this tab is shown.
    QAction *addKey(QMainWindow &window, int tab, const QKeySequence &key);

    ThemeProject &m_theme;
    TabStrip &m_strip;
    const SourceBox &m_source;
    RowsHistory m_windows, m_images, m_colours, m_strings, m_blocks;
    QTimer m_soon; // marks follow changes that come many at a time
};

} // namespace quillmere
