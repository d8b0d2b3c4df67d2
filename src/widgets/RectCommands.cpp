#include "widgets/RectCommands.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

constexpr QStringView opening = u"<rect>[";
constexpr QStringView closing = u"]</rect>";
constexpr int mostDigits = 15; // of a number that others are added to
constexpr QStringView leastWidth = u"100";
constexpr QStringView leastHeight = u"10";

// A decimal number as it is written, without the zeros in front.
struct Number
{
    bool negative = false;
    QStringView whole;
    QStringView fraction;
};

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

QStringView withoutZeros(QStringView digits)
{
    return digits.sliced(std::find_if(digits.begin(), digits.end(), [](QChar c) { return c != u'0'; }) -
                         digits.begin());
}

std::optional<Number> numberIn(QStringView text)
{
    text = text.trimmed();
    Number number;
    number.negative = text.startsWith(u'-');
    if (number.negative || text.startsWith(u'+'))
        text = text.sliced(1);
    const qsizetype point = text.indexOf(u'.');
    const QStringView whole = point < 0 ? text : text.first(point);
    number.fraction = point < 0 ? QStringView() : text.sliced(point + 1);
    if ((whole.isEmpty() && number.fraction.isEmpty()) || !std::all_of(whole.begin(), whole.end(), isDigit) ||
        !std::all_of(number.fraction.begin(), number.fraction.end(), isDigit))
        return std::nullopt;
    number.whole = withoutZeros(whole);
    return number;
}

struct Factor
{
    int numerator = 1, denominator = 1; // up to 99999
};

Factor factorOf(int from, int to)
{
    const int common = std::gcd(from, to);
    return {to / common, from / common};
}

// Digit by digit, so that nothing is rounded and no number is too long.
QString scaled(const Number &number, const Factor &factor)
{
    qsizetype more = 0;
    for (int rest = factor.numerator; rest > 0; rest /= 10)
        ++more;
    QString digits = QString(more, u'0') + number.whole + number.fraction;
    int carry = 0;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        carry += (digits[i].unicode() - u'0') * factor.numerator;
        digits[i] = QChar(u'0' + carry % 10);
        carry /= 10;
    }
    int rest = 0;
    for (QChar &digit : digits) {
        rest = rest * 10 + (digit.unicode() - u'0');
        digit = QChar(u'0' + rest / factor.denominator);
        rest %= factor.denominator;
    }
    const QStringView whole = withoutZeros(QStringView(digits).chopped(number.fraction.size()));
    if (whole.isEmpty())
        return QStringLiteral("0");
    return number.negative ? u'-' + whole : whole.toString();
}

