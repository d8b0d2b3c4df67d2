#pragma once

#include "controls/LateWork.h"
#include "stage/forms/Stage.h"

#include <QTimer>

class QWidget;

namespace quillmere {

class Commands;

// Keeps the rows of lvBlock and the caret of the source at the blocks that are selected, and selects what is
// chosen there. It never takes the keyboard, and scrolls only to what is out of sight.
class BlockLink : public QObject
{
    Q_OBJECT

public:
    BlockLink(Stage &stage, SourceTab &tab, QObject *parent = nullptr);

    // `window` gets the command as well, for every tab.
    void addCommands(Commands &menu, QWidget &window);
    // Where it is off, the list, the source and the picture each keep what is selected there.
    bool isOn() const { return m_isOn; }
    // The rows that are selected in lvBlock, in their order.
    QList<int> listed() const;
    // What a command is for: what is selected, or, where the two are not the same, what is selected in the
    // list while that has the keyboard.
    QList<int> chosen() const;
    void takeChosen() { m_stage.select(chosen(), Stage::By::List); }

signals:
    void chosenChanged();
    // The text is another one, and nobody is typing.
    void textSettled();

private:
    bool isListOfText() const;
    void onSelected(Stage::By by);
    void onListSelected();
    void onListed();
    void onTextChanged();
    void onCaretMoved();
    void onKeyHandled(bool isText);
    // `byText`: it was a change of the text that moved the caret. Then whoever stands in a selected block
    // leaves the others selected.
    void followCaret(bool byText);
    // Typing pauses, or the text has been outlined.
    void settle();
    void showInList();
    void showInSource();

    Stage &m_stage;
    SourceTab &m_tab;
    bool m_isOn = true;
    bool m_showing = false;      // what happens in list and source is its own doing
    bool m_isLate = false;       // the caret is followed when the text has been outlined
    bool m_listWaits = false;    // something was selected in a list of an older text
    bool m_caretMoved = false;   // by the key that is being handled
    int m_documentRevision = -1; // when the text was last told to have changed
    LateWork m_pause;            // waits while one types
    QTimer m_soon;               // the caret is to be followed
    QTimer m_changing;           // what the caret does now may come of a change, as of undoing one
};

} // namespace quillmere
