#include "commands/CheckReport.h"

#include "checks/Parallel.h"
#include "commands/PictureNames.h"
#include "files/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace quillmere {

namespace {

QString relativeFile(const Problem &problem, const QString &folder)
{
    const QString root = joinPath(folder, u"");
    const QString path = problem.file.startsWith(root) ? problem.file.mid(root.size())
                                                       : QDir(folder).relativeFilePath(problem.file);
    return QDir::fromNativeSeparators(path);
}

void addNumber(QByteArray &text, qint32 number)
{
    std::array<char, 16> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end - digits.data());
}

// Lines of a report, and what is summed up below them.
struct TextPart
{
    QByteArray text;
    std::array<int, 3> counts = {};
    qint64 unused = 0;
};

TextPart linesOf(const QList<Problem> &problems, qsizetype from, qsizetype to, const QString &folder)
{
    std::array<QByteArray, 3> severities;
    for (size_t i = 0; i < severities.size(); ++i)
        severities[i] = ": " + nameOf(Severity(i)).toLatin1() + ": ";
    TextPart part;
    QByteArray &text = part.text;
    constexpr qsizetype usualLine = 160; // bytes
    text.reserve((to - from) * usualLine);
    QString path;
    QByteArray file;
    for (qsizetype number = from; number < to; ++number) {
        const Problem &problem = problems.at(number);
        if (problem.file != path)
            file = printable(relativeFile(problem, folder)).toUtf8();
        path = problem.file;
        const Severity severity = problem.severity();
        text += file;
        text += ':';
        addNumber(text, problem.line);
        text += ':';
        addNumber(text, problem.column);
        text += severities[size_t(severity)];
        text += printable(problem.message()).toUtf8();
        text += " [";
        text += textOf(problem.rule).id;
        text += "]\n";
        ++part.counts[size_t(severity)];
        part.unused += problem.bytes;
    }
    return part;
}

QByteArray asText(const QList<Problem> &problems, const QString &folder)
{
    constexpr qsizetype lines = 2000; // of a part
    std::vector<TextPart> parts(size_t((problems.size() + lines - 1) / lines));
    inParallel(qsizetype(parts.size()), {}, [&](qsizetype part) {
        const qsizetype from = part * lines;
        parts[size_t(part)] = linesOf(problems, from, std::min(from + lines, problems.size()), folder);
    });
    TextPart whole;
    for (const TextPart &part : parts) {
        whole.text += part.text;
        for (size_t i = 0; i < whole.counts.size(); ++i)
            whole.counts[i] += part.counts[i];
        whole.unused += part.unused;
    }
    // The last line is the same for all themes, so that a program can read it.
    if (whole.unused > 0)
        whole.text += "unused images take " + QByteArray::number(whole.unused) + " bytes\n";
    whole.text += QByteArray::number(whole.counts[0]) + " errors, " + QByteArray::number(whole.counts[1]) +
                  " warnings, " + QByteArray::number(whole.counts[2]) + " notes\n";
    return whole.text;
}

QByteArray asJson(const QList<Problem> &problems, const QString &folder)
{
    QJsonArray array;
    for (const Problem &problem : problems)
        array.append(QJsonObject{{QStringLiteral("file"), relativeFile(problem, folder)},
                                 {QStringLiteral("line"), problem.line},
                                 {QStringLiteral("column"), problem.column},
                                 {QStringLiteral("length"), problem.range.size()},
                                 {QStringLiteral("severity"), nameOf(problem.severity())},
                                 {QStringLiteral("rule"), QLatin1String(textOf(problem.rule).id)},
                                 {QStringLiteral("message"), problem.message()}});
    return QJsonDocument(array).toJson();
}

QJsonObject sarifMessage(const QString &text)
{
    return {{QStringLiteral("text"), text}};
}

QJsonArray sarifRules()
{
    QJsonArray rules;
    for (int number = 0; number < kRules; ++number) {
        const RuleText &rule = textOf(Rule(number));
        rules.append(
            QJsonObject{{QStringLiteral("id"), QLatin1String(rule.id)},
                        {QStringLiteral("shortDescription"), sarifMessage(QLatin1String(rule.explanation))},
                        {QStringLiteral("defaultConfiguration"),
                         QJsonObject{{QStringLiteral("level"), nameOf(rule.severity)}}}});
    }
    return rules;
}

QJsonObject sarifResult(const Problem &problem, const QString &folder)
{
    const QString uri =
        QString::fromLatin1(QUrl::toPercentEncoding(relativeFile(problem, folder), QByteArrayLiteral("/")));
    QJsonObject region = {{QStringLiteral("startLine"), problem.line},
                          {QStringLiteral("startColumn"), problem.column},
                          {QStringLiteral("charOffset"), problem.range.start},
                          {QStringLiteral("charLength"), problem.range.size()}};
    if (problem.end.line > 0) {
        region.insert(QStringLiteral("endLine"), problem.end.line);
        region.insert(QStringLiteral("endColumn"), problem.end.column);
    }
    const QJsonObject place = {
        {QStringLiteral("artifactLocation"), QJsonObject{{QStringLiteral("uri"), uri}}},
        {QStringLiteral("region"), region}};
    return {
        {QStringLiteral("ruleId"), QLatin1String(textOf(problem.rule).id)},
        {QStringLiteral("ruleIndex"), int(problem.rule)},
        {QStringLiteral("level"), nameOf(problem.severity())},
        {QStringLiteral("message"), sarifMessage(problem.message())},
        {QStringLiteral("locations"), QJsonArray{QJsonObject{{QStringLiteral("physicalLocation"), place}}}}};
}

QByteArray asSarif(const QList<Problem> &problems, const QString &folder)
{
    QJsonArray results;
    for (const Problem &problem : problems)
        results.append(sarifResult(problem, folder));
    const QJsonObject driver = {{QStringLiteral("name"), QStringLiteral("quillmere")},
                                {QStringLiteral("version"), QCoreApplication::applicationVersion()},
                                {QStringLiteral("rules"), sarifRules()}};
    const QJsonObject run = {{QStringLiteral("tool"), QJsonObject{{QStringLiteral("driver"), driver}}},
                             {QStringLiteral("columnKind"), QStringLiteral("utf16CodeUnits")},
                             {QStringLiteral("results"), results}};
    return QJsonDocument(QJsonObject{{QStringLiteral("$schema"),
                                      QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json")},
                                     {QStringLiteral("version"), QStringLiteral("2.1.0")},
                                     {QStringLiteral("runs"), QJsonArray{run}}})
        .toJson();
}

} // namespace

QByteArray checkReport(const QList<Problem> &problems, const QString &folder, ReportFormat format)
{
    switch (format) {
    case ReportFormat::Json:
        return asJson(problems, folder);
    case ReportFormat::Sarif:
        return asSarif(problems, folder);
    default:
        return asText(problems, folder);
    }
}

} // namespace quillmere
