#include "theme/NameTable.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"
#include "outline/Values.h"

#include <algorithm>
#include <array>

namespace quillmere {

namespace {

// Which elements of a window hold names. A list holds one in each entry.
struct WindowRule
{
    Kind element;
    NameKind name;
};
constexpr WindowRule kWindowRules[] = {
    {Kind::Img, NameKind::Image},
    {Kind::TopImg, NameKind::Image},
    {Kind::BottomImg, NameKind::Image},
    {Kind::LeftImg, NameKind::Image},
    {Kind::RightImg, NameKind::Image},
    {Kind::LeftTopImg, NameKind::Image},
    {Kind::RightTopImg, NameKind::Image},
    {Kind::LeftBottomImg, NameKind::Image},
    {Kind::RightBottomImg, NameKind::Image},
    {Kind::UnfocusImg, NameKind::Image},
    {Kind::BackColor, NameKind::Colour},
    {Kind::ForeColor, NameKind::Colour},
    {Kind::Font, NameKind::Font},
    {Kind::String, NameKind::String},
};

// How a field is cut out of the piece between two openings; see SplitField.
struct Field
{
    QStringView separator1, separator2;
    int index1 = 1;
};

// Which pieces of other files hold names. The cuts are those of the loaders, so that both find the same.
struct CatalogueRule
{
    FileRole file;
    QStringView opening, closing;
    QStringView required; // a piece without it is no entry
    bool requiredExactly;
    bool closesUpEquals;
    Field nameField, valueField;
    NameKind name;
    bool isDefinition;
    bool isRow; // of the list that the file is loaded into
};
constexpr Field kContent = {u">", u"</"};
constexpr CatalogueRule kCatalogueRules[] = {
    {FileRole::WindowCatalogue,
     u"<widget ",
     u"</widget>",
     u"class=\"window\"",
     true,
     false,
     {u"name=\"", u"\""},
     {},
     NameKind::Window,
     false,
     true},
    {FileRole::ImageCatalogue,
     u"<image ",
     u"</image>",
     u"id=\"",
     false,
     true,
     {u"id=\"", u"\""},
     kContent,
     NameKind::Image,
     true,
     true},
    {FileRole::ColourCatalogue,
     u"<color ",
     u"</color>",
     u"name=\"",
     false,
     true,
     {u"name=\"", u"\""},
     kContent,
     NameKind::Colour,
     true,
     true},
    {FileRole::FontCatalogue,
     u"<font>",
     u"</font>",
     {},
     false,
     false,
     {u"<name>", u"</name>"},
     {u"<file>", u"</file>"},
     NameKind::Font,
     true,
     true},
    {FileRole::LanguageCatalogue,
     u"<language ",
     u"</language>",
     u"id=\"",
     false,
     true,
     {u"id=\"", u"\""},
     kContent,
     NameKind::Language,
     true,
     true},
    {FileRole::Language,
     u"<tran id=\"",
     u"</tran>",
     {},
     false,
     false,
     {u"\"", {}, 0},
     {u">", u"<"},
     NameKind::String,
     true,
     true},
    {FileRole::Language,
     u"<font>",
     u"</font>",
     {},
     false,
     false,
     {u"<", {}, 0},
     {},
     NameKind::Font,
     false,
     false},
    {FileRole::Language,
     u"<language name=\"",
     u"</language>",
     {},
     false,
     false,
     {u"\"", {}, 0},
     {},
     NameKind::Language,
     false,
     false},
};

bool isStripped(NameKind kind)
{
    return kind == NameKind::Image || kind == NameKind::Colour;
}

QStringView stripped(QStringView name, NameKind kind)
{
    return isStripped(kind) ? trimmed({0, qint32(name.size())}, name).in(name) : name;
}

// The text without the blanks around "=", and where its units come from.
class ClosedUpText
{
public:
    ClosedUpText(const QString &text, bool closesUp) : m_text(text)
    {
        if (!closesUp || CloseUpEquals(m_text).size() == text.size())
            return;
        // Only blanks have gone, so the first unit that differs is one of them.
        qsizetype from = 0;
        for (qsizetype at = 0; at < m_text.size(); ++at, ++from) {
            if (text.at(from) == m_text.at(at))
                continue;
            while (text.at(from) != m_text.at(at))
                ++from;
            m_shifts.push_back({qint32(at), qint32(from - at)});
        }
    }

