#include "widgets/RectCommands.h"

#include "markup/Matching.h"

#include <QHash>
#include <QList>

#include <array>
#include <functional>
#include <optional>

namespace quillmere {

namespace {

constexpr QStringView opening = u"<rect>[";
constexpr QStringView closing = u"]</rect>";
constexpr int mostDigits = 15; // what a product by a small factor leaves exact in 64 bits
constexpr qint64 leastWidth = 100;
constexpr qint64 leastHeight = 10;

// A decimal number, units / scale; scale is a power of ten.
struct Number
{
    qint64 units = 0;
    qint64 scale = 1;

    qint64 floor() const
    {
        const qint64 whole = units / scale;
        return units % scale < 0 ? whole - 1 : whole;
    }
    qint64 times(int numerator, int denominator) const
    {
        return qint64(__int128(units) * numerator / (__int128(scale) * denominator));
    }
};

std::optional<Number> numberIn(QStringView text)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    Number number;
    int digits = 0;
    bool fraction = false;
    for (const QChar c : text) {
        if (c == u'.' && !fraction) {
            fraction = true;
            continue;
        }
        if (c < u'0' || c > u'9' || ++digits > mostDigits)
            return std::nullopt;
        number.units = number.units * 10 + (c.unicode() - u'0');
        if (fraction)
            number.scale *= 10;
    }
    if (digits == 0)
        return std::nullopt;
    if (negative)
        number.units = -number.units;
    return number;
}

using Four = std::array<Number, 4>;

std::optional<Four> fourNumbers(const QList<QStringView> &parts)
{
    if (parts.size() < 4)
        return std::nullopt;
    Four four;
    for (int i = 0; i < 4; ++i) {
        const std::optional<Number> number = numberIn(parts[i]);
        if (!number)
            return std::nullopt;
        four[size_t(i)] = *number;
    }
    return four;
}

// What stands between <rect> and </rect> of every rect of the text, in order.
QList<QStringView> rectsOf(QStringView text)
{
    QList<QStringView> rects;
    for (QStringView piece : splitExact(text, u"<rect>"))
        rects.append(piece.first(std::max<qsizetype>(indexOfExact(piece, u"</rect>"), 0)));
    if (!rects.isEmpty())
        rects.removeFirst();
    return rects;
}

QStringView withoutBrackets(QStringView rect)
{
    if (rect.startsWith(u'['))
        rect = rect.sliced(1);
    const qsizetype end = rect.indexOf(u']');
    return end < 0 ? rect : rect.first(end);
}

// All places in a text where a rect of numbers stands, grouped by what they hold. Rewriting a rect moves its
// whole group, so that a thousand rects cost a thousand steps instead of a thousand passes over the text.
class RectPlaces
{
public:
    explicit RectPlaces(QStringView text) : m_text(text)
    {
        for (qsizetype at = indexOfIgnoringCase(text, opening); at >= 0;
             at = indexOfIgnoringCase(text, opening, at + 1)) {
            const qsizetype from = at + opening.size();
            qsizetype end = from;
            while (end < text.size() && text[end] != u']' && text[end] != u'[' && text[end] != u'<')
                ++end;
            if (!matchesIgnoringCase(text, end, closing))
                continue;
            const QString content = text.sliced(from, end - from).toString();
            m_groups[content].append(int(m_places.size()));
            m_places.append({at, end + closing.size(), QString(), false});
        }
    }

    void rewrite(const QString &from, const QString &to)
    {
        const auto found = m_groups.find(from);
        if (found == m_groups.end())
            return;
        QList<int> moved = *found;
        m_groups.erase(found);
        for (int place : std::as_const(moved))
            m_places[place].rewritten = true;
        QList<int> &there = m_groups[to];
        if (there.size() < moved.size())
            there.swap(moved);
        there += moved;
    }

    QString text()
    {
        for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group) {
            for (int place : *group)
                m_places[place].content = group.key();
        }
        QString result;
        result.reserve(m_text.size() + m_text.size() / 8);
        qsizetype done = 0;
        for (const Place &place : std::as_const(m_places)) {
            if (!place.rewritten)
                continue;
            result += m_text.sliced(done, place.begin - done);
            result += opening + place.content + closing;
            done = place.end;
        }
        result += m_text.sliced(done);
        return result;
    }

private:
    struct Place
    {
        qsizetype begin;
        qsizetype end;
        QString content;
        bool rewritten;
    };

    QStringView m_text;
    QList<Place> m_places;
    QHash<QString, QList<int>> m_groups;
};

using Rewriting = std::function<QString(const QList<QStringView> &parts, const Four &numbers)>;

void rewriteRects(QString &text, const Rewriting &rewriting)
{
    RectPlaces places(text);
    for (QStringView rect : rectsOf(text)) {
        const QList<QStringView> parts = splitExact(withoutBrackets(rect), u",");
        const std::optional<Four> numbers = fourNumbers(parts);
        if (!numbers)
            continue;
        const QString old = parts[0] + u',' + parts[1] + u',' + parts[2] + u',' + parts[3];
        places.rewrite(old, rewriting(parts, *numbers));
    }
    text = places.text();
}

} // namespace

bool wholeNumber(QStringView text, qint64 &floor)
{
    const std::optional<Number> number = numberIn(text);
    if (number)
        floor = number->floor();
    return number.has_value();
}

ScaleResult ScaleRects(QString &text, int numerator, int denominator, const QString &screenWidth,
                       const QString &screenHeight)
{
    const QList<QStringView> rects = rectsOf(text);
    qint64 mostWidth = 0;
    qint64 mostHeight = 0;
    if (rects.isEmpty() || !wholeNumber(screenWidth, mostWidth) || !wholeNumber(screenHeight, mostHeight))
        return ScaleResult::Nothing;
    const std::optional<Four> screen = fourNumbers(splitExact(withoutBrackets(rects.first()), u","));
    if (!screen)
        return ScaleResult::Nothing;
    const qint64 width = (*screen)[2].times(numerator, denominator);
    const qint64 height = (*screen)[3].times(numerator, denominator);
    if (width > mostWidth || height > mostHeight)
        return ScaleResult::TooLarge;
    if (width < leastWidth || height < leastHeight)
        return ScaleResult::TooSmall;
    rewriteRects(text, [numerator, denominator](const QList<QStringView> &, const Four &numbers) {
        QString scaled;
        for (const Number &number : numbers)
            scaled += (scaled.isEmpty() ? u"" : u",") + QString::number(number.times(numerator, denominator));
        return scaled;
    });
    return ScaleResult::Scaled;
}

void MoveRects(QString &text, Axis axis, qint64 distance)
{
    const int moved = axis == Axis::Top ? 1 : 0;
    rewriteRects(text, [moved, distance](const QList<QStringView> &parts, const Four &numbers) {
        QString result;
        for (int i = 0; i < 4; ++i) {
            if (i > 0)
                result += u',';
            if (i == moved)
                result += QString::number(distance + numbers[size_t(i)].floor());
            else
                result += parts[i];
        }
        return result;
    });
}

} // namespace quillmere
