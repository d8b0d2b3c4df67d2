#pragma once

#include <QString>

namespace quillmere {

// Re-indents a widget document, in place, and returns it: one CR LF between lines, no tabs, no blank lines,
// no runs of blanks, five blanks before every element but "<widget ", closing tags, "<?" and "<property>",
// and the long form of empty <img/> and <string/>. A CR LF counts as one line break, a lone LF becomes one.
// Time is linear.
QString FormatXML(QString &xml);

// Where the units from `start` up to `end` of a text stand once it is formatted: what formatting takes away
// and puts in is known, so a place in a file can be shown in the editor. Time is linear.
struct FormattedPlace
{
    qsizetype start = 0, end = 0;
};
FormattedPlace formattedPlace(const QString &text, qsizetype start, qsizetype end, QStringView formatted);

} // namespace quillmere
