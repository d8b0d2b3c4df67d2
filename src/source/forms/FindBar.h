#pragma once

#include "source/TextFind.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace quillmere {

class SourceBox;

// A line above the source to find a text in it. All places are marked and counted while one types, and the
// next one behind the caret is selected. The box keeps its size: its lines begin below the bar.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(SourceBox &box);

    // Shows the bar and goes there, with what is selected in one line.
    void open();
    // Selects the next place behind the selection, or the last one before it, and goes on at the other end.
    // False while there is no text to look for.
    bool next() { return go(true); }
    bool previous() { return go(false); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeControls();
    void close();
    void placeBar();
    void look();
    bool go(bool onward);
    void count();
    void say(const QString &wrapped = {});
    FindText what() const;

    SourceBox &m_box;
    QLineEdit *txtFind;
    QLabel *lblFind;
    QToolButton *chkFindCase, *chkFindWord;
    qsizetype m_start = 0;     // where looking began, so that a letter taken back leads back
    QList<qsizetype> m_places; // of the text and the revision below
    FindText m_counted;
    qint64 m_revision = -1;
    QTimer m_counting;
};

} // namespace quillmere
