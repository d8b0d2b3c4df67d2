#pragma once

#include <QList>
#include <QString>

namespace quillmere {

// A stretch of a text and what takes its place. Positions count UTF-16 units from 0.
struct TextChange
{
    qsizetype start = 0;
    qsizetype length = 0;
    QString text;
};

// Small changes that turn one text into the other, in order, none touching another; positions are those of
// `now`. What stands between two of them is the same in both. They are as small as can be found out quickly;
// in the worst case one change takes everything between the first and the last difference.
QList<TextChange> changesBetween(QStringView now, QStringView next);

// Where a caret in `now` belongs after the changes: at the same place of the text. Inside a change it goes by
// the characters that are no blanks: behind as many as before.
qsizetype caretAfter(const QList<TextChange> &changes, QStringView now, qsizetype caret);

} // namespace quillmere
