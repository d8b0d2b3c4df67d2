#include "stage/forms/Gestures.h"

#include "asking/Talk.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/StageOverlay.h"

#include <QApplication>
#include <QScopedValueRollback>

namespace quillmere {

namespace {
constexpr double kSnap = 6; // pixels of the glass
} // namespace

Gestures::Gestures(Stage &stage, PreviewFrame &frame, StageOverlay &overlay, Talk &talk, QObject *parent)
    : QObject(parent), m_stage(stage), m_frame(frame), m_overlay(overlay), m_talk(talk),
      m_seen(stage, frame, overlay), m_insertion(stage, frame, talk)
{
    connect(&stage, &Stage::selectionChanged, this, &Gestures::refresh);
    connect(&stage, &Stage::placesChanged, this, &Gestures::refresh);
    connect(&stage, &Stage::textChanged, this, &Gestures::textChanged);
}

void Gestures::textChanged()
{
    m_round.end();
    if (m_isWriting || m_doing == Doing::Nothing)
        return;
    m_doing = Doing::Over; // what it would write is of the text before
    Sketch sketch = m_overlay.sketch();
    sketch.band.reset();
    sketch.guides.clear();
    m_overlay.draw(sketch);
}

void Gestures::insertNext(NewBlock kind)
{
    m_insertion.begin(kind);
    showCursor();
}

void Gestures::insertInMiddle()
{
    m_insertion.putInMiddle();
    showCursor();
}

void Gestures::press(const Pointer &pointer)
{
    m_press = pointer;
    m_pointer = pointer.at;
    m_from = m_frame.toPage(pointer.at);
    m_under = blocksUnder(pointer.at);
    m_edges = isInserting() ? Qt::Edges() : m_seen.handleUnder(pointer.at);
    m_revision = m_stage.revision();
    m_doing = Doing::Pressed;
}

void Gestures::move(const Pointer &pointer)
{
    m_pointer = pointer.at;
    if (m_doing == Doing::Pressed &&
        (pointer.at - m_press.at).manhattanLength() >= QApplication::startDragDistance())
        begin();
    if (isUnderWay())
        step(pointer, false);
    else
        refresh();
}

void Gestures::release(const Pointer &pointer)
{
    if (m_doing == Doing::Pressed)
        move(pointer);
    const Doing done = m_doing;
    if (done == Doing::Pressed)
        click(pointer);
    else if (isUnderWay())
        step(pointer, true);
    m_doing = Doing::Nothing;
    m_snapping.reset();
    m_now = {};
    if (done != Doing::Moving && done != Doing::Sizing)
        refresh();
    showCursor();
}

bool Gestures::cancel()
{
    const bool inserted = m_insertion.giveUp();
    if (inserted)
        showCursor();
    if (!isUnderWay())
        return inserted;
    m_doing = Doing::Over;
    m_stage.endTrying();
    Sketch sketch = m_overlay.sketch();
    for (qsizetype i = 0; i < m_dragged.size() && i < sketch.selected.size(); ++i)
        sketch.selected[i] = m_dragged[i].place;
    sketch.band.reset();
    sketch.guides.clear();
    sketch.label.clear();
    m_overlay.draw(sketch);
    return true;
}

void Gestures::leave()
{
    m_pointer.reset();
    if (!isUnderWay())
        refresh();
}

// ---- clicks

ClickRound::Click Gestures::clickAt(const Pointer &pointer, const QList<int> &blocks)
{
    const bool isQuick = pointer.time > 0 && m_lastClick > 0 && pointer.time >= m_lastClick &&
                         pointer.time - m_lastClick < quint64(QApplication::doubleClickInterval());
    return {pointer.at, m_revision, blocks, m_stage.selection(), isQuick};
}

void Gestures::click(const Pointer &pointer)
{
    if (isInserting() || m_revision != m_stage.revision())
        return;
    const Qt::KeyboardModifiers held = m_press.modifiers & (Qt::ControlModifier | Qt::ShiftModifier);
    const ClickRound::Click found = clickAt(m_press, m_under);
    const int seen = m_under.value(0, -1);
    QList<int> next = m_stage.selection();
    if (held == (Qt::ControlModifier | Qt::ShiftModifier)) {
        const bool climbs = m_round.isAt(found) && next.size() == 1;
        const int parent = parentOf(m_stage.outline(), climbs ? next.first() : seen);
        if (parent >= 0) {
            next = {parent};
            m_round.jump(found, parent);
        }
    } else if (held != Qt::NoModifier) {
        if (seen >= 0 && !next.removeOne(seen))
            next.append(seen);
    } else {
        const int block = m_round.clicked(found);
        next = block < 0 ? QList<int>() : QList<int>{block};
    }
    m_lastClick = pointer.time;
    m_stage.select(next, Stage::By::Picture);
}

void Gestures::doubleClick(const Pointer &pointer)
{
    m_revision = m_stage.revision();
    m_doing = Doing::Over; // until the button is let go
    const int block = m_round.doubleClicked(clickAt(pointer, blocksUnder(pointer.at)));
    if (block < 0)
        return;
    m_stage.select({block}, Stage::By::Picture);
    emit blockOpened(block);
}

// ---- drags

// Nothing has been decided when the button goes down: that may become a click.
void Gestures::begin()
{
    if (m_revision != m_stage.revision()) {
        m_doing = Doing::Over;
        return;
    }
    const QList<int> selection = m_stage.selection();
    const bool isOnSelected = selectedAt(m_from) >= 0;
    const bool isEmptyGround =
        m_under.isEmpty() || (m_under.size() == 1 && parentOf(m_stage.outline(), m_under.first()) < 0);
    if (isInserting()) {
        m_doing = Doing::Inserting;
    } else if (m_edges) {
        beginSize();
    } else if (m_press.modifiers & Qt::ShiftModifier || (!isOnSelected && isEmptyGround)) {
        m_doing = Doing::Banding;
    } else {
        if (!isOnSelected)
            m_stage.select({m_under.first()}, Stage::By::Picture);
        beginMove();
    }
    m_round.end();
}

// The selected block that is seen first there, or, where none is seen, one whose outline holds the point:
// what is cut away can be drawn back.
int Gestures::selectedAt(QPointF at) const
{
    const QList<int> &selection = m_stage.selection();
    for (const int block : m_under) {
        if (selection.contains(block))
            return block;
    }
    for (const int block : selection) {
        const std::optional<Place> place = m_stage.placeOf(block);
        if (place && place->box.contains(at))
            return block;
    }
    return -1;
}

// What is dragged comes with its rects, what is selected with its outline.
void Gestures::beginDrag(Doing doing, const QList<int> &blocks)
{
    const Outline &outline = m_stage.outline();
    QString why;
    m_before.clear();
    QList<int> movable;
    for (const int block : blocks) {
        const std::optional<RectValue> rect = rectOfRow(outline, block);
        if (rect) {
            movable.append(block);
            m_before.append({block, rect->box});
        } else if (why.isEmpty()) {
            why = whyFixed(outline, block);
        }
    }
    if (!why.isEmpty())
        m_talk.say(why);
    m_doing = movable.isEmpty() ? Doing::Refused : doing;
    if (movable.isEmpty())
        return;
    SnapTargets snapTo = targets ? targets() : SnapTargets();
    snapTo.screen = m_frame.screenSize();
    m_snapping.emplace(outline, movable, snapTo);
    m_now = {m_before, {}};
    m_dragged.clear();
    for (const int block : m_stage.selection()) {
        const std::optional<Place> place = m_stage.placeOf(block);
        if (!place)
            continue;
        Dragged dragged{place->box, -1};
        for (int around = block; around >= 0 && dragged.box < 0; around = parentOf(outline, around))
            dragged.box = movable.indexOf(around);
        m_dragged.append(dragged);
    }
    const std::optional<Place> place = m_stage.placeOf(movable.first());
    const std::optional<Box> sum = placesOnScreen(outline)[size_t(movable.first())];
    m_offset = place && sum ? place->box.topLeft() - QPointF(double(sum->x), double(sum->y)) : QPointF();
}

void Gestures::beginMove()
{
    QList<int> blocks = m_stage.selection();
    if (const int pressed = selectedAt(m_from); pressed >= 0)
        blocks.move(blocks.indexOf(pressed), 0);
    beginDrag(Doing::Moving, outermost(m_stage.outline(), blocks));
}

void Gestures::beginSize()
{
    beginDrag(Doing::Sizing, m_stage.selection());
}

Snapped Gestures::snapped(const Pointer &pointer) const
{
    const QPointF by = (m_frame.toPage(pointer.at) - m_from).toPoint();
    const bool isFree = !snaps || pointer.modifiers & Qt::ControlModifier;
    const bool keeps = pointer.modifiers & Qt::ShiftModifier;
    const double tolerance = isFree ? 0 : kSnap / m_frame.zoom();
    return m_doing == Doing::Sizing ? m_snapping->sized(m_edges, by, tolerance, keeps)
                                    : m_snapping->moved(by, tolerance, keeps);
}

void Gestures::step(const Pointer &pointer, bool isLast)
{
    if (m_revision != m_stage.revision()) {
        m_doing = Doing::Over;
        return;
    }
    switch (m_doing) {
    case Doing::Moving:
    case Doing::Sizing:
        take(snapped(pointer), isLast);
        break;
    case Doing::Banding:
    case Doing::Inserting: {
        m_band = QRectF(m_from, m_frame.toPage(pointer.at));
        Sketch sketch = m_overlay.sketch();
        sketch.hovered.reset();
        sketch.label.clear();
        sketch.band = m_band;
        if (m_doing == Doing::Inserting && !isLast) {
            sketch.label = numbersOf(m_insertion.boxAt(m_band));
            sketch.labelled = m_band.normalized();
        }
        m_overlay.draw(sketch);
        if (isLast && m_doing == Doing::Banding) {
            selectBand();
        } else if (isLast) {
            const QScopedValueRollback writing(m_isWriting, true);
            m_insertion.putAt(m_band, m_revision);
        }
        break;
    }
    default:
        break;
    }
}

void Gestures::take(const Snapped &snapped, bool isLast)
{
    if (!isLast && snapped.boxes == m_now.boxes && snapped.guides == m_now.guides)
        return;
    const bool isOther = snapped.boxes != m_now.boxes;
    m_now = snapped;
    Sketch sketch;
    sketch.hasHandles = isLast && m_dragged.size() == 1; // they would hide what is small
    for (const Dragged &dragged : std::as_const(m_dragged)) {
        QRectF place = dragged.place;
        if (dragged.box >= 0) {
            const Box &was = m_before[dragged.box].box, &is = m_now.boxes[dragged.box].box;
            place.translate(double(is.x - was.x), double(is.y - was.y));
            place.setWidth(place.width() + double(is.w - was.w));
            place.setHeight(place.height() + double(is.h - was.h));
        }
        sketch.selected.append(place);
    }
    if (!isLast) {
        for (Guide guide : std::as_const(m_now.guides)) {
            guide.line.translate(m_offset);
            guide.text += m_offset;
            sketch.guides.append(guide);
        }
        sketch.label = numbersOf(m_now.boxes.first().box);
        sketch.labelled = sketch.selected.value(0);
    }
    m_overlay.draw(sketch);
    if (isLast) {
        const QScopedValueRollback writing(m_isWriting, true);
        m_stage.write(rectChanges(m_stage.outline(), m_now.boxes), m_revision, m_stage.selection());
    } else if (isOther) {
        m_stage.tryOut(m_now.boxes, m_revision);
    }
}

void Gestures::selectBand()
{
    QList<int> next = m_press.modifiers & Qt::ControlModifier ? m_stage.selection() : QList<int>();
    if (const QList<Place> *places = m_stage.places())
        next += blocksInside(*places, m_band);
    Sketch sketch = m_overlay.sketch();
    sketch.band.reset();
    m_overlay.draw(sketch);
    m_stage.select(next, Stage::By::Picture);
}

void Gestures::refresh()
{
    if (isUnderWay() && m_doing != Doing::Pressed)
        return;
    m_seen.draw(m_pointer);
    showCursor();
}

void Gestures::showCursor()
{
    m_seen.showCursor(m_pointer, isInserting());
}

} // namespace quillmere
