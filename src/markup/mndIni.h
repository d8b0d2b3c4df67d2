#pragma once

#include <QString>
#include <QStringView>

namespace quillmere {

// Cuts one field out of markup. The first split takes piece `index1` (0-based) of the text between
// occurrences of `separator1`; the second, made only where `separator2` is given and occurs, takes piece
// `index2` of that. With 1 and 0 this is the text between an opening marker and the next closing marker.
// Occurrence is tested exactly, splits ignore case. Empty when the text is empty, `separator1` does not occur
// or has too few pieces; a second split with too few pieces keeps the field of the first. The view points
// into `text`.
QStringView SplitFieldView(QStringView text, QStringView separator1, QStringView separator2, int index1,
                           int index2);
QString SplitField(QStringView text, QStringView separator1, QStringView separator2, int index1, int index2);

// Trims characters with codes 1 to 32 from both ends of `s`, in place, and returns it. Code 0 stays.
QString StripControlChars(QString &s);

// Removes up to 100 blanks on each side of every "=", so that attributes may be written as `id = "x"`. In
// place; contents count too. Only U+0020 is a blank here.
QString &CloseUpEquals(QString &text);

} // namespace quillmere
