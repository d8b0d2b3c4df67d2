#pragma once

#include "checks/Catalogues.h"
#include "checks/ThemeCheck.h"

namespace quillmere {

// What the rules of catalogues look at, and where they put what they find.
class ThemeReport
{
public:
    ThemeReport(const ThemeSources &given, const ThemeIndex &names, Catalogues &read)
        : sources(given), index(names), catalogues(read)
    {
    }

    const ThemeSources &sources;
    const ThemeIndex &index;
    Catalogues &catalogues;
    QList<PictureFacts> pictures; // of the rows of the image catalogue
    QList<Problem> problems;

    // At the name of a row, or at the row where it has none. Some rules make their message; see
    // Problem::message.
    Problem &add(Rule rule, const Catalogue &catalogue, qsizetype row, const QString &message = {});
    // At the whole row.
    Problem &addForRow(Rule rule, const Catalogue &catalogue, qsizetype row, const QString &message);
    Problem &addForFile(Rule rule, const IndexedFile &file, const QString &message);
};

// A file of rules each.
void checkFiles(ThemeReport &report);
void checkCatalogues(ThemeReport &report);
void checkUnused(ThemeReport &report);
// Of one language; may be asked for on any thread.
QList<Problem> checkLanguage(const ThemeReport &report, const Catalogue &language,
                             const std::stop_token &stop);
void checkMeasuredFonts(ThemeReport &report, const ThemeFacts &facts);

} // namespace quillmere
