#include "i18n/LanguageImport.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {

constexpr QChar kEllipsis(0x2026); // receivers' fonts have none

QString quoted(const QString &text)
{
    return u'"' + text + u'"';
}

bool isSame(const QString &translation, const QString &other)
{
    return translation == other || (!isTranslated(translation) && !isTranslated(other));
}

// What the file says of one source.
struct Found
{
    const ExchangeUnit *unit = nullptr;
    bool isConflicting = false;
};

QHash<QString, Found> foundIn(const ExchangeTable &table, ImportPlan &plan)
{
    QHash<QString, Found> found;
    found.reserve(table.units.size());
    for (const ExchangeUnit &unit : table.units) {
        Found &known = found[unit.source];
        if (!known.unit) {
            known.unit = &unit;
        } else if (!isSame(known.unit->translation, unit.translation)) {
            known.isConflicting = true;
            plan.conflicting.append({unit.line, QStringLiteral("%1 is translated otherwise in line %2")
                                                    .arg(quoted(unit.source))
                                                    .arg(known.unit->line)});
        }
    }
    return found;
}

} // namespace

ImportPlan planImport(const QList<ListRows::Row> &strings, const ExchangeTable &table, CodePage page,
                      const std::function<QString(int row, const QString &after)> &reasonAgainst)
{
    ImportPlan plan;
    plan.refused = table.refused;
    const QHash<QString, Found> found = foundIn(table, plan);
    QSet<QString> known;
    for (int row = 0; row < strings.size(); ++row) {
        const QString source = withLineFeeds(strings[row].sub(1));
        if (source.isEmpty() || known.contains(source))
            continue;
        known.insert(source);
        const Found unit = found.value(source);
        if (!unit.unit) {
            ++plan.absent;
            continue;
        }
        const QString before = withLineFeeds(strings[row].sub(2));
        QString after = unit.unit->translation;
        if (page != CodePage::Windows1252 && !isSame(before, after))
            after.replace(kEllipsis, QStringLiteral("..."));
        if (unit.isConflicting || isSame(before, after))
            continue;
        QString reason = after.contains(u'<') || after.contains(u'>')
                             ? QStringLiteral("a translation holds neither < nor >: ") + quoted(after)
                             : QString();
        if (reason.isEmpty() && reasonAgainst)
            reason = reasonAgainst(row, after);
        if (reason.isEmpty())
            plan.changes.append({row, unit.unit->line, source, before, after});
        else
            plan.refused.append({unit.unit->line, reason});
    }
    for (const ExchangeUnit &unit : table.units) {
        if (!known.contains(unit.source) && found.value(unit.source).unit == &unit)
            plan.unknown.append({unit.line, QStringLiteral("the language has no ") + quoted(unit.source)});
    }
    std::stable_sort(plan.refused.begin(), plan.refused.end(),
                     [](const LineNote &a, const LineNote &b) { return a.line < b.line; });
    return plan;
}

} // namespace quillmere
