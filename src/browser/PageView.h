#pragma once

#include <QPoint>
#include <QSize>

namespace quillmere {

// How a page is shown. Plain, as it is laid out, or scaled and moved as a whole.
struct PageView
{
    double zoom = 1; // pixels of the browser that one of the page takes
    QPoint pan;      // pixels of the browser by which the page is moved up and to the left
    QSize size;      // that the page is laid out for, pixels

    // Like this nothing is asked of the page; it is laid out for the size of the browser then.
    bool isPlain() const { return zoom == 1 && pan.isNull(); }
    bool operator==(const PageView &) const = default;
};

} // namespace quillmere
