#include "checks/Ignored.h"

#include <algorithm>

namespace quillmere {

std::optional<IgnoredRule> ignoredRule(const QString &text)
{
    const qsizetype colon = text.indexOf(u':');
    const std::optional<Rule> rule = ruleOf(QStringView(text).first(colon < 0 ? text.size() : colon));
    if (!rule)
        return std::nullopt;
    return IgnoredRule{*rule, colon < 0 ? std::nullopt : std::optional(text.mid(colon + 1))};
}

QString textOf(const IgnoredRule &ignored)
{
    const QString rule = QLatin1String(textOf(ignored.rule).id);
    return ignored.name ? QString(rule + u':' + *ignored.name) : rule;
}

QList<Problem> withoutIgnored(const QList<Problem> &problems, const QList<IgnoredRule> &ignored)
{
    if (ignored.isEmpty())
        return problems;
    QList<Problem> left;
    std::copy_if(problems.begin(), problems.end(), std::back_inserter(left), [&](const Problem &problem) {
        return std::none_of(ignored.begin(), ignored.end(), [&](const IgnoredRule &each) {
            return each.rule == problem.rule && (!each.name || *each.name == problem.name);
        });
    });
    return left;
}

} // namespace quillmere
