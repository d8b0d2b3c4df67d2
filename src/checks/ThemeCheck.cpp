#include "checks/ThemeCheck.h"

#include "checks/Parallel.h"
#include "checks/ThemeReport.h"
#include "files/Paths.h"
#include "theme/CatalogueScreen.h"

#include <utility>

namespace quillmere {

namespace {

std::optional<QSize> screenOf(const ThemeSources &sources, const Catalogue &windows)
{
    if (windows.file.path.isEmpty())
        return std::nullopt;
    const QString text = textOf(sources, windows.file).value_or(QString());
    const QSize size = screenIn(text).size;
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

LanguageTexts textsOf(const Catalogue &language, const QString &name)
{
    LanguageTexts texts{name, {}};
    texts.translated.reserve(language.rows.size());
    for (const CatalogueRow &row : language.rows) {
        if (!row.value.trimmed().isEmpty())
            texts.translated.insert(row.name);
    }
    return texts;
}

QList<PictureFacts> picturesOf(const Catalogue &images, const QString &folder, PictureStore &store,
                               const std::stop_token &stop)
{
    QStringList paths;
    paths.reserve(images.rows.size());
    for (const CatalogueRow &row : images.rows)
        paths.append(row.found);
    return store.facts(paths, folder, stop);
}

QHash<QString, QSize> sizesOf(const Catalogue &images, const QList<PictureFacts> &pictures)
{
    QHash<QString, QSize> sizes;
    sizes.reserve(images.rows.size());
    for (qsizetype row = 0; row < images.rows.size(); ++row) {
        if (images.rows.at(row).isFirst && !pictures.at(row).size.isEmpty())
            sizes.insert(images.rows.at(row).name, pictures.at(row).size);
    }
    return sizes;
}

// What follows from one language, which is not kept.
struct CheckedLanguage
{
    LanguageTexts texts;
    StringTable translations; // where texts have been measured
    QList<Problem> problems;
};

std::vector<CheckedLanguage> checkLanguages(const ThemeReport &report, bool isMeasured,
                                            const std::stop_token &stop)
{
    const QList<IndexedFile> &files = report.catalogues.languages();
    std::vector<CheckedLanguage> checked(size_t(files.size()));
    inParallel(files.size(), stop, [&](qsizetype i) {
        const Catalogue language = report.catalogues.language(files.at(i));
        CheckedLanguage &each = checked[size_t(i)];
        each.texts = textsOf(language, report.catalogues.nameOfLanguage(language.file));
        if (isMeasured)
            each.translations = translationsOf(language);
        each.problems = checkLanguage(report, language, stop);
    });
    return checked;
}

// Takes the languages' texts.
ThemeFacts factsOf(const ThemeReport &report, std::vector<CheckedLanguage> &languages,
                   const MeasuredTheme &measured)
{
    ThemeFacts facts;
    facts.screen = screenOf(report.sources, report.catalogues.of(FileRole::WindowCatalogue));
    facts.pictures = sizesOf(report.catalogues.of(FileRole::ImageCatalogue), report.pictures);
    FitFacts fit{measured, {}};
    for (CheckedLanguage &language : languages) {
        fit.languages.append({language.texts.name, std::move(language.translations)});
        facts.languages.append(std::move(language.texts));
    }
    if (measured.measures)
        facts.fit = std::make_shared<const FitFacts>(std::move(fit));
    return facts;
}

// Adds what it finds to the report, beside the rules of the catalogues.
void checkAll(ThemeReport &report, std::vector<CheckedLanguage> languages, const ThemeFacts &facts,
              WindowOutlines outlines, const std::stop_token &stop)
{
    const QList<IndexedFile> &files = report.index.files();
    outlines.resize(size_t(files.size()));
    std::vector<QList<Problem>> found(size_t(files.size()));
    for (CheckedLanguage &language : languages)
        found.push_back(std::move(language.problems));
    const auto checkFile = [&](qsizetype number) {
        const IndexedFile &file = files.at(number);
        if ((file.role != FileRole::Window && file.role != FileRole::Style) || !file.isReadable)
            return;
        std::unique_ptr<const Outline> outline = std::move(outlines[size_t(number)]);
        if (!outline) {
            const std::optional<QString> text = textOf(report.sources, file);
            if (!text)
                return;
            outline = std::make_unique<const Outline>(*text);
        }
        found[size_t(number)] = checkWindow(*outline, file, report.index, facts, stop);
    };
    inParallel(1 + files.size(), stop, [&](qsizetype task) {
        if (task > 0) {
            checkFile(task - 1);
            return;
        }
        checkFiles(report);
        checkCatalogues(report);
        checkUnused(report);
        checkMeasuredFonts(report, facts);
    });
    qsizetype count = report.problems.size();
    for (const QList<Problem> &each : found)
        count += each.size();
    // As many as there are: in growing, the list would take up to twice its room, and keep it.
    report.problems.reserve(count);
    for (QList<Problem> &each : found)
        report.problems += std::exchange(each, {});
}

} // namespace

Problem &ThemeReport::addForFile(Rule rule, const IndexedFile &file, const QString &message)
{
    Problem problem;
    problem.rule = rule;
    problem.file = file.found.isEmpty() ? file.path : file.found;
    problem.say(message);
    problems.append(problem);
    return problems.last();
}

Problem &ThemeReport::add(Rule rule, const Catalogue &catalogue, qsizetype row, const QString &message)
{
    const CatalogueRow &at = catalogue.rows.at(row);
    Problem &problem = addForFile(rule, catalogue.file, message);
    problem.range = at.range.isEmpty() ? at.element : at.range;
    problem.line = at.line;
    problem.column = at.column;
    problem.end = at.end;
    problem.row = qint32(row);
    problem.name = at.name;
    return problem;
}

Problem &ThemeReport::addForRow(Rule rule, const Catalogue &catalogue, qsizetype row, const QString &message)
{
    const CatalogueRow &at = catalogue.rows.at(row);
    Problem &problem = add(rule, catalogue, row, message);
    problem.range = at.element;
    problem.line = at.elementPlace.line;
    problem.column = at.elementPlace.column;
    problem.end = at.elementEnd;
    return problem;
}

std::optional<CheckedTheme> checkTheme(const ThemeSources &sources, const ThemeIndex &index,
                                       PictureStore &pictures, std::stop_token stop, WindowOutlines outlines,
                                       const MeasuredTheme &measured)
{
    Catalogues catalogues(sources, index, stop);
    ThemeReport report(sources, index, catalogues);
    std::vector<CheckedLanguage> languages = checkLanguages(report, measured.measures != nullptr, stop);
    report.pictures = picturesOf(catalogues.of(FileRole::ImageCatalogue), sources.folder, pictures, stop);
    CheckedTheme checked;
    checked.facts = factsOf(report, languages, measured);
    if (!stop.stop_requested())
        checkAll(report, std::move(languages), checked.facts, std::move(outlines), stop);
    if (stop.stop_requested())
        return std::nullopt;
    checked.problems = std::move(report.problems);
    sortByPlace(checked.problems);
    return checked;
}

} // namespace quillmere
