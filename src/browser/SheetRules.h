#pragma once

#include <QStringView>

#include <optional>
#include <vector>

namespace quillmere {

struct SheetRule
{
    QStringView selector;     // without the blanks around it
    QStringView declarations; // what stands between the braces
};

// The rules of a sheet that holds nothing but plain ones, in order: selectors of names, ids and classes one
// inside another, declarations without brackets, quotes and escapes except in url('...'). Nothing for any
// other sheet: whether the browser reads that in the same way would not be certain. A selector may be one
// that the browser does not understand, and then it skips the rule.
std::optional<std::vector<SheetRule>> plainRules(QStringView sheet);

// What a sheet takes for blanks: other ones are letters there.
QStringView withoutBlanks(QStringView text);

// The name in a selector that is one id alone; empty for any other.
QStringView idOfSelector(QStringView selector);

} // namespace quillmere
