#pragma once

#include <QIcon>
#include <QString>

namespace quillmere {

// A small picture of lines, in the colour of the text around it, sharp at any scale. `lines` says them on a
// ground of 16 x 16: "M x y" begins one, "L x y" goes on, "C x y x y x y" bends, "O x y r" is a circle, "Z"
// closes.
QIcon drawnIcon(const QString &lines);

} // namespace quillmere
