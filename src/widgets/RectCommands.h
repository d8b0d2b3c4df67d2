#pragma once

#include "outline/Range.h"

#include <QList>
#include <QSize>
#include <QString>

namespace quillmere {

// Commands on every <rect>[x,y,w,h]</rect> of a source text. Each rect is rewritten in turn, and with it
// every other place where the very same rect stands, in whatever letter case, also one that an earlier turn
// has just written. Only a rect written just so, without blanks around its brackets, is found to be
// rewritten. Numbers are whole or have a fraction, with as many digits as one likes.

enum class ScaleResult { Nothing, TooLarge, TooSmall, Scaled };

// Multiplies all four numbers by numerator / denominator, both 1 to 9, and cuts the fraction off; rects
// without four numbers are passed over. The first rect is the screen: where it would become larger than
// screenWidth x screenHeight (as written, pixels), or narrower than 100 or lower than 10, nothing changes.
// Nothing also where it has no four numbers or the screen's size is no number. Tags are found in any letter
// case once each stands there in small letters: the opening one anywhere in the text, the closing one before
// the next rect.
ScaleResult ScaleRects(QString &text, int numerator, int denominator, const QString &screenWidth,
                       const QString &screenHeight);

enum class Axis { Top, Left };

// Adds `distance`, whole pixels, to y (Top) or x (Left), which loses its fraction (rounded down); the other
// three values stay as written, whatever they are. Tags count in small letters only.
void MoveRects(QString &text, Axis axis, qint64 distance);

// How many rects of a text a command has given other numbers; both texts have as many.
qsizetype changedRects(QStringView before, QStringView after);

// The rects of a text that was made for one screen, on another: both sizes in pixels, up to five digits each.
struct ConvertedRects
{
    struct Rect
    {
        Range range; // between the brackets
        QString after;
    };
    QList<Rect> changed; // in the order of the text, each once
    int kept = 0;        // that hold no four numbers
};
// Scales each rect by itself, cut off as above; across and down each by a factor of its own, with no bounds.
// Tags count in any letter case, and blanks may stand around the brackets.
ConvertedRects convertedRects(const QString &text, const QSize &from, const QSize &to);

// A number as a person or a theme writes it, blanks around it allowed, rounded down; nothing for any other
// text or one of more than fifteen digits before the point.
bool wholeNumber(QStringView text, qint64 &floor);

} // namespace quillmere
