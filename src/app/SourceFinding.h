#pragma once

#include <QObject>

class QAction;
class QMainWindow;

namespace quillmere {

class Commands;
class FindBar;
class SourceBox;
class TabStrip;
class Talk;

// How one finds one's way in the source while its tab is shown: Ctrl+F for the bar, Shift+F3 back, Ctrl+G to
// a line; with items in the Tool menu. On other tabs Ctrl+F is that of a list.
class SourceFinding : public QObject
{
    Q_OBJECT

public:
    SourceFinding(SourceBox &source, TabStrip &strip, Commands &menu, Talk &talk, QMainWindow &window);

    // F3. False where the bar has nothing to look for.
    bool next();

private:
    void follow();
    void goToLine();

    SourceBox &m_source;
    TabStrip &m_strip;
    Talk &m_talk;
    FindBar *m_bar;
    QAction *m_find, *m_previous, *m_goToLine;
};

} // namespace quillmere
