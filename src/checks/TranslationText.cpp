#include "checks/TranslationText.h"

#include "i18n/Placeholders.h"

#include <algorithm>

namespace quillmere {

namespace {

struct Ends
{
    QStringView before, text, behind;
};
Ends endsOf(QStringView text)
{
    qsizetype start = 0, end = text.size();
    while (start < end && text[start].isSpace())
        ++start;
    while (end > start && text[end - 1].isSpace())
        --end;
    return {text.first(start), text.sliced(start, end - start), text.sliced(end)};
}

// Where lines end does not matter here.
bool isSame(QStringView a, QStringView b)
{
    if (a == b)
        return true;
    return a.toString().remove(u'\r') == b.toString().remove(u'\r');
}

constexpr char16_t kDots = u'\u2026';

// What marks of all scripts stand for.
constexpr struct
{
    char16_t mark, means;
} kMarks[] = {
    {u'.', u'.'},      {u'\u3002', u'.'},  {u'\uFF0E', u'.'}, {u'\uFF61', u'.'}, {u'\u0964', u'.'},
    {u'\u06D4', u'.'}, {u'\u0589', u'.'},  {u'\u1362', u'.'}, {u'\u17D4', u'.'}, {u'\u104B', u'.'},
    {u'!', u'!'},      {u'\uFF01', u'!'},  {u'\u055C', u'!'}, {u'?', u'?'},      {u'\uFF1F', u'?'},
    {u'\u061F', u'?'}, {u'\u037E', u'?'},  {u'\u055E', u'?'}, {u'\u1367', u'?'}, {u':', u':'},
    {u'\uFF1A', u':'}, {u'\u1366', u':'},  {u',', u','},      {u'\uFF0C', u','}, {u'\u3001', u','},
    {u'\u060C', u','}, {u'\u1363', u','},  {u';', u';'},      {u'\uFF1B', u';'}, {u'\u061B', u';'},
    {kDots, kDots},    {u'\u22EF', kDots},
};

// The mark at the end of a text, in quotes and brackets or not.
struct EndMark
{
    char16_t means = 0; // one of the marks of English, or of an ellipsis; 0 for none
    qsizetype at = 0, length = 0;
    bool isLast = true; // with nothing behind it
};
EndMark endMarkOf(QStringView text)
{
    const auto isClosing = [](QChar c) {
        switch (c.category()) {
        case QChar::Punctuation_Close:
        case QChar::Punctuation_FinalQuote:
        case QChar::Punctuation_InitialQuote:
        case QChar::Other_Format:
            return true;
        default:
            return c == u'"' || c == u'\'' || c.isSpace();
        }
    };
    qsizetype end = text.size();
    while (end > 0 && isClosing(text[end - 1]))
        --end;
    EndMark found = {0, end, 0, end == text.size()};
    if (end == 0)
        return found;
    const char16_t last = text[end - 1].unicode();
    const auto mark = std::find_if(std::begin(kMarks), std::end(kMarks),
                                   [last](const auto &each) { return each.mark == last; });
    if (mark == std::end(kMarks))
        return found;
    found = {mark->means, end - 1, 1, found.isLast};
    if (last == u'.' && end >= 3 && text[end - 2] == u'.' && text[end - 3] == u'.')
        found = {kDots, end - 3, 3, found.isLast};
    return found;
}

QChar::Script scriptOf(QStringView text)
{
    for (qsizetype at = text.size() - 1; at >= 0; --at) {
        char32_t letter = text[at].unicode();
        if (text[at].isLowSurrogate() && at > 0 && text[at - 1].isHighSurrogate())
            letter = QChar::surrogateToUcs4(text[at - 1], text[at]);
        const QChar::Script script = QChar::script(letter);
        if (script > QChar::Script_Common)
            return script;
    }
    return QChar::Script_Unknown;
}

// Of one or two words, the last of which is short.
bool isAbbreviation(QStringView text, qsizetype stop)
{
    constexpr qsizetype longest = 4;
    const QStringView words = text.first(stop).trimmed();
    const qsizetype first = words.indexOf(u' '), last = words.lastIndexOf(u' ');
    return first == last && words.size() - (last + 1) <= longest;
}

// The mark in the script that a text is written in.
QString markIn(QChar::Script script, char16_t means)
{
    if (means == kDots)
        return QStringLiteral("...");
    const QStringView plain = u".!?:,;";
    QStringView own = plain;
    if (script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana)
        own = u"\u3002\uFF01\uFF1F\uFF1A\uFF0C\uFF1B";
    else if (script == QChar::Script_Arabic)
        own = u".!\u061F:\u060C\u061B";
    else if (script == QChar::Script_Greek)
        own = u".!;:,\u00B7";
    return QString(own[plain.indexOf(QChar(means))]);
}

} // namespace

bool hasSameBlanks(QStringView source, QStringView translation)
{
    const auto touches = [](QStringView text) {
        return text.isEmpty() || text.front().isSpace() || text.back().isSpace();
    };
    if (!touches(source) && !touches(translation))
        return true;
    const Ends a = endsOf(source), b = endsOf(translation);
    return isSame(a.before, b.before) && isSame(a.behind, b.behind);
}

QString withBlanksOf(QStringView source, QStringView translation)
{
    const Ends a = endsOf(source);
    return QString(a.before.toString() + endsOf(translation).text + a.behind);
}

QStringList placeholdersIn(QStringView text)
{
    QStringList found;
    for (const Range &place : placesOfPlaceholders(text))
        found.append(place.in(text).toString());
    found.sort();
    return found;
}

int lineBreaksIn(QStringView text)
{
    int count = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        const bool hasNext = at + 1 < text.size();
        if (c == u'\n' || c == QChar::LineSeparator || (c == u'\r' && !(hasNext && text[at + 1] == u'\n')) ||
            (c == u'\\' && hasNext && text[at + 1] == u'n'))
            ++count;
    }
    return count;
}

bool endsAlike(QStringView source, QStringView translation)
{
    const EndMark a = endMarkOf(source), b = endMarkOf(translation);
    if (a.means == b.means)
        return true;
    const QChar::Script script = scriptOf(translation);
    if (a.means == u'?' && b.means == u';')
        return script == QChar::Script_Greek;
    if (a.means == u'.' && b.means == 0)
        return script == QChar::Script_Thai || script == QChar::Script_Lao || isAbbreviation(source, a.at);
    return a.means == 0 && b.means == u'.' && isAbbreviation(translation, b.at);
}

QString withEndOf(QStringView source, QStringView translation)
{
    const Ends ends = endsOf(translation);
    const EndMark wanted = endMarkOf(endsOf(source).text), there = endMarkOf(ends.text);
    if (!wanted.isLast || !there.isLast || ends.text.isEmpty())
        return {};
    const QString mark = wanted.means == 0 ? QString() : markIn(scriptOf(ends.text), wanted.means);
    const QString changed = QString(ends.before.toString() + ends.text.first(there.at) + mark + ends.behind);
    return endsAlike(source, changed) ? changed : QString();
}

} // namespace quillmere
