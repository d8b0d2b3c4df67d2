#pragma once

#include "controls/CaptionBox.h"
#include "controls/Twips.h"

#include <QAbstractItemView>

namespace quillmere {

// The frame of one tab. All lie on top of one another; each lays its own controls out.
class TabFrame : public CaptionBox
{
    Q_OBJECT

public:
    using CaptionBox::CaptionBox;

    // Gives the frame its size and lays its controls out in it. Twips.
    void setFrameSize(int width, int height)
    {
        resize(toPixels(width), toPixels(height));
        layOut(height);
    }
    // Gives the keyboard to its first list.
    void takeKeyboard()
    {
        for (QAbstractItemView *list : findChildren<QAbstractItemView *>()) {
            if (list->isVisibleTo(this) && list->focusPolicy() != Qt::NoFocus) {
                list->setFocus();
                return;
            }
        }
    }

protected:
    void paintEvent(QPaintEvent *) override {} // the tab strip behind it draws the border
    virtual void layOut(int height) = 0;
};

// Places a control; all in pixels.
inline void place(QWidget *control, int left, int top, int width, int height)
{
    control->setGeometry(left, top, width, height);
}

} // namespace quillmere
