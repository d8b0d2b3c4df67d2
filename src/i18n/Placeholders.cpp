#include "i18n/Placeholders.h"

namespace quillmere {

namespace {

bool isLetter(QStringView text, qsizetype at)
{
    return at >= 0 && at < text.size() && (text[at].isLetter() || text[at].isSurrogate());
}
bool isAsciiLetter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// The length of what begins with the "%" at `at`; 0 for a sign like any other.
qsizetype percentAt(QStringView text, qsizetype at)
{
    qsizetype p = at + 1;
    const auto next = [&]() -> char16_t { return p < text.size() ? text[p].unicode() : u'\0'; };
    const auto skip = [&](QStringView any) {
        while (next() != 0 && any.contains(QChar(next())))
            ++p;
    };
    constexpr QStringView digits = u"0123456789";
    const qsizetype first = p;
    skip(digits);
    const qsizetype behindNumber = p;
    const bool hasNumber = p > first && text[first] != u'0';
    if (hasNumber && next() == u'$') {
        ++p;
    } else {
        p = first;
    }
    skip(u"-+#0");
    skip(digits);
    if (next() == u'.') {
        ++p;
        skip(digits);
    }
    if (next() == u'h' || next() == u'l' || next() == u'L' || next() == u'z') {
        const qsizetype before = p;
        skip(u"hlLz");
        if (!isAsciiLetter(next()))
            p = before;
    }
    if (isAsciiLetter(next())) {
        // "100%ig" is a word.
        const bool isWord = isLetter(text, p + 1) && (QStringView(u"cdfisuxX").indexOf(QChar(next())) < 0 ||
                                                      (at > 0 && isDigit(text[at - 1].unicode())));
        if (!isWord)
            return p + 1 - at;
    }
    return hasNumber && behindNumber - first <= 2 ? behindNumber - at : 0;
}

// The same for a brace.
qsizetype bracesAt(QStringView text, qsizetype at)
{
    constexpr qsizetype longest = 32;
    for (qsizetype p = at + 1; p < text.size() && p - at <= longest; ++p) {
        const char16_t c = text[p].unicode();
        if (c == u'}')
            return p + 1 - at;
        if (!isAsciiLetter(c) && !isDigit(c) && !QStringView(u"_.:-").contains(QChar(c)))
            return 0;
    }
    return 0;
}

} // namespace

QList<Range> placesOfPlaceholders(QStringView text)
{
    QList<Range> places;
    if (!text.contains(u'%') && !text.contains(u'{'))
        return places;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] != u'%' && text[at] != u'{')
            continue;
        if (text[at] == u'%' && at + 1 < text.size() && text[at + 1] == u'%') {
            ++at; // a percent sign
            continue;
        }
        if (const qsizetype length = text[at] == u'%' ? percentAt(text, at) : bracesAt(text, at);
            length > 0) {
            places.append({qint32(at), qint32(at + length)});
            at += length - 1;
        }
    }
    return places;
}

} // namespace quillmere
