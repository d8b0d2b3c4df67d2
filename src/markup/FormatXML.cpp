#include "markup/FormatXML.h"

#include "markup/Matching.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr QStringView indent = u"     ";

struct LongForm
{
    QStringView from;
    QStringView to;
};

constexpr LongForm longForms[] = {{u"<img/>", u"<img></img>"}, {u"<string/>", u"<string></string>"}};

char16_t *append(char16_t *out, QStringView text)
{
    return std::copy_n(text.utf16(), text.size(), out);
}

// Units of the line break at `position`, 0 where there is none. A CR alone is an ordinary character.
qsizetype lineBreakAt(QStringView text, qsizetype position)
{
    if (text[position] == u'\n')
        return 1;
    return text[position] == u'\r' && position + 1 < text.size() && text[position + 1] == u'\n' ? 2 : 0;
}

// Takes a stretch of line breaks, blanks and tabs and writes what is left of it. Tabs vanish before anything
// else, so line breaks with only tabs between them are one group; a blank between them makes two. Groups are
// then halved twice, rounded up: a stretch of five groups leaves two line breaks, one of four leaves one.
qsizetype squeezeStretch(QStringView text, qsizetype position, char16_t *&out)
{
    qsizetype groups = 0;
    bool blankBefore = false;
    bool inGroup = false;
    while (position < text.size()) {
        const qsizetype lineBreak = lineBreakAt(text, position);
        if (lineBreak > 0) {
            groups += inGroup ? 0 : 1;
            inGroup = true;
            position += lineBreak;
        } else if (text[position] == u' ') {
            blankBefore = blankBefore || groups == 0;
            inGroup = false;
            ++position;
        } else if (text[position] == u'\t') {
            ++position;
        } else {
            break;
        }
    }
    if (blankBefore)
        *out++ = u' ';
    for (qsizetype breaks = (groups + 3) / 4; breaks > 0; --breaks)
        out = append(out, u"\r\n");
    return position;
}

// The text without tabs, runs of blanks and blank lines.
QString squeezeBlanks(QStringView text)
{
    // A lone LF grows to two units.
    QString result(text.size() + text.count(u'\n'), Qt::Uninitialized);
    char16_t *const begin = reinterpret_cast<char16_t *>(result.data());
    char16_t *out = begin;
    qsizetype position = 0;
    while (position < text.size()) {
        const char16_t unit = text[position].unicode();
        if (unit == u' ' || unit == u'\t' || unit == u'\n' ||
            (unit == u'\r' && lineBreakAt(text, position) > 0)) {
            position = squeezeStretch(text, position, out);
        } else {
            *out++ = unit;
            ++position;
        }
    }
    result.truncate(out - begin);
    return result;
}

// Writes the squeezed text with its tags indented.
//
// Five blanks go before every tag and are taken away again before some, and the blank that ends "<widget "
// may be the first of the five before a tag that follows it at once ("<widget<"). Then the tag that follows
// has only four left for a moment, so that in a chain "<widget<widget<widget" every second one is passed
// over; it gets its turn later, if the blank it needs behind it is still there, that is if the tag behind it
// kept its own.
class TagWriter
{
public:
    explicit TagWriter(QStringView text) : m_text(text) {}

    QString write()
    {
        // The long forms less than double their tags, and each tag gets five blanks at most.
        QString result(m_text.size() * 2 + m_text.count(u'<') * indent.size(), Qt::Uninitialized);
        char16_t *const begin = reinterpret_cast<char16_t *>(result.data());
        m_out = begin;
        qsizetype position = 0;
        while (position < m_text.size()) {
            const qsizetype tag = m_text.indexOf(u'<', position);
            if (tag < 0)
                break;
            m_out = append(m_out, m_text.sliced(position, tag - position));
            position = writeTag(tag);
        }
        m_out = append(m_out, m_text.sliced(position));
        result.truncate(m_out - begin);
        result.squeeze(); // it is kept for as long as the window is open
        return result;
    }

private:
    static constexpr QStringView widget = u"<widget";
    static constexpr QStringView property = u"<property>";

    QChar unitAt(qsizetype position) const { return position < m_text.size() ? m_text[position] : QChar(); }

    bool isOutdentedWidget(qsizetype tag) const
    {
        if (!matchesIgnoringCase(m_text, tag, widget))
            return false;
        const QChar behind = unitAt(tag + widget.size());
        return behind == u' ' || behind == u'<';
    }

    bool isOutdentedOther(qsizetype tag) const
    {
        const QChar behind = unitAt(tag + 1);
        return behind == u'/' || behind == u'?' || matchesIgnoringCase(m_text, tag, property);
    }

    bool isPassedOver(qsizetype tag) const
    {
        const qsizetype next = tag + widget.size();
        return tag == m_chained && unitAt(next) == u'<' &&
               (isOutdentedOther(next) || isOutdentedWidget(next));
    }

    // Returns the position behind what it wrote.
    qsizetype writeTag(qsizetype tag)
    {
        if (isOutdentedWidget(tag) && !isPassedOver(tag)) {
            // The one that follows at once is passed over at first, unless this one had been so itself.
            m_chained = tag == m_chained ? -1 : tag + widget.size();
            m_out = append(m_out, widget);
            return tag + widget.size();
        }
        if (isOutdentedOther(tag)) {
            const bool isProperty = matchesIgnoringCase(m_text, tag, property);
            m_out = append(m_out, isProperty ? property : m_text.sliced(tag, 2));
            return tag + (isProperty ? property.size() : 2);
        }
        m_out = append(m_out, indent);
        for (const LongForm &form : longForms) {
            if (matchesIgnoringCase(m_text, tag, form.from)) {
                m_out = append(m_out, form.to);
                return tag + form.from.size();
            }
        }
        *m_out++ = u'<';
        return tag + 1;
    }

    QStringView m_text;
    char16_t *m_out = nullptr;
    qsizetype m_chained = -1;
};

bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

// How many units before `position` are still there when the text is formatted, or come in for others.
qsizetype lastingUnits(const QString &text, qsizetype position)
{
    QString before = text.first(position);
    before.remove(u'\t'); // without it, what it stood in may be a short form
    for (const LongForm &form : longForms)
        replaceIgnoringCase(before, form.from, form.to);
    return before.size() - std::count_if(before.cbegin(), before.cend(), isBlank);
}

} // namespace

FormattedPlace formattedPlace(const QString &text, qsizetype start, qsizetype end, QStringView formatted)
{
    const qsizetype first = lastingUnits(text, std::clamp<qsizetype>(start, 0, text.size()));
    const qsizetype last = lastingUnits(text, std::clamp<qsizetype>(end, 0, text.size()));
    FormattedPlace place = {formatted.size(), formatted.size()};
    qsizetype units = 0;
    for (qsizetype at = 0; at < formatted.size(); ++at) {
        if (isBlank(formatted[at]))
            continue;
        if (units == first)
            place.start = at;
        ++units;
        if (units == last)
            place.end = at + 1;
        if (units > first && units >= last)
            break;
    }
    place.end = last <= first ? place.start : place.end;
    return place;
}

QString FormatXML(QString &xml)
{
    xml = TagWriter(squeezeBlanks(xml)).write();
    return xml;
}

} // namespace quillmere
