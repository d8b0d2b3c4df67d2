#include "checks/NameRules.h"
#include "checks/ThemeReport.h"
#include "checks/WindowReport.h"
#include "markup/ColourCode.h"

namespace quillmere {

namespace {

void checkDuplicates(ThemeReport &report)
{
    for (const FileRole role :
         {FileRole::WindowCatalogue, FileRole::ImageCatalogue, FileRole::ColourCatalogue,
          FileRole::FontCatalogue, FileRole::LanguageCatalogue}) {
        const Catalogue &catalogue = report.catalogues.of(role);
        for (qsizetype row = 0; row < catalogue.rows.size(); ++row) {
            const CatalogueRow &each = catalogue.rows.at(row);
            if (!each.isFirst && !each.name.isEmpty())
                report.add(Rule::DuplicateId, catalogue, row,
                           quoted(each.name) + u" is in the catalogue already");
        }
    }
}

// The fonts that language files name.
void checkLanguageFonts(ThemeReport &report)
{
    for (const IndexedFile &language : report.catalogues.languages()) {
        for (const qint32 number : report.index.numbersOf(language.path)) {
            for (const NamePlace &place : report.index.placesIn(number)) {
                if (place.isDefinition || place.kind != NameKind::Font)
                    continue;
                const std::optional<NameFault> fault = faultOf(place.kind, place.name, report.index);
                if (!fault)
                    continue;
                Problem &problem = report.addForFile(fault->rule, language, {});
                problem.say(fault->message, fault->meant);
                problem.range = place.range;
                problem.line = place.line;
                problem.column = place.column;
                problem.name = place.name;
            }
        }
    }
}

// Calls `found` with each row that has the same key as one before it, and with that one. Rows without a key
// do not count, nor do those whose name is in the catalogue already.
template <typename KeyOf, typename Found>
void eachTwin(const Catalogue &catalogue, KeyOf keyOf, Found found)
{
    QHash<QByteArray, qsizetype> first;
    for (qsizetype row = 0; row < catalogue.rows.size(); ++row) {
        const QByteArray key = catalogue.rows.at(row).isFirst ? keyOf(row) : QByteArray();
        if (key.isEmpty())
            continue;
        const auto known = first.constFind(key);
        if (known == first.constEnd())
            first.insert(key, row);
        else
            found(row, catalogue.rows.at(*known).name);
    }
}

// A code in other letters is the same; what is no code is compared as it stands.
QByteArray colourKey(const QString &code)
{
    const QString text = code.trimmed();
    const std::optional<Channels> channels = channelsOf(text);
    return (channels ? colourCode(*channels) : text).toUtf8();
}

QByteArray pictureKey(const PictureFacts &picture)
{
    const std::array<quint64, 3> key = {quint64(picture.bytes), picture.mark[0], picture.mark[1]};
    return picture.mark == PictureMark() ? QByteArray()
                                         : QByteArray(reinterpret_cast<const char *>(key.data()), sizeof key);
}

void checkTwins(ThemeReport &report)
{
    const Catalogue &images = report.catalogues.of(FileRole::ImageCatalogue);
    eachTwin(
        images,
        [&](qsizetype row) {
            return row < report.pictures.size() ? pictureKey(report.pictures.at(row)) : QByteArray();
        },
        [&](qsizetype row, const QString &first) {
            report.add(Rule::SamePicture, images, row,
                       quoted(images.rows.at(row).name) + u" is the same picture as " + quoted(first));
        });
    const Catalogue &colours = report.catalogues.of(FileRole::ColourCatalogue);
    eachTwin(
        colours, [&](qsizetype row) { return colourKey(colours.rows.at(row).value); },
        [&](qsizetype row, const QString &first) {
            report.add(Rule::SameColour, colours, row,
                       quoted(colours.rows.at(row).name) + u" is the same colour as " + quoted(first));
        });
}

// A name counts as used where it is meant in other letters: those are told at their use.
bool isUsed(const ThemeIndex &index, NameKind kind, const QString &name)
{
    if (index.isUsed(kind, name))
        return true;
    const QStringList meant = index.usedInOtherLetters(kind, name);
    return std::any_of(meant.begin(), meant.end(), [&](const QString &other) {
        return !index.isDefined(kind, other) && index.inOtherLetters(kind, other).value(0) == name;
    });
}

struct UnusedKind
{
    FileRole role;
    NameKind kind;
    Rule rule;
};
constexpr UnusedKind kUnused[] = {{FileRole::ImageCatalogue, NameKind::Image, Rule::UnusedImage},
                                  {FileRole::ColourCatalogue, NameKind::Colour, Rule::UnusedColour},
                                  {FileRole::FontCatalogue, NameKind::Font, Rule::UnusedFont}};

void checkRow(ThemeReport &report, const UnusedKind &unused, const Catalogue &catalogue, qsizetype number)
{
    const CatalogueRow &row = catalogue.rows.at(number);
    if (row.name.isEmpty() || !row.isFirst || (unused.kind == NameKind::Colour && isKeyColour(row.name)) ||
        isUsed(report.index, unused.kind, row.name))
        return;
    Problem &problem = report.add(unused.rule, catalogue, number);
    if (unused.kind == NameKind::Image)
        problem.bytes = report.pictures.value(number).bytes;
}

} // namespace

void checkCatalogues(ThemeReport &report)
{
    checkDuplicates(report);
    checkLanguageFonts(report);
    checkTwins(report);
}

void checkUnused(ThemeReport &report)
{
    for (const UnusedKind &unused : kUnused) {
        const Catalogue &catalogue = report.catalogues.of(unused.role);
        for (qsizetype row = 0; row < catalogue.rows.size(); ++row)
            checkRow(report, unused, catalogue, row);
    }
}

} // namespace quillmere