bool isLess(QStringView left, QStringView right)
{
    const Number a = numberIn(left).value_or(Number()), b = numberIn(right).value_or(Number());
    if (a.negative != b.negative)
        return a.negative;
    const auto parts = [](const Number &n) { return std::tuple(n.whole.size(), n.whole, n.fraction); };
    return a.negative ? parts(b) < parts(a) : parts(a) < parts(b);
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

QString scaledText(const Four &numbers, const Factor &across, const Factor &down)
{
    return scaled(numbers[0], across) + u',' + scaled(numbers[1], down) + u',' + scaled(numbers[2], across) +
           u',' + scaled(numbers[3], down);
}

QString withoutBrackets(QStringView rect)
{
    return rect.toString().remove(u'[').remove(u']');
}

// All places in a text where <rect>[...]</rect> stands, grouped by what they hold. Rewriting a rect moves its
// whole group, so that a thousand rects cost a thousand steps instead of a thousand passes over the text.
// Groups are chains through two lists: a list of its own for each would take many times the text.
class RectPlaces
{
public:
    explicit RectPlaces(QStringView text) : m_text(text)
    {
        qsizetype end = 0;
        for (qsizetype at = indexOfIgnoringCase(text, opening); at >= 0;) {
            const qsizetype from = at + opening.size();
            const qsizetype next = indexOfIgnoringCase(text, opening, from);
            if (end < from)
                end = indexOfIgnoringCase(text, closing, from);
            if (end < 0)
                break;
            if (next < 0 || end < next)
                add(int(at), int(end + closing.size()), foldedText(text.sliced(from, end - from)));
            at = next;
        }
    }

    // Neither text holds one of the markers itself.
    void rewrite(const QString &from, const QString &to)
    {
        const auto found = m_groups.constFind(foldedText(from));
        if (found == m_groups.cend())
            return;
        const int moved = *found;
        m_groups.erase(found);
        Writing &all = m_writings[size_t(moved)];
        all.text = to;
        for (int next = std::exchange(all.next, -1); next >= 0; next = m_writings[size_t(next)].next) {
            m_places[size_t(all.last)].next = m_writings[size_t(next)].first;
            all.last = m_writings[size_t(next)].last;
        }
        const QString folded = foldedText(to);
        all.next = m_groups.value(folded, -1);
        m_groups.insert(folded, moved);
    }

    QString text()
    {
        for (const int group : std::as_const(m_groups))
            nameWritings(group);
        QString result;
        result.reserve(m_text.size() + m_text.size() / 8);
        qsizetype done = 0;
        for (const Place &place : m_places) {
            const QString &content = m_writings[size_t(place.next)].text;
            if (content.isEmpty())
                continue;
            result += m_text.sliced(done, place.begin - done);
            result += opening + content + closing;
            done = place.end;
        }
        result += m_text.sliced(done);
        return result;
    }

private:
    struct Place
    {
        int begin; // units
        int end;
        int next; // place of the same writing, -1 behind the last; at the end the writing itself
    };
    // What some places of a group hold, in the same letter case.
    struct Writing
    {
        QString text; // empty where they hold what they held
        int first;    // place
        int last;
        int next; // writing of the same group, -1 behind the last
    };

    void add(int begin, int end, const QString &folded)
    {
        const int place = int(m_places.size());
        m_places.push_back({begin, end, -1});
        const auto group = m_groups.constFind(folded);
        if (group == m_groups.cend()) {
            m_groups.insert(folded, int(m_writings.size()));
            m_writings.push_back({{}, place, place, -1});
            return;
        }
        Writing &writing = m_writings[size_t(*group)];
        m_places[size_t(std::exchange(writing.last, place))].next = place;
    }

    // Each place of a group learns its writing.
    void nameWritings(int group)
    {
        for (int writing = group; writing >= 0; writing = m_writings[size_t(writing)].next) {
            for (int place = m_writings[size_t(writing)].first; place >= 0;)
                place = std::exchange(m_places[size_t(place)].next, writing);
        }
    }

    QStringView m_text;
    std::vector<Place> m_places;
    std::vector<Writing> m_writings;
    QHash<QString, int> m_groups; // writing, by what the places hold without letter case
};

} // namespace

qsizetype changedRects(QStringView before, QStringView after)
{
    const QList<QStringView> from = splitIgnoringCase(before, u"<rect>"),
                             to = splitIgnoringCase(after, u"<rect>");
    const auto numbers = [](QStringView piece) {
        return piece.first(std::max<qsizetype>(0, piece.indexOf(u'<')));
    };
    qsizetype changed = 0;
    for (qsizetype i = 1; i < std::min(from.size(), to.size()); ++i)
        changed += numbers(from[i]) != numbers(to[i]);
    return changed;
}

bool wholeNumber(QStringView text, qint64 &floor)
{
    const std::optional<Number> number = numberIn(text);
    if (!number || number->whole.size() > mostDigits)
        return false;
    floor = number->whole.toLongLong();
    if (number->negative)
        floor = -floor - (withoutZeros(number->fraction).isEmpty() ? 0 : 1);
    return true;
}

