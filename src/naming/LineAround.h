#pragma once

#include "outline/Range.h"

#include <QString>

namespace quillmere {

// The line of a text around a range, for a person to read: without the blanks around it, cut to what fits a
// list, with what no list should show of a stranger's text (control characters, marks that turn letters
// round) as blanks.
struct LineAround
{
    qint32 number = 0; // from 1; 0 where it is of no file
    QString text;
    qint32 start = 0, length = 0; // of the range in `text`

    // With something else in the range's place.
    QString with(const QString &other) const;
};
LineAround lineAround(QStringView text, Range range, qint32 number);

// A text of one line, made fit to be shown like that.
QString shownName(const QString &name);

} // namespace quillmere
