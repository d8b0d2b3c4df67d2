#pragma once

#include "checks/Problem.h"

#include <optional>

namespace quillmere {

// A rule, or a rule for one name, that is not to be told.
struct IgnoredRule
{
    Rule rule;
    std::optional<QString> name; // exactly

    bool operator==(const IgnoredRule &) const = default;
};
// "RULE" or "RULE:NAME"; nothing where there is no such rule.
std::optional<IgnoredRule> ignoredRule(const QString &text);
// The other way round.
QString textOf(const IgnoredRule &ignored);

QList<Problem> withoutIgnored(const QList<Problem> &problems, const QList<IgnoredRule> &ignored);

} // namespace quillmere
