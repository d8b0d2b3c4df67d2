#include "stage/forms/Seen.h"

#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/Handles.h"
#include "stage/RectChanges.h"
#include "stage/forms/Stage.h"
#include "stage/forms/StageOverlay.h"

namespace quillmere {

namespace {

Qt::CursorShape cursorOf(Qt::Edges edges)
{
    switch (edges.toInt()) {
    case Qt::LeftEdge | Qt::TopEdge:
    case Qt::RightEdge | Qt::BottomEdge:
        return Qt::SizeFDiagCursor;
    case Qt::RightEdge | Qt::TopEdge:
    case Qt::LeftEdge | Qt::BottomEdge:
        return Qt::SizeBDiagCursor;
    case Qt::LeftEdge:
    case Qt::RightEdge:
        return Qt::SizeHorCursor;
    case Qt::TopEdge:
    case Qt::BottomEdge:
        return Qt::SizeVerCursor;
    default:
        return Qt::ArrowCursor;
    }
}

} // namespace

QString numbersOf(const Box &box)
{
    return QStringLiteral("%1, %2, %3, %4").arg(box.x).arg(box.y).arg(box.w).arg(box.h);
}

QList<int> Seen::blocksUnder(QPointF at) const
{
    const QList<Place> *places = m_stage.places();
    return places ? blocksAt(*places, m_frame.toPage(at)) : QList<int>();
}

Qt::Edges Seen::handleUnder(QPointF at) const
{
    const Sketch &sketch = m_overlay.sketch();
    if (!sketch.hasHandles || sketch.selected.isEmpty())
        return {};
    return handleAt(m_overlay.onGlass(sketch.selected.first()), at);
}

QString Seen::described(int block) const
{
    const Outline &outline = m_stage.outline();
    const qint32 element = outline.blocks()[size_t(block)];
    const std::optional<Attribute> name = outline.nameAttribute(element);
    const std::optional<Attribute> kind = outline.attribute(element, u"class");
    QStringList parts;
    if (name)
        parts.append(outline.at(name->value).toString().simplified());
    if (kind)
        parts.append(outline.at(kind->value).toString().simplified());
    if (const std::optional<RectValue> rect = rectOfRow(outline, block))
        parts.append(numbersOf(rect->box));
    parts.removeAll(QString());
    return parts.join(QStringLiteral("   "));
}

void Seen::drawHover(Sketch &sketch, QPointF pointer) const
{
    const int block = blocksUnder(pointer).value(0, -1);
    if (block < 0 || handleUnder(pointer))
        return;
    const std::optional<Place> place = m_stage.placeOf(block);
    sketch.hovered = place->box;
    sketch.label = described(block);
    sketch.labelled = place->box;
}

void Seen::draw(std::optional<QPointF> pointer)
{
    const QList<int> selection = m_stage.selection();
    if (selection.isEmpty() && !pointer) {
        m_overlay.draw({});
        return;
    }
    if (!m_stage.places()) {
        if (selection.isEmpty())
            m_overlay.draw({});
        return;
    }
    Sketch sketch;
    for (const int block : selection) {
        if (const std::optional<Place> place = m_stage.placeOf(block))
            sketch.selected.append(place->box);
    }
    sketch.hasHandles = selection.size() == 1 && sketch.selected.size() == 1;
    if (pointer)
        drawHover(sketch, *pointer);
    m_overlay.draw(sketch);
}

void Seen::showCursor(std::optional<QPointF> pointer, bool draws)
{
    const Qt::Edges edges = pointer ? handleUnder(*pointer) : Qt::Edges();
    const QCursor cursor(draws ? Qt::CrossCursor : cursorOf(edges));
    for (QWidget *widget : {static_cast<QWidget *>(m_frame.wb), m_frame.wb->focusProxy()}) {
        if (widget && widget->cursor().shape() != cursor.shape())
            widget->setCursor(cursor);
    }
}

} // namespace quillmere