ScaleResult ScaleRects(QString &text, int numerator, int denominator, const QString &screenWidth,
                       const QString &screenHeight)
{
    const QString first = withoutBrackets(SplitFieldView(text, u"<rect>", u"</rect>", 1, 0));
    const std::optional<Four> screen = fourNumbers(splitExact(first, u","));
    if (!screen || !numberIn(screenWidth) || !numberIn(screenHeight))
        return ScaleResult::Nothing;
    const Factor factor{numerator, denominator};
    const QString width = scaled((*screen)[2], factor);
    const QString height = scaled((*screen)[3], factor);
    if (isLess(screenWidth, width) || isLess(screenHeight, height))
        return ScaleResult::TooLarge;
    if (isLess(width, leastWidth) || isLess(height, leastHeight))
        return ScaleResult::TooSmall;

    RectPlaces places(text);
    const QList<QStringView> pieces = splitIgnoringCase(text, u"<rect>");
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        if (!containsExact(pieces[i], u"</rect>"))
            continue;
        const QString rect = withoutBrackets(pieces[i].first(indexOfIgnoringCase(pieces[i], u"</rect>")));
        const QList<QStringView> parts = splitExact(rect, u",");
        const std::optional<Four> numbers = fourNumbers(parts);
        if (!numbers)
            continue;
        places.rewrite(parts[0] + u',' + parts[1] + u',' + parts[2] + u',' + parts[3],
                       scaledText(*numbers, factor, factor));
    }
    text = places.text();
    return ScaleResult::Scaled;
}

ConvertedRects convertedRects(const QString &text, const QSize &from, const QSize &to)
{
    constexpr QStringView start = u"<rect>", end = u"</rect>";
    const Factor across = factorOf(from.width(), to.width()), down = factorOf(from.height(), to.height());
    ConvertedRects rects;
    qsizetype behind = 0;
    for (qsizetype at = indexOfIgnoringCase(text, start); at >= 0;) {
        const qsizetype content = at + start.size();
        at = indexOfIgnoringCase(text, start, content);
        if (behind < content)
            behind = indexOfIgnoringCase(text, end, content);
        if (behind < 0)
            break;
        if (at >= 0 && at < behind)
            continue;
        const QStringView rect = QStringView(text).sliced(content, behind - content).trimmed();
        const bool isBracketed = rect.size() > 1 && rect.startsWith(u'[') && rect.endsWith(u']');
        const QStringView inner = isBracketed ? rect.sliced(1).chopped(1) : QStringView();
        const QList<QStringView> parts = splitExact(inner, u",");
        const std::optional<Four> numbers = parts.size() == 4 ? fourNumbers(parts) : std::nullopt;
        if (!numbers) {
            rects.kept += rect.isEmpty() ? 0 : 1;
            continue;
        }
        const QString after = scaledText(*numbers, across, down);
        const qint32 first = qint32(inner.data() - text.constData());
        if (inner != after)
            rects.changed.append({{first, first + qint32(inner.size())}, after});
    }
    return rects;
}

void MoveRects(QString &text, Axis axis, qint64 distance)
{
    RectPlaces places(text);
    const QList<QStringView> pieces = splitExact(text, u"<rect>");
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        const QStringView rect = pieces[i].first(std::max<qsizetype>(indexOfExact(pieces[i], u"</rect>"), 0));
        QList<QStringView> parts = splitExact(rect, u",");
        if (parts.size() < 4 || !parts[0].contains(u'['))
            continue;
        parts[0] = parts[0].sliced(parts[0].indexOf(u'[') + 1);
        if (const qsizetype end = parts[3].indexOf(u']'); end >= 0)
            parts[3].truncate(end);
        const QString old = parts[0] + u',' + parts[1] + u',' + parts[2] + u',' + parts[3];
        qint64 number = 0;
        QStringView &moved = parts[axis == Axis::Top ? 1 : 0];
        if (!wholeNumber(moved, number) || containsIgnoringCase(old, opening) ||
            containsIgnoringCase(old, closing))
            continue;
        const QString result = QString::number(distance + number);
        moved = result;
        places.rewrite(old, parts[0] + u',' + parts[1] + u',' + parts[2] + u',' + parts[3]);
    }
    text = places.text();
}

} // namespace quillmere
