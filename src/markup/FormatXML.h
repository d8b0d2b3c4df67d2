#pragma once

#include <QString>

namespace quillmere {

// Re-indents a widget document, in place, and returns it: one CR LF between lines, no tabs, no blank lines,
// no runs of blanks, five blanks before every element but "<widget ", closing tags, "<?" and "<property>",
// and the long form of empty <img/> and <string/>. A CR LF counts as one line break, a lone LF becomes one.
// Time is linear.
QString FormatXML(QString &xml);

} // namespace quillmere
