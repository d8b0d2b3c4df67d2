#include "preview/Zoom.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {
constexpr double kNearly = 0.005; // of a percent; what is shown the same is the same step
}

double nextZoom(double zoom, int by)
{
    const double percent = zoom * 100;
    double next = zoom;
    for (const int step : kZoomSteps) {
        if (by > 0 && step > percent + kNearly)
            return step / 100.0;
        if (by < 0 && step < percent - kNearly)
            next = step / 100.0;
    }
    return next;
}

double fittingZoom(const QSize &page, const QSize &room)
{
    if (page.isEmpty())
        return 1;
    const double zoom = std::min(double(room.width()) / page.width(), double(room.height()) / page.height());
    return std::clamp(zoom, kLeastZoom, kMostZoom);
}

QString zoomText(double zoom)
{
    return QString::number(std::lround(zoom * 100)) + QLatin1String(" %");
}

double zoomOf(const QString &text)
{
    const double percent = QString(text).remove(u'%').trimmed().toDouble();
    return percent > 0 ? std::clamp(percent / 100, kLeastZoom, kMostZoom) : 0;
}

} // namespace quillmere
