#pragma once

#include <QObject>

class QAction;
class QKeySequence;
class QMainWindow;

namespace quillmere {

class FindBar;
class SourceBox;
class TabStrip;
class Talk;

// The keys by which one finds one's way in the source while its tab is shown: Ctrl+F for the bar, Shift+F3
// back, Ctrl+G to a line.
class SourceFinding : public QObject
{
    Q_OBJECT

public:
    SourceFinding(SourceBox &source, TabStrip &strip, Talk &talk, QMainWindow &window);

    // F3. False where the bar has nothing to look for.
    bool next();

private:
    QAction *addKey(QMainWindow &window, const char *name, const QKeySequence &key);
    void goToLine();

    SourceBox &m_source;
    TabStrip &m_strip;
    Talk &m_talk;
    FindBar *m_bar;
};

} // namespace quillmere
