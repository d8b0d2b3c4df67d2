#pragma once

#include <QString>

namespace quillmere {

struct LineDifference;

// How many lines differ, as a sentence: "1 line removed, 2 added."
QString lineCountText(const LineDifference &difference);
// "3 lines differ only in their indentation."
QString indentedLinesText(qsizetype count);
// What a command has done to a text that it has changed: "3 lines changed."
QString changedLinesText(QStringView before, QStringView after);

} // namespace quillmere
