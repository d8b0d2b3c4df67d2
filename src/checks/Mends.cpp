#include "checks/Mends.h"

#include "checks/MendMaker.h"
#include "checks/WindowReport.h"
#include "files/Paths.h"
#include "theme/NearestNames.h"
#include "theme/ThemeConfig.h"

#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

void changeNameTo(MendMaker &maker, const QString &name)
{
    const Problem &problem = maker.problem;
    if (problem.range.end <= maker.text.size() && problem.range.in(maker.text) == problem.name)
        maker.changeText(maker.wordsToChange(name), maker.file, maker.text, problem.range, name);
}

void changeName(MendMaker &maker, NameKind kind)
{
    for (const QString &name : nearestNames(maker.theme.index, kind, maker.problem.name))
        changeNameTo(maker, name);
}

void addRow(MendMaker &maker, FileRole role)
{
    const IndexedFile *catalogue = maker.catalogueOf(role);
    const auto rows = catalogue ? maker.theme.openRows(catalogue->path) : std::nullopt;
    if (!rows)
        return;
    const QString &name = maker.problem.name;
    ListRows::Row row{{}, {name, QStringLiteral("#000000")}};
    if (role == FileRole::ImageCatalogue) {
        const QString picture = folderOf(catalogue->path) + name + QStringLiteral(".png");
        row = {picture, {name, QFileInfo::exists(picture) ? QStringLiteral("Y") : QString()}};
    }
    const QString what = quoted(name) + u" to " + quotedFile(catalogue->path);
    maker.changeRows({u"Add " + what, u"Added " + what + u'.'}, catalogue->path,
                     {{int(rows->size()), std::nullopt, row}});
}

MendMaker::Words wordsToTakeOut(const MendMaker &maker)
{
    const QString what = quoted(maker.problem.name) + u" from " + quotedFile(maker.file.path);
    return {u"Remove " + what, u"Removed " + what + u'.'};
}

// Of an element that stands alone in its line, the line goes with it.
Range withItsLine(const QString &text, Range element)
{
    const Range line = linesAround(text, element);
    if (line.in(text).trimmed() != element.in(text))
        return element;
    return {line.start, std::min(line.end + 1, qint32(text.size()))};
}

void takeOutRow(MendMaker &maker)
{
    const qint32 row = maker.problem.row;
    if (const auto rows = maker.theme.openRows(maker.file.path)) {
        if (maker.isMeant(*rows))
            maker.changeRows(wordsToTakeOut(maker), maker.file.path, {{row, rows->at(row), std::nullopt}});
        return;
    }
    const auto found = maker.entry();
    if (!found)
        return;
    MendMaker::Rows rows = maker.rowsIn(maker.file, maker.text);
    rows.removeAt(row);
    maker.changeCatalogue(wordsToTakeOut(maker), maker.file, maker.text,
                          withItsLine(maker.text, found->element), {}, rows);
}

// An entry of theme.xml.
void takeOutEntry(MendMaker &maker)
{
    const QList<ConfigEntry> entries = configEntries(maker.text);
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const ConfigEntry &each) {
        return each.range == maker.problem.range && each.name == maker.problem.name;
    });
    MendMaker::Rows rows = maker.rowsIn(maker.file, maker.text);
    const qsizetype row = found - entries.begin();
    if (row >= rows.size())
        return;
    rows.removeAt(row);
    maker.changeCatalogue(wordsToTakeOut(maker), maker.file, maker.text,
                          withItsLine(maker.text, found->range), {}, rows);
}

void takeOut(MendMaker &maker)
{
    if (maker.problem.row >= 0)
        takeOutRow(maker);
    else if (maker.isOfConfig())
        takeOutEntry(maker);
}

void addDocument(MendMaker &maker)
{
    const IndexedFile *catalogue = maker.catalogueOf(FileRole::WindowCatalogue);
    if (!catalogue)
        return;
    const QString folder = joinPath(findFolder(folderOf(catalogue->path).toString()), u"");
    if (!maker.problem.file.startsWith(folder))
        return;
    QString name = maker.problem.file.sliced(folder.size()).chopped(4);
    name.replace(separator(), u'/');
    const QString what = quoted(name) + u" to " + quotedFile(catalogue->path);
    maker.addToCatalogue({u"Add " + what, u"Added " + what + u'.'}, *catalogue, u"</interface>", u"<widget ",
                         {u"<widget class=\"window\" style=\"default\" name=\"" + name + u"\"/>"},
                         {{name, QString()}});
}

// A closing tag too many.
void takeOutTag(MendMaker &maker)
{
    const Range range = maker.problem.range;
    if (range.end > maker.text.size() || !range.in(maker.text).startsWith(u"</"))
        return;
    const QString what = quoted(range.in(maker.text));
    maker.changeText({u"Remove " + what, u"Removed " + what + u'.'}, maker.file, maker.text,
                     withItsLine(maker.text, range), {});
}

void changeMode(MendMaker &maker)
{
    const Outline outline(maker.text);
    const qint32 index = outline.elementAt(maker.problem.range.start);
    if (index < 0 || outline.element(index).kind != Kind::Mode ||
        outline.element(index).range() != maker.problem.range)
        return;
    const Range value = trimmed(outline.element(index).content(), maker.text);
    const bool isSingle = value.in(maker.text).compare(u"single", Qt::CaseInsensitive) == 0;
    const QString mode = isSingle ? QStringLiteral("multiple") : QStringLiteral("single");
    maker.changeText(maker.wordsToChange(mode), maker.file, maker.text, value, mode);
}

void makeMends(MendMaker &maker)
{
    switch (maker.problem.rule) {
    case Rule::UnknownImage:
        changeName(maker, NameKind::Image);
        addRow(maker, FileRole::ImageCatalogue);
        break;
    case Rule::UnknownColour:
        changeName(maker, NameKind::Colour);
        addRow(maker, FileRole::ColourCatalogue);
        break;
    case Rule::UnknownFont:
        changeName(maker, NameKind::Font);
        break;
    case Rule::LetterCase:
        if (const QString meant = maker.problem.meant(); !meant.isEmpty())
            changeNameTo(maker, meant);
        else
            mendNamedFile(maker);
        break;
    case Rule::MissingImageFile:
    case Rule::MissingFontFile:
    case Rule::MissingDocument:
    case Rule::ThemeConfig:
        mendNamedFile(maker);
        takeOut(maker);
        break;
    case Rule::UnusedImage:
    case Rule::UnusedColour:
    case Rule::UnusedFont:
    case Rule::UnusedString:
    case Rule::DuplicateId:
    case Rule::DuplicateSource:
        takeOut(maker);
        break;
    case Rule::BlankEnds:
    case Rule::EndPunctuation:
        mendTranslation(maker);
        break;
    case Rule::UnlistedDocument:
        addDocument(maker);
        break;
    case Rule::Untranslated:
        addTranslations(maker);
        break;
    case Rule::UnclosedElement:
        takeOutTag(maker);
        break;
    case Rule::Mode:
        changeMode(maker);
        break;
    default:
        break;
    }
}

} // namespace

QList<Mend> mendsFor(const Problem &problem, const MendedTheme &theme)
{
    MendMaker maker(problem, theme);
    makeMends(maker);
    return maker.mends;
}

} // namespace quillmere
