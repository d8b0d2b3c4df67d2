#include "commands/CheckCommand.h"

#include "checks/ThemeCheck.h"
#include "commands/PictureNames.h"
#include "commands/ThemeFolder.h"
#include "files/Files.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"

#include <QIODevice>
#include <QTextStream>

#include <algorithm>

namespace quillmere {

namespace {

MeasuredTheme measuredTheme(const ThemeSources &sources, const ThemeIndex &index,
                            const TextMeasuring &measure)
{
    Files files;
    ThemeProject theme(files);
    theme.LoadTheme(sources.folder);
    const ReceiverParts parts = receiverParts(theme);
    MeasuredTheme measured{parts.theme.font, nullptr};
    measured.measures = std::make_shared<const TextMeasures>(
        measure(sources.folder, parts.fonts, textsToMeasure(sources, index, measured)));
    return measured;
}

} // namespace

int runCheck(const CommandLine &line, const PictureReader &reader, QIODevice &out, QTextStream &err,
             const TextMeasuring &measure, const std::function<void(int status)> &leave)
{
    const QString reason = reasonAgainst(line.theme);
    if (!reason.isEmpty()) {
        err << "quillmere: " << printable(reason) << Qt::endl;
        return 2;
    }
    ThemeSources sources;
    sources.folder = line.theme;
    PictureStore pictures(reader);
    WindowOutlines outlines;
    const std::optional<ThemeIndex> index = ThemeIndex::build(sources, {}, &outlines);
    MeasuredTheme measured;
    if (line.textFit) {
        try {
            measured = measuredTheme(sources, *index, measure);
        } catch (const RunTimeError &error) {
            err << "quillmere: " << printable(error.message()) << Qt::endl;
            return 2;
        }
    }
    const QList<Problem> problems = withoutIgnored(
        checkTheme(sources, *index, pictures, {}, std::move(outlines), measured)->problems, line.ignored);
    const QByteArray report = checkReport(problems, line.theme, line.format);
    if (out.write(report) != report.size()) {
        err << "quillmere: cannot write the report: " << out.errorString() << Qt::endl;
        return 2;
    }
    const bool fails = std::any_of(problems.begin(), problems.end(),
                                   [&](const Problem &problem) { return problem.severity() <= line.failOn; });
    if (leave)
        leave(fails ? 1 : 0);
    return fails ? 1 : 0;
}

} // namespace quillmere
