#include "making/ThemeConversion.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "theme/CatalogueScreen.h"
#include "widgets/RectCommands.h"

#include <QObject>
#include <QSet>

#include <algorithm>
#include <map>

namespace quillmere {

namespace {

constexpr QSize kLeast{100, 10}, kMost{9999, 9999}; // pixels

QString catalogueText(const ThemeSources &sources, const QString &catalogue)
{
    const std::optional<QString> text = textOf(sources, {catalogue, findFile(catalogue)});
    if (!text)
        throwFailed("read", catalogue, QStringLiteral("there is no such file, or it cannot be read"));
    return *text;
}

CatalogueScreen writtenScreen(const QString &text, const QString &catalogue)
{
    const CatalogueScreen screen = screenIn(text);
    if (screen.size.isEmpty())
        throwFailed("convert", catalogue,
                    QStringLiteral("it does not say how wide and how high the screen is"));
    if (screen.size != screen.size.boundedTo(kMost))
        throwFailed(
            "convert", catalogue,
            QStringLiteral("no screen is %1 x %2").arg(screen.size.width()).arg(screen.size.height()));
    return screen;
}

using Places = std::map<std::pair<Rule, qint32>, int>;

// How many problems about what fits there are at each place of the text before the changes.
Places misfits(const ThemeConversion::Window &window, const QString &text, const QList<RangeChange> &changes,
               const ThemeIndex &index, const ThemeFacts &facts)
{
    Places places;
    qint32 moved = 0;
    auto change = changes.begin();
    const Outline outline(text);
    const QList<Problem> problems = checkWindow(outline, window.file, index, facts); // by place
    for (const Problem &problem : problems) {
        for (; change != changes.end() && change->range.start + moved < problem.range.start; ++change)
            moved += qint32(change->after.size() - change->before.size());
        if (problem.rule == Rule::PictureSize || problem.rule == Rule::TextFit)
            ++places[{problem.rule, problem.range.start - moved}];
    }
    return places;
}

} // namespace

QSize screenSize(const ThemeSources &sources, const QString &catalogue)
{
    return writtenScreen(catalogueText(sources, catalogue), catalogue).size;
}

QString whyNotScreen(const QSize &size)
{
    return size == size.expandedTo(kLeast).boundedTo(kMost)
               ? QString()
               : QObject::tr("Type a width from %1 to %2 and a height from %3 to %4, such as 1280 x 720.")
                     .arg(kLeast.width())
                     .arg(kMost.width())
                     .arg(kLeast.height())
                     .arg(kMost.height());
}

ThemeConversion convertedTheme(const ThemeSources &sources, const ThemeIndex &index, const QString &catalogue,
                               const QSize &to, const Progress &progress)
{
    const QString entries = catalogueText(sources, catalogue);
    const CatalogueScreen from = writtenScreen(entries, catalogue);
    ThemeConversion conversion;
    QSet<QString> done; // two names may lead to one file
    for (qint32 number = 0; number < index.files().size(); ++number) {
        tell(progress, number, index.files().size());
        const IndexedFile &file = index.files().at(number);
        if (file.role != FileRole::Window || !file.isListed ||
            (!file.found.isEmpty() && done.contains(file.found)))
            continue;
        const std::optional<QString> text = file.isReadable ? textOf(sources, file) : std::nullopt;
        if (!text) {
            ++conversion.missing;
            continue;
        }
        done.insert(file.found);
        const ConvertedRects rects = convertedRects(*text, from.size, to);
        conversion.kept += rects.kept;
        ThemeConversion::Window window{file, *text, {}};
        for (const ConvertedRects::Rect &rect : rects.changed)
            window.changes.append({rect.range, rect.range.in(*text).toString(), rect.after});
        if (window.changes.isEmpty())
            continue;
        conversion.edit.replace(file.path, ThemeEdit::markOf(*text), window.changes);
        conversion.windows.append(window);
    }
    conversion.edit.replace(catalogue, entries, from.width, QString::number(to.width()));
    conversion.edit.replace(catalogue, entries, from.height, QString::number(to.height()));
    return conversion;
}

NoLongerFitting noLongerFitting(const ThemeConversion &conversion, const ThemeIndex &index,
                                const ThemeFacts &facts, const Progress &progress)
{
    NoLongerFitting found;
    for (qsizetype number = 0; number < conversion.windows.size(); ++number) {
        tell(progress, number, conversion.windows.size());
        const ThemeConversion::Window &window = conversion.windows.at(number);
        const Places before = misfits(window, window.text, {}, index, facts);
        const QString after = changedText(window.text, window.changes);
        for (const auto &[place, count] : misfits(window, after, window.changes, index, facts)) {
            const auto known = before.find(place);
            const int more = count - (known == before.end() ? 0 : known->second);
            (place.first == Rule::PictureSize ? found.pictures : found.texts) += std::max(more, 0);
        }
    }
    return found;
}

} // namespace quillmere
