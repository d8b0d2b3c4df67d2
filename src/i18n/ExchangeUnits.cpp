#include "i18n/ExchangeUnits.h"

#include <QSet>

namespace quillmere {

namespace {

constexpr qsizetype kMostUnits = 1'000'000;
constexpr qsizetype kMostRefused = 10'000;

} // namespace

void ExchangeTable::add(const ExchangeUnit &unit)
{
    if (units.size() >= kMostUnits)
        throw LineError(unit.line, QStringLiteral("there are more than 1,000,000 strings"));
    units.append(unit);
    units.last().source = withLineFeeds(unit.source);
    units.last().translation = withLineFeeds(unit.translation);
}

void ExchangeTable::refuse(int line, const QString &reason)
{
    if (refused.size() >= kMostRefused)
        throw LineError(line, QStringLiteral("more than 10,000 strings cannot be read; the last: ") + reason);
    refused.append({line, reason});
}

QString withLineFeeds(QString text)
{
    if (text.contains(u'\r'))
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    return text;
}

bool isTranslated(QStringView translation)
{
    return !translation.trimmed().isEmpty();
}

QString inOneLine(QString text)
{
    for (QChar &letter : text) {
        if (letter.category() == QChar::Other_Control || letter.category() == QChar::Other_Format ||
            letter.category() == QChar::Separator_Line || letter.category() == QChar::Separator_Paragraph)
            letter = u'?';
    }
    return text;
}

QList<ExchangeUnit> unitsOf(const QList<ListRows::Row> &strings,
                            const std::function<QStringList(const QString &source)> &places)
{
    QList<ExchangeUnit> units;
    QSet<QString> known;
    for (const ListRows::Row &row : strings) {
        ExchangeUnit unit;
        unit.source = withLineFeeds(row.sub(1));
        if (unit.source.isEmpty() || known.contains(unit.source))
            continue;
        known.insert(unit.source);
        if (isTranslated(row.sub(2)))
            unit.translation = withLineFeeds(row.sub(2));
        if (row.checked)
            unit.state = UnitState::Translated;
        if (places)
            unit.places = places(row.sub(1));
        units.append(unit);
    }
    return units;
}

} // namespace quillmere
