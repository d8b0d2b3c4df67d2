#pragma once

#include <QScrollArea>

class QDialog;

namespace quillmere {

// Scrolls the page of a window that is too small for it. What gets the keyboard scrolls into sight.
class PageScroll : public QScrollArea
{
public:
    explicit PageScroll(QWidget *page);
};

// Lets a dialog be smaller than what is laid out in it, and never larger than the screen: it scrolls then,
// and looks as ever where there is room. To be called once all is laid out.
void scrollWhereSmall(QDialog &dialog);

} // namespace quillmere
