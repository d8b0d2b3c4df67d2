#pragma once

#include "markup/LiteralTwins.h"

#include <optional>

// The commands on rects step by step, a pass over the whole text for each rect. Knows numbers of up to thirty
// digits.
namespace literal {

__extension__ typedef __int128 Integer;

struct Decimal
{
    Integer units, scale; // units / scale, scale a power of ten
};

inline std::optional<Decimal> decimal(QString text)
{
    text = text.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text.remove(0, 1);
    const QStringList parts = text.split(u'.');
    const QString digits = parts.join(QString());
    Decimal number{0, 1};
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        number.units = number.units * 10 + (negative ? u'0' - c.unicode() : c.unicode() - u'0');
    }
    for (qsizetype i = parts.value(1).size(); i > 0; --i)
        number.scale *= 10;
    return digits.isEmpty() || parts.size() > 2 ? std::nullopt : std::optional(number);
}

inline QString written(Integer number)
{
    const bool negative = number < 0;
    QString digits;
    do {
        digits.prepend(QString::number(std::abs(int(number % 10))));
        number /= 10;
    } while (number != 0);
    return negative ? QString(u'-' + digits) : digits;
}

inline Integer scaled(const QString &number, int numerator, int denominator)
{
    const Decimal value = *decimal(number);
    return value.units * numerator / (value.scale * denominator);
}

inline bool areNumbers(const QStringList &values)
{
    return values.size() >= 4 && decimal(values[0]) && decimal(values[1]) && decimal(values[2]) &&
           decimal(values[3]);
}

inline void replaceRect(QString &text, const QStringList &from, const QStringList &to)
{
    text.replace(QString(u"<rect>[" + from.join(u',') + u"]</rect>"),
                 QString(u"<rect>[" + to.join(u',') + u"]</rect>"), Qt::CaseInsensitive);
}

inline QStringList valuesOf(QString rect)
{
    return rect.remove(u'[').remove(u']').split(u',');
}

// "" where all went well, else what was wrong.
inline QString scaleRects(QString &text, int numerator, int denominator, int screenWidth, int screenHeight)
{
    const QString start = QStringLiteral("<rect>"), end = QStringLiteral("</rect>");
    const QStringList screen = valuesOf(twins::splitField(text, start, end, 1, 0));
    if (!areNumbers(screen))
        return QStringLiteral("Nothing");
    const Integer width = scaled(screen[2], numerator, denominator);
    const Integer height = scaled(screen[3], numerator, denominator);
    if (width > screenWidth || height > screenHeight)
        return QStringLiteral("TooLarge");
    if (width < 100 || height < 10)
        return QStringLiteral("TooSmall");
    const QStringList pieces = text.split(start, Qt::KeepEmptyParts, Qt::CaseInsensitive);
    for (int i = 1; i < pieces.size(); ++i) {
        if (!pieces[i].contains(end))
            continue;
        const QStringList old =
            valuesOf(pieces[i].split(end, Qt::KeepEmptyParts, Qt::CaseInsensitive)[0]).mid(0, 4);
        if (!areNumbers(old))
            continue;
        QStringList results;
        for (const QString &number : old)
            results.append(written(scaled(number, numerator, denominator)));
        replaceRect(text, old, results);
    }
    return QString();
}

// `moved` is the index of the number that the distance is added to.
inline void moveRects(QString &text, int moved, int distance)
{
    const QStringList pieces = text.split(QStringLiteral("<rect>"));
    for (int i = 1; i < pieces.size(); ++i) {
        QStringList old = pieces[i].section(QStringLiteral("</rect>"), 0, 0).split(u',').mid(0, 4);
        if (!pieces[i].contains(QStringLiteral("</rect>")) || old.size() < 4 || !old[0].contains(u'['))
            continue;
        old[0] = old[0].section(u'[', 1);
        old[3] = old[3].section(u']', 0, 0);
        const std::optional<Decimal> number = decimal(old[moved]);
        const QString all = old.join(u',');
        if (!number || all.contains(QStringLiteral("<rect>["), Qt::CaseInsensitive) ||
            all.contains(QStringLiteral("]</rect>"), Qt::CaseInsensitive))
            continue;
        Integer floor = number->units / number->scale;
        if (number->units % number->scale < 0)
            --floor;
        if (floor <= -Integer(1'000'000'000'000'000) || floor >= Integer(1'000'000'000'000'000))
            continue;
        QStringList results = old;
        results[moved] = written(floor + distance);
        replaceRect(text, old, results);
    }
}

} // namespace literal
