#pragma once

#include "checks/Problem.h"

#include <QByteArray>
#include <QSet>

#include <optional>

namespace quillmere {

enum class ReportFormat { Text, Json, Sarif };

// A rule, or a rule for one name, that is not to be told.
struct IgnoredRule
{
    Rule rule;
    std::optional<QString> name; // exactly
};
// "RULE" or "RULE:NAME"; nothing where there is no such rule.
std::optional<IgnoredRule> ignoredRule(const QString &text);

QList<Problem> withoutIgnored(const QList<Problem> &problems, const QList<IgnoredRule> &ignored);

// The problems in their order, files relative to `folder`, as UTF-8.
QByteArray checkReport(const QList<Problem> &problems, const QString &folder, ReportFormat format);

} // namespace quillmere
