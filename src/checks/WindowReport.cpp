#include "checks/WindowReport.h"

namespace quillmere {

QString quoted(QStringView name)
{
    constexpr qsizetype most = 120;
    QString shown = name.size() > most ? QString(name.first(most) + u'\u2026') : name.toString();
    for (QChar &unit : shown) {
        if (unit.category() == QChar::Other_Control || unit == u'\u2028' || unit == u'\u2029')
            unit = u'?';
    }
    return u'"' + shown + u'"';
}

void WindowReport::add(Rule rule, Range range, const QString &message, const QString &name,
                       const QString &meant)
{
    Problem problem;
    problem.rule = rule;
    problem.file = file.found.isEmpty() ? file.path : file.found;
    problem.range = range;
    const LineColumn place = m_lines.placeOf(range.start);
    problem.line = place.line;
    problem.column = place.column;
    problem.end = m_lines.placeOf(range.end);
    problem.name = name;
    problem.say(message, meant);
    problems.append(problem);
}

QString WindowReport::blockName(qint32 block) const
{
    const std::optional<Attribute> name = outline.nameAttribute(block);
    return name ? outline.at(name->value).toString() : QString();
}

QString WindowReport::block(qint32 block) const
{
    const QString name = blockName(block);
    return name.isEmpty() ? QStringLiteral("a block without a name") : QString(u"the block " + quoted(name));
}

QList<Problem> checkWindow(const Outline &outline, const IndexedFile &file, const ThemeIndex &index,
                           const ThemeFacts &facts, std::stop_token stop)
{
    WindowReport report(outline, file, index, facts, std::move(stop));
    for (const auto rules : {checkMarkup, checkNames, checkBlocks, checkTranslations, checkTextFit}) {
        if (!report.stop.stop_requested())
            rules(report);
    }
    sortByPlace(report.problems);
    return report.problems;
}

} // namespace quillmere
