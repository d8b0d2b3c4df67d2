#pragma once

#include "stage/ClickRound.h"
#include "stage/Snapping.h"
#include "stage/forms/Insertion.h"
#include "stage/forms/Seen.h"
#include "stage/forms/Stage.h"

#include <functional>
#include <optional>

namespace quillmere {

class PreviewFrame;
class StageOverlay;
class Talk;

// What the mouse does in the picture: it selects, moves, sizes, draws a band or a new block. The text is
// written when the button is let go, once; until then only the picture follows. A gesture that began in
// another text than the present one is over.
class Gestures : public QObject
{
    Q_OBJECT

public:
    struct Pointer
    {
        QPointF at; // pixels of the browser
        Qt::KeyboardModifiers modifiers;
        quint64 time = 0; // ms; 0 where it is not known
    };

    Gestures(Stage &stage, PreviewFrame &frame, StageOverlay &overlay, Talk &talk, QObject *parent = nullptr);

    // The left button. To press it and to double-click the places of the blocks must be known.
    void press(const Pointer &pointer);
    void move(const Pointer &pointer);
    void release(const Pointer &pointer);
    void doubleClick(const Pointer &pointer);
    void leave();
    // Puts everything back; the release that follows does nothing. False where there is no gesture.
    bool cancel();
    bool isUnderWay() const { return m_doing != Doing::Nothing && m_doing != Doing::Over; }
    // The next click begins again with what is seen.
    void endRound() { m_round.end(); }
    // The next drag draws the place of a new block, or Enter puts it into the middle.
    void insertNext(NewBlock kind);
    bool isInserting() const { return m_insertion.isWaiting(); }
    void insertInMiddle();
    // The blocks under a point of the browser, what is seen first; none while that is not known.
    QList<int> blocksUnder(QPointF at) { return m_seen.blocksUnder(at); }

    std::function<SnapTargets()> targets; // what a drag may snap to, asked when it begins; nothing if unset
    bool snaps = true;                    // unless Ctrl is held

signals:
    // The properties of a block of the list are to be shown.
    void blockOpened(int row);

private:
    enum class Doing { Nothing, Pressed, Moving, Sizing, Banding, Inserting, Refused, Over };
    struct Dragged
    {
        QRectF place;       // at the beginning
        qsizetype box = -1; // which of the boxes of the drag it goes with; -1 for none
    };

    void begin();
    int selectedAt(QPointF at) const;
    void beginDrag(Doing doing, const QList<int> &blocks);
    void beginMove();
    void beginSize();
    void step(const Pointer &pointer, bool isLast);
    void click(const Pointer &pointer);
    Snapped snapped(const Pointer &pointer) const;
    void take(const Snapped &snapped, bool isLast);
    void selectBand();
    ClickRound::Click clickAt(const Pointer &pointer, const QList<int> &blocks);
    void refresh();
    void showCursor();
    void textChanged();

    Stage &m_stage;
    PreviewFrame &m_frame;
    StageOverlay &m_overlay;
    Talk &m_talk;
    Doing m_doing = Doing::Nothing;
    Pointer m_press;
    QPointF m_from; // the press, in pixels of the page
    QList<int> m_under;
    Qt::Edges m_edges;
    qint64 m_revision = 0; // of the text in which the gesture began
    std::optional<Snapping> m_snapping;
    QList<BlockBox> m_before; // the rects of what is dragged
    QList<Dragged> m_dragged; // what is selected
    Snapped m_now;
    QPointF m_offset; // from sums of rects to pixels of the page
    QRectF m_band;
    Seen m_seen;
    Insertion m_insertion;
    ClickRound m_round;
    quint64 m_lastClick = 0;
    std::optional<QPointF> m_pointer; // where it rests in the browser
    bool m_isWriting = false;
};

} // namespace quillmere
