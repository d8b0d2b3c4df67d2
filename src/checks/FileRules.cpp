#include "checks/ThemeReport.h"
#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "theme/ThemeConfig.h"

namespace quillmere {

namespace {

bool isOtherLetters(const QString &path, const QString &found)
{
    return !found.isEmpty() && path != found && path.compare(found, Qt::CaseInsensitive) == 0;
}

// The end of `found` that differs from that of `path` in letters, from the folder on that does.
QString partInOtherLetters(const QString &path, const QString &found)
{
    qsizetype at = 0;
    while (at < path.size() && path[at] == found[at])
        ++at;
    return found.sliced(found.first(at).lastIndexOf(separator()) + 1);
}

void checkEntry(ThemeReport &report, const IndexedFile &config, const ConfigEntry &entry,
                const LineStarts &lines)
{
    const QString path = joinPath(report.sources.folder, u"") + withOwnSeparators(entry.value);
    const QString found = report.catalogues.find(path);
    bool isReadable = true;
    for (const qint32 number : report.index.numbersOf(path))
        isReadable = isReadable && report.index.files().at(number).isReadable;
    const bool isOpen = report.sources.texts.contains(path) || report.sources.rows.contains(path);
    const bool isMissing = (found.isEmpty() && !isOpen) || !isReadable;
    if (!isMissing && !isOtherLetters(path, found))
        return;
    const QString whose = u": the file of " + quoted(entry.name);
    QString message = quoted(entry.value) + u" is missing" + whose;
    if (!isMissing)
        message =
            quoted(entry.value) + u" is " + quoted(partInOtherLetters(path, found)) + u" on disk" + whose;
    else if (!found.isEmpty())
        message = quoted(entry.value) + u" cannot be read" + whose;
    Problem &problem = report.addForFile(isMissing ? Rule::ThemeConfig : Rule::LetterCase, config, message);
    problem.name = entry.name;
    problem.range = entry.range;
    const LineColumn place = lines.placeOf(entry.range.start);
    problem.line = place.line;
    problem.column = place.column;
    problem.end = lines.placeOf(entry.range.end);
}

// The entries of theme.xml that name files.
void checkConfig(ThemeReport &report)
{
    const QString path = joinPath(report.sources.folder, u"theme.xml");
    const IndexedFile config = {path, report.catalogues.find(path)};
    const QString text = textOf(report.sources, config).value_or(QString());
    const LineStarts lines(text);
    for (const ConfigEntry &entry : configEntries(text)) {
        if (entry.name.startsWith(u"file_"))
            checkEntry(report, config, entry, lines);
    }
}

struct FileKind
{
    FileRole role;
    Rule missing;
    const char *what;
};
constexpr FileKind kFileKinds[] = {{FileRole::ImageCatalogue, Rule::MissingImageFile, "image"},
                                   {FileRole::FontCatalogue, Rule::MissingFontFile, "font"},
                                   {FileRole::WindowCatalogue, Rule::MissingDocument, "window"},
                                   {FileRole::LanguageCatalogue, Rule::ThemeConfig, "language"}};

// A document or a language that is there, and cannot be read.
bool cannotBeRead(const ThemeReport &report, const CatalogueRow &row, FileRole role)
{
    for (const qint32 number : report.index.numbersOf(row.path)) {
        const IndexedFile &file = report.index.files().at(number);
        if ((role == FileRole::WindowCatalogue && file.role == FileRole::Window) ||
            (role == FileRole::LanguageCatalogue && file.role == FileRole::Language))
            return !file.isReadable;
    }
    return false;
}

void checkRow(ThemeReport &report, const FileKind &kind, const Catalogue &catalogue, qsizetype number)
{
    const CatalogueRow &row = catalogue.rows.at(number);
    if (kind.role == FileRole::WindowCatalogue && row.name.isEmpty())
        return;
    const bool isUnreadable = cannotBeRead(report, row, kind.role);
    const bool isThere = !isUnreadable && (!row.found.isEmpty() || report.sources.texts.contains(row.path));
    if (isThere && !isOtherLetters(row.path, row.found))
        return;
    const QString what = u"the " + QLatin1String(kind.what) + u' ' + quoted(row.name);
    const QString whose = u": the file of " + what;
    const QString file =
        quoted(kind.role == FileRole::WindowCatalogue ? fileNameOf(row.path).toString() : row.value);
    if (isThere) {
        report.add(Rule::LetterCase, catalogue, number,
                   file + u" is " + quoted(partInOtherLetters(row.path, row.found)) + u" on disk" + whose);
        return;
    }
    QString message = file + u" is missing" + whose;
    if (row.path.isEmpty())
        message = u"No file is named for " + what;
    else if (isUnreadable && !row.found.isEmpty())
        message = file + u" cannot be read" + whose;
    if (kind.role == FileRole::LanguageCatalogue)
        report.addForRow(kind.missing, catalogue, number, message);
    else
        report.add(kind.missing, catalogue, number, message);
}

void checkPicture(ThemeReport &report, const Catalogue &images, qsizetype number)
{
    if (number >= report.pictures.size() || images.rows.at(number).found.isEmpty() ||
        report.pictures.at(number).isReadable)
        return;
    report.add(Rule::UnreadablePicture, images, number,
               quoted(images.rows.at(number).value) + u" cannot be read: the picture of the image " +
                   quoted(images.rows.at(number).name));
}

} // namespace

// Files that are named and not there, are there and not named, and pictures that are none.
void checkFiles(ThemeReport &report)
{
    checkConfig(report);
    for (const FileKind &kind : kFileKinds) {
        const Catalogue &catalogue = report.catalogues.of(kind.role);
        for (qsizetype row = 0; row < catalogue.rows.size(); ++row) {
            checkRow(report, kind, catalogue, row);
            if (kind.role == FileRole::ImageCatalogue)
                checkPicture(report, catalogue, row);
        }
    }
    for (const IndexedFile &file : report.index.files()) {
        const QString name = fileNameOf(file.path).toString();
        if (!file.isReadable && !file.found.isEmpty() && (!file.isListed || file.role == FileRole::Style))
            report.addForFile(Rule::MissingDocument, file, quoted(name) + u" cannot be read").name = name;
        else if (!file.isListed)
            report.addForFile(Rule::UnlistedDocument, file, quoted(name) + u" is not in the window catalogue")
                .name = name;
    }
}

} // namespace quillmere
