#pragma once

#include <QScrollArea>

namespace quillmere {

// Scrolls the page of a window that is too small for it. What gets the keyboard scrolls into sight.
class PageScroll : public QScrollArea
{
public:
    explicit PageScroll(QWidget *page);
};

} // namespace quillmere
