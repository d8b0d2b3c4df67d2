#pragma once

#include <QString>

namespace quillmere {

// Commands on every <rect>[x,y,w,h]</rect> of a source text. Each rect is rewritten in turn, and with it
// every other place where the very same rect stands, also one that an earlier turn has just written. Numbers
// are whole or have a fraction; a rect without four numbers is passed over.

enum class ScaleResult { Nothing, TooLarge, TooSmall, Scaled };

// Multiplies all four numbers by numerator / denominator and cuts the fraction off. The first rect is the
// screen: where it would become larger than screenWidth x screenHeight (as written, pixels), or narrower than
// 100 or lower than 10, nothing changes. Nothing also where there is no such rect or the screen's size is no
// number.
ScaleResult ScaleRects(QString &text, int numerator, int denominator, const QString &screenWidth,
                       const QString &screenHeight);

enum class Axis { Top, Left };

// Adds `distance`, whole pixels, to y (Top) or x (Left), which lose their fraction (rounded down); the other
// three numbers stay as written.
void MoveRects(QString &text, Axis axis, qint64 distance);

// A number as a person or a theme writes it, blanks around it allowed, rounded down; nothing for any other
// text or one beyond fifteen digits.
bool wholeNumber(QStringView text, qint64 &floor);

} // namespace quillmere
