#pragma once

#include <QSize>
#include <QString>

namespace quillmere {

// Scales of the preview: pixels of the browser that one of the page takes.

constexpr double kLeastZoom = 0.1, kMostZoom = 8;
// The ones offered, in percent.
constexpr int kZoomSteps[] = {10, 25, 33, 50, 67, 75, 100, 125, 150, 200, 300, 400, 600, 800};

// The step that comes next: the smaller one for negative `by`. The same where there is none.
double nextZoom(double zoom, int by);
// The scale at which all of the page is seen in the room.
double fittingZoom(const QSize &page, const QSize &room);
// "100 %", and back; 0 for a text that says nothing.
QString zoomText(double zoom);
double zoomOf(const QString &text);

} // namespace quillmere
