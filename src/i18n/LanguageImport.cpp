#include "i18n/LanguageImport.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kMostChoices = 20; // for one source
constexpr QChar kEllipsis(0x2026);     // receivers' fonts have none

QString quoted(const QString &text)
{
    return u'"' + text + u'"';
}

bool isSame(const QString &translation, const QString &other)
{
    return translation == other || (!isTranslated(translation) && !isTranslated(other));
}

// What the file says of one source: in its first unit, and in those that say something else.
struct Found
{
    QList<const ExchangeUnit *> units;
    bool isConflicting() const { return units.size() > 1; }
};

QHash<QString, Found> foundIn(const ExchangeTable &table, ImportPlan &plan)
{
    QHash<QString, Found> found;
    found.reserve(table.units.size());
    for (const ExchangeUnit &unit : table.units) {
        QList<const ExchangeUnit *> &units = found[unit.source].units;
        const bool isKnown = std::any_of(units.cbegin(), units.cend(), [&](const ExchangeUnit *other) {
            return isSame(other->translation, unit.translation);
        });
        if (isKnown)
            continue;
        if (!units.isEmpty())
            plan.conflicting.append({unit.line, QStringLiteral("%1 is translated otherwise in line %2")
                                                    .arg(quoted(unit.source))
                                                    .arg(units.first()->line)});
        if (units.size() < kMostChoices)
            units.append(&unit);
    }
    return found;
}

// No receiver shows them, and with some of them a file is taken for another kind.
bool isControl(QChar letter)
{
    return letter < u' ' && letter != u'\t' && letter != u'\n' && letter != u'\r';
}

// Compares one row with one unit.
class Comparison
{
public:
    Comparison(ImportPlan &plan, CodePage page,
               const std::function<QString(int row, const QString &after)> &reasonAgainst)
        : m_plan(plan), m_page(page), m_reasonAgainst(reasonAgainst)
    {
    }

    void compare(int row, const QString &before, const ExchangeUnit &unit, QList<ImportChange> &changes) const
    {
        QString after = unit.translation;
        if (m_page != CodePage::Windows1252 && !isSame(before, after))
            after.replace(kEllipsis, QStringLiteral("..."));
        if (isSame(before, after))
            return;
        QString reason;
        if (after.contains(u'<') || after.contains(u'>'))
            reason = QStringLiteral("a translation holds neither < nor >: ") + quoted(after);
        else if (std::any_of(after.begin(), after.end(), isControl))
            reason = QStringLiteral("a translation holds no control characters: ") + quoted(after);
        if (reason.isEmpty() && m_reasonAgainst)
            reason = m_reasonAgainst(row, after);
        if (reason.isEmpty())
            changes.append({row, unit.line, unit.source, before, after, unit.state == UnitState::Fuzzy});
        else
            m_plan.refused.append({unit.line, reason});
    }

private:
    ImportPlan &m_plan;
    CodePage m_page;
    const std::function<QString(int, const QString &)> &m_reasonAgainst;
};

} // namespace

ImportPlan planImport(const QList<ListRows::Row> &strings, const ExchangeTable &table, CodePage page,
                      const std::function<QString(int row, const QString &after)> &reasonAgainst)
{
    ImportPlan plan;
    plan.refused = table.refused;
    const QHash<QString, Found> found = foundIn(table, plan);
    const Comparison comparison(plan, page, reasonAgainst);
    QSet<QString> known;
    for (int row = 0; row < strings.size(); ++row) {
        const QString source = withLineFeeds(strings[row].sub(1));
        if (source.isEmpty() || known.contains(source))
            continue;
        known.insert(source);
        const Found units = found.value(source);
        if (units.units.isEmpty())
            ++plan.absent;
        for (const ExchangeUnit *unit : units.units)
            comparison.compare(row, withLineFeeds(strings[row].sub(2)), *unit,
                               units.isConflicting() ? plan.choices : plan.changes);
    }
    for (const ExchangeUnit &unit : table.units) {
        if (!known.contains(unit.source) && found.value(unit.source).units.first() == &unit)
            plan.unknown.append({unit.line, QStringLiteral("the language has no ") + quoted(unit.source)});
    }
    std::stable_sort(plan.refused.begin(), plan.refused.end(),
                     [](const LineNote &a, const LineNote &b) { return a.line < b.line; });
    return plan;
}

} // namespace quillmere
