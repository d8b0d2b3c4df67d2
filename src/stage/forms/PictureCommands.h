#pragma once

#include "stage/ElementChanges.h"
#include "stage/forms/Stage.h"

#include <QElapsedTimer>

#include <functional>

namespace quillmere {

class SourceTab;
class Talk;

// What keys and menus do to the blocks that are selected. Each that writes is one step to be undone and
// leaves the keyboard where it is.
class PictureCommands : public QObject
{
    Q_OBJECT

public:
    PictureCommands(Stage &stage, SourceTab &tab, Talk &talk, QObject *parent = nullptr);

    // False where nothing was selected.
    bool selectNothing();
    // In the order of the document, without what is not drawn; round and round.
    enum class Way { On, Back };
    void selectNext(Way way);
    // Moves by so many pixels, or sizes. A run within a second is one step.
    enum class Arrow { Moves, Sizes };
    void arrow(QPoint by, Arrow arrow);
    // Something else was done: the next arrow begins a step of its own.
    void endRun() { m_sinceArrow.invalidate(); }

    // Where the next step, back or forward, is not one of the text: these take it, and return true.
    std::function<bool()> stepsBackElsewhere, stepsForwardElsewhere;

public slots:
    void selectAll();
    void selectParent();
    void remove();
    void duplicate();
    void copy();
    void cut();
    void paste();
    void bringForward();
    void sendBack();
    // On the document of the source box, unless a step was made elsewhere since.
    void undo();
    void redo();
    void openProperties();
    void goToSource();
    // Ticks the blocks in the list.
    void hide();

signals:
    // The properties of a block of the list are to be shown.
    void blockOpened(int row);
    // The Source tab is to be shown.
    void sourceWanted();

private:
    QList<int> drawn() const;
    void write(const Edited &edited);
    bool canTakeOut();

    Stage &m_stage;
    SourceTab &m_tab;
    Talk &m_talk;
    QElapsedTimer m_sinceArrow;
    qint64 m_arrowRevision = -1; // of the text that the last arrow left
    QList<int> m_arrowed;
};

} // namespace quillmere
