#pragma once

#include <QString>

namespace quillmere {

// A text box's text and selection; positions are 0-based counts of UTF-16 units.
struct TextSelection
{
    QString text;
    qsizetype start = 0;
    qsizetype length = 0;
};

// Wraps the selection in an opening and a closing text; the same text stays selected. A selection that
// reaches outside the text is cut to it.
TextSelection InsertCode(const TextSelection &box, QStringView opening, QStringView closing);

} // namespace quillmere
