#include "browser/SheetRules.h"

#include <algorithm>

namespace quillmere {

namespace {

bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\n' || unit == u'\t';
}

bool isLetter(QChar unit)
{
    return unit >= u'\x80' || unit == u'_' || (unit >= u'a' && unit <= u'z') ||
           (unit >= u'A' && unit <= u'Z');
}

bool isNameUnit(QChar unit)
{
    return isLetter(unit) || unit == u'-' || (unit >= u'0' && unit <= u'9');
}

bool isPlainSelector(QStringView selector)
{
    const auto isPlain = [](QChar unit) { return isNameUnit(unit) || isBlank(unit) || unit == u'.'; };
    return std::ranges::all_of(selector.startsWith(u'#') ? selector.sliced(1) : selector, isPlain);
}

bool isPlainInRule(QChar unit)
{
    return isNameUnit(unit) || isBlank(unit) || QStringView(u":;,.#%+").contains(unit);
}

// From behind `url('` to behind the bracket that ends it, or -1.
qsizetype urlEnd(QStringView text, qsizetype at)
{
    for (; at < text.size() && text[at] != u'\''; ++at) {
        if (text[at] < u' ' || QStringView(u"\\;{}()\"").contains(text[at]))
            return -1;
    }
    return text.sliced(at).startsWith(u"')") ? at + 2 : -1;
}

// Where the declarations end that begin here, at their brace; -1 where they are not plain.
qsizetype declarationsEnd(QStringView text, qsizetype at)
{
    constexpr QStringView kUrl = u"url('";
    while (at < text.size() && text[at] != u'}') {
        if (isPlainInRule(text[at])) {
            const bool isUrl =
                text[at] == u'u' && text.sliced(at).startsWith(kUrl) && !isNameUnit(text[at - 1]);
            at = isUrl ? urlEnd(text, at + kUrl.size()) : at + 1;
            if (at >= 0)
                continue;
        }
        return -1;
    }
    return at < text.size() ? at : -1;
}

} // namespace

std::optional<std::vector<SheetRule>> plainRules(QStringView sheet)
{
    std::vector<SheetRule> rules;
    qsizetype at = 0;
    while (true) {
        while (at < sheet.size() && isBlank(sheet[at]))
            ++at;
        if (at == sheet.size())
            return rules;
        const qsizetype brace = sheet.indexOf(u'{', at);
        const QStringView selector = brace < 0 ? QStringView() : withoutBlanks(sheet.sliced(at, brace - at));
        const qsizetype end =
            selector.isEmpty() || !isPlainSelector(selector) ? -1 : declarationsEnd(sheet, brace + 1);
        if (end < 0)
            return {};
        rules.push_back({selector, sheet.sliced(brace + 1, end - brace - 1)});
        at = end + 1;
    }
}

QStringView withoutBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QStringView idOfSelector(QStringView selector)
{
    const QStringView name = selector.startsWith(u'#') ? selector.sliced(1) : QStringView();
    const bool isOne = !name.isEmpty() && isLetter(name[0]) && std::ranges::all_of(name, isNameUnit);
    return isOne ? name : QStringView();
}

} // namespace quillmere