    const QString &text() const { return m_text; }
    // Where a part of text() stands in the text it was made of.
    Range rangeOf(QStringView part) const
    {
        if (part.isEmpty())
            return {};
        const qint32 start = qint32(part.data() - m_text.constData());
        return {origin(start), origin(start + qint32(part.size()) - 1) + 1};
    }

private:
    struct Shift
    {
        qint32 from; // in the text that was closed up
        qint32 by;
    };

    qint32 origin(qint32 at) const
    {
        const auto behind =
            std::upper_bound(m_shifts.begin(), m_shifts.end(), at,
                             [](qint32 place, const Shift &shift) { return place < shift.from; });
        return behind == m_shifts.begin() ? at : at + (behind - 1)->by;
    }

    QString m_text;
    std::vector<Shift> m_shifts;
};

QStringView fieldOf(QStringView piece, const Field &field)
{
    if (field.separator1.isEmpty())
        return {};
    return SplitFieldView(piece, field.separator1, field.separator2, field.index1, 0);
}

// Calls `use` with each piece that is an entry.
template <typename Use>
void eachEntry(const CatalogueRule &rule, const QString &text, Use use)
{
    // A language file is read only where it says that it is one.
    if (text.isEmpty() ||
        (rule.file == FileRole::Language && !containsIgnoringCase(text, u"<language name=\"")))
        return;
    for (const QStringView piece : splitIgnoringCase(text, rule.opening).sliced(1)) {
        if (rule.requiredExactly ? containsExact(piece, rule.required)
                                 : rule.required.isEmpty() || containsIgnoringCase(piece, rule.required))
            use(piece);
    }
}

void findInCatalogue(const CatalogueRule &rule, const QString &text, FoundNames &found)
{
    const ClosedUpText closed(text, rule.closesUpEquals);
    // Views of it stay good: it is shared.
    if (rule.closesUpEquals)
        found.closedUp = closed.text();
    qint32 row = 0;
    eachEntry(rule, closed.text(), [&](QStringView piece) {
        const QStringView name = stripped(fieldOf(piece, rule.nameField), rule.name);
        if (!name.isEmpty())
            found.names.push_back(
                {name, closed.rangeOf(name), rule.isRow ? row : -1, rule.name, rule.isDefinition, {}});
        ++row;
    });
}

void sortByPlace(FoundNames &found)
{
    std::stable_sort(found.names.begin(), found.names.end(),
                     [](const FoundName &a, const FoundName &b) { return a.range.start < b.range.start; });
    const QStringView text = found.text;
    qsizetype next = text.indexOf(u'\n');
    LineColumn place = {1, 1};
    qint32 start = 0;
    for (FoundName &name : found.names) {
        for (; next >= 0 && next < name.range.start; next = text.indexOf(u'\n', next + 1)) {
            ++place.line;
            start = qint32(next + 1);
        }
        name.place = {place.line, name.range.start - start + 1};
    }
}

Range elementOf(const CatalogueRule &rule, QStringView piece, const ClosedUpText &closed)
{
    const QStringView text = closed.text();
    const qsizetype start = piece.data() - text.data();
    qsizetype length = indexOfIgnoringCase(piece, rule.closing);
    const qsizetype bracket = piece.indexOf(u'>');
    if (bracket > 0 && piece[bracket - 1] == u'/' && (length < 0 || bracket < length))
        length = bracket + 1;
    else if (length >= 0)
        length += rule.closing.size();
    else
        length = bracket + 1;
    return closed.rangeOf(text.sliced(start - rule.opening.size(), rule.opening.size() + length));
}

} // namespace

std::optional<NameKind> nameKindOf(Kind element)
{
    static const std::array<std::optional<NameKind>, kKinds> kinds = [] {
        std::array<std::optional<NameKind>, kKinds> result;
        for (const WindowRule &rule : kWindowRules)
            result[size_t(rule.element)] = rule.name;
        return result;
    }();
    return kinds[size_t(element)];
}

std::vector<FoundName> namesIn(const Outline &outline)
{
    std::vector<FoundName> names;
    const auto add = [&](Range range, NameKind kind) {
        if (!range.isEmpty())
            names.push_back({outline.at(range), range, -1, kind, false, {}});
    };
    for (qint32 index = 0; index < qint32(outline.elements().size()); ++index) {
        const Element &element = outline.element(index);
        const std::optional<NameKind> kind = nameKindOf(element.kind);
        if (!kind || element.inComment || element.inSignal)
            continue;
        if (isStripped(*kind)) {
            for (const Range &entry : entriesOf(outline, index))
                add(entry, *kind);
        } else {
            add(element.content(), *kind);
        }
    }
    return names;
}

FoundNames findNames(const Outline &outline)
{
    FoundNames found;
    found.text = outline.text(); // it is shared, so what are views of it stay good
    found.names = namesIn(outline);
    found.elements = elementUses(outline);
    sortByPlace(found);
    return found;
}

FoundNames findNames(FileRole role, const QString &text)
{
    if (role == FileRole::Window || role == FileRole::Style)
        return findNames(Outline(text));
    FoundNames found;
    found.text = text;
    for (const CatalogueRule &rule : kCatalogueRules) {
        if (rule.file == role)
            findInCatalogue(rule, found.text, found);
    }
    sortByPlace(found);
    return found;
}

FoundNames findNames(FileRole role, const QList<ListRows::Row> &rows)
{
    FoundNames found;
    for (const CatalogueRule &rule : kCatalogueRules) {
        if (rule.file != role || !rule.isRow)
            continue;
        for (const ListRows::Row &row : rows)
            found.text += row.sub(1);
        qsizetype at = 0;
        for (qsizetype row = 0; row < rows.size(); ++row) {
            const qsizetype size = rows[row].sub(1).size();
            const QStringView name = stripped(QStringView(found.text).sliced(at, size), rule.name);
            if (!name.isEmpty())
                found.names.push_back({name, {}, qint32(row), rule.name, rule.isDefinition, {0, 0}});
            at += size;
        }
    }
    return found;
}

std::optional<FoundName> nameAt(const Outline &outline, qsizetype offset)
{
    // A caret behind the last letter of a name is still at it.
    for (const qsizetype at : {offset, offset - 1}) {
        const qint32 index = outline.elementAt(at);
        if (index < 0)
            continue;
        const Element &element = outline.element(index);
        const std::optional<NameKind> kind = nameKindOf(element.kind);
        if (!kind || element.inComment || !element.content().touches(offset))
            continue;
        for (const Range &entry : entriesOf(outline, index)) {
            const Range name = isStripped(*kind) ? entry : element.content();
            if (!name.isEmpty() && name.touches(offset))
                return FoundName{outline.at(name), name, -1, *kind, false, {0, 0}};
        }
    }
    return std::nullopt;
}

QList<CatalogueEntry> catalogueEntries(FileRole role, const QString &text)
{
    QList<CatalogueEntry> entries;
    for (const CatalogueRule &rule : kCatalogueRules) {
        if (rule.file != role || !rule.isRow)
            continue;
        const ClosedUpText closed(text, rule.closesUpEquals);
        eachEntry(rule, closed.text(), [&](QStringView piece) {
            const QStringView name = stripped(fieldOf(piece, rule.nameField), rule.name);
            entries.append({elementOf(rule, piece, closed), closed.rangeOf(name),
                            closed.rangeOf(fieldOf(piece, rule.valueField))});
        });
    }
    return entries;
}

} // namespace quillmere
