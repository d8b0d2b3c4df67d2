#pragma once

#include <QListView>

namespace quillmere {

// The rows stand side by side as pictures, as many as fit; nobody moves, marks out or writes over one.
inline void showAsTiles(QListView &view)
{
    view.setViewMode(QListView::IconMode);
    view.setMovement(QListView::Static);
    view.setResizeMode(QListView::Adjust);
    view.setUniformItemSizes(true);
    view.setSelectionMode(QListView::SingleSelection);
    view.setSelectionRectVisible(false);
    view.setEditTriggers(QListView::NoEditTriggers);
    view.setDragEnabled(false);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setFrameShape(QFrame::NoFrame);
    view.setMouseTracking(true);
    view.viewport()->setAttribute(Qt::WA_Hover);
}

} // namespace quillmere
