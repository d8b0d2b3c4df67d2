#pragma once

#include "outline/LineStarts.h"
#include "outline/Outline.h"
#include "rows/ListRows.h"
#include "theme/ElementUse.h"

#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace quillmere {

// What the names in a theme's files stand for.
enum class NameKind : quint8 {
    Image,
    Colour, // or a code in its place
    Font,
    String, // a text of the windows, by which languages find its translation
    Window, // a document, by its name in the window catalogue
    Language,
};
constexpr int kNameKinds = int(NameKind::Language) + 1;

// What a file of a theme is to the theme.
enum class FileRole : quint8 {
    WindowCatalogue,
    ImageCatalogue,
    ColourCatalogue,
    FontCatalogue,
    LanguageCatalogue,
    Language,
    Style,  // style.xml: written like a window
    Window, // a document
};

struct FoundName
{
    QStringView name; // what it is known by; blanks around the names of images and colours do not count
    Range range;      // in the text of the file
    qint32 row = -1;  // of the list that the catalogue is loaded into
    NameKind kind = NameKind::Image;
    bool isDefinition = false;
    LineColumn place = {0, 0}; // where the range begins, for the names of a whole file
};
struct FoundNames
{
    QString text, closedUp; // what the names are views of
    std::vector<FoundName> names;
    std::vector<ElementUse> elements; // of a window
};
// Every name in a file, in the order of the text. Names in comments of a window do not count, nor do empty
// ones. What a catalogue defines is what its loader reads, comments or not.
FoundNames findNames(FileRole role, const QString &text);
// The same for a window that is outlined already.
FoundNames findNames(const Outline &outline);
// The names in a window that is outlined already: views of its text, without places.
std::vector<FoundName> namesIn(const Outline &outline);
// The same for rows that are not written yet: the names that their catalogue would define, without ranges.
FoundNames findNames(FileRole role, const QList<ListRows::Row> &rows);

// What the values of an element of a window, or the entries of its list, are names of.
std::optional<NameKind> nameKindOf(Kind element);
// The name in a window at the caret, be it defined or not.
std::optional<FoundName> nameAt(const Outline &outline, qsizetype offset);

// An entry of a catalogue. Entries are those of the loader's rows, in their order, with the same number.
struct CatalogueEntry
{
    Range element; // from its opening tag to behind its closing tag
    Range name;
    Range value; // the file of an image, font or language, the code of a colour, a translation
};
// No entries for a window.
QList<CatalogueEntry> catalogueEntries(FileRole role, const QString &text);

} // namespace quillmere
