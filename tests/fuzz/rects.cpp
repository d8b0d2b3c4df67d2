#include "Fuzz.h"
#include "widgets/LiteralRects.h"
#include "widgets/RectCommands.h"

#include <QRegularExpression>

// Rects are scaled and moved as one by one, and nothing but rects changes. The slow form knows numbers of
// thirty digits.
void fuzz(const Input &input)
{
    const QString text = input.text(0);
    static const QRegularExpression rect(u"<rect>\\[(?:(?!<rect>\\[|\\]</rect>).)*\\]</rect>"_s,
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression notSimple(u"[0-9.]{30}|[^\\x01-\\x7f]"_s);
    const bool simple = !notSimple.match(text).hasMatch();
    const auto others = [](QString rest) { return rest.remove(rect); };
    const bool larger = input.choice(1, 2);
    const int numerator = larger ? 5 : 4, denominator = larger ? 4 : 5;

    QString fast = text, slow = text;
    const ScaleResult result = ScaleRects(fast, numerator, denominator, u"1280"_s, u"720"_s);
    check(result == ScaleResult::Scaled || fast == text, "all or nothing", text);
    same(others(fast), others(text), "scales nothing but rects");
    if (simple) {
        const QString wrong = literal::scaleRects(slow, numerator, denominator, 1280, 720);
        check(wrong.isEmpty() == (result == ScaleResult::Scaled), "scales when it fits", text);
        same(fast, slow, "scales");
    }

    qint32 behind = 0;
    const QSize to = larger ? QSize(1600, 900) : QSize(1024, 576);
    for (const ConvertedRects::Rect &each : convertedRects(text, {1280, 720}, to).changed) {
        check(each.range.start >= behind && each.range.end <= text.size(), "converts each once", text);
        behind = each.range.end;
        if (!simple)
            continue;
        QStringList numbers;
        for (const QString &number : literal::valuesOf(each.range.in(text).toString()))
            numbers.append(literal::written(literal::scaled(number, numerator, denominator)));
        same(each.after, numbers.join(u','), "converts");
    }

    const int distance = input.choice(2, 256) - 128;
    for (const Axis axis : {Axis::Top, Axis::Left}) {
        fast = slow = text;
        MoveRects(fast, axis, distance);
        same(others(fast), others(text), "moves nothing but rects");
        if (!simple)
            continue;
        literal::moveRects(slow, axis == Axis::Top ? 1 : 0, distance);
        same(fast, slow, "moves");
    }
}
