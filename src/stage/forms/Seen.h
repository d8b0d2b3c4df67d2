#pragma once

#include <QList>
#include <QPointF>
#include <QString>

#include <optional>

namespace quillmere {

class PreviewFrame;
class Stage;
class StageOverlay;
struct Box;
struct Sketch;

// The numbers of a rect as the picture's labels show them.
QString numbersOf(const Box &box);

// What there is to see over the picture while no drag changes it: the outline of what is selected, and of
// what is under the pointer with a label. Points are those of the browser.
class Seen
{
public:
    Seen(Stage &stage, PreviewFrame &frame, StageOverlay &overlay)
        : m_stage(stage), m_frame(frame), m_overlay(overlay)
    {
    }

    // The blocks under a point, what is seen first; none while that is not known.
    QList<int> blocksUnder(QPointF at) const;
    // The edges that the handle there moves; none where there is no handle.
    Qt::Edges handleUnder(QPointF at) const;
    // While the page is on its way the outlines stay: what was dragged is already drawn where it goes.
    void draw(std::optional<QPointF> pointer);
    // `draws`: a press begins a new block.
    void showCursor(std::optional<QPointF> pointer, bool draws);

private:
    void drawHover(Sketch &sketch, QPointF pointer) const;
    QString described(int block) const;

    Stage &m_stage;
    PreviewFrame &m_frame;
    StageOverlay &m_overlay;
};

} // namespace quillmere
