#include "theme/ThemeIndex.h"

#include "files/Paths.h"
#include "markup/Matching.h"

#include <QHashSeed>

#include <algorithm>
#include <atomic>

namespace quillmere {

namespace {

// The same for names that differ in letter case alone. The seed is another one each time the program starts,
// so nobody can prepare a theme all of whose names have one number.
quint64 lettersOf(QStringView name)
{
    static const quint64 seed = QHashSeed::globalSeed();
    quint64 letters = seed;
    for (const QChar unit : name)
        letters = (letters ^ foldCase(unit.unicode())) * 0x9E3779B97F4A7C15;
    return letters;
}

template <typename Numbers>
void insertSorted(Numbers &numbers, qint32 number)
{
    const auto at = std::lower_bound(numbers.cbegin(), numbers.cend(), number);
    if (at == numbers.cend() || *at != number)
        numbers.insert(at, number);
}

template <typename Numbers>
void removeSorted(Numbers &numbers, qint32 number)
{
    const auto at = std::lower_bound(numbers.cbegin(), numbers.cend(), number);
    if (at != numbers.cend() && *at == number)
        numbers.erase(at);
}

// Classes that are told apart. No theme has so many; a text made up to be slow has no more of them either.
constexpr qsizetype kMostClasses = 500;

qint64 nextStamp()
{
    static std::atomic<qint64> last = 0;
    return ++last;
}

} // namespace

qint32 ThemeIndex::add(const IndexedFile &file)
{
    const qint32 number = qint32(m_files.size());
    m_files.append(file);
    m_entries.append(std::make_shared<const std::vector<Entry>>());
    m_elements.append(std::make_shared<const std::vector<ElementUse>>());
    m_numbers.insert(file.path, number);
    if (!file.found.isEmpty() && file.found != file.path)
        m_numbers.insert(file.found, number);
    return number;
}

QList<qint32> ThemeIndex::numbersOf(const QString &path) const
{
    QList<qint32> numbers = m_numbers.values(path);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

qint32 ThemeIndex::find(NameKind kind, QStringView name) const
{
    qint32 number = m_firsts[size_t(kind)].value(lettersOf(name), -1);
    while (number >= 0 && m_names.at(number).text != name)
        number = m_names.at(number).next;
    return number;
}

qint32 ThemeIndex::intern(NameKind kind, QStringView name)
{
    const qint32 known = find(kind, name);
    if (known >= 0)
        return known;
    const qint32 number = m_free.isEmpty() ? m_names.append() : m_free.takeLast();
    Name &added = m_names[number];
    added = Name();
    added.text = name.toString();
    added.kind = kind;
    QHash<quint64, qint32> &firsts = m_firsts[size_t(kind)];
    const auto first = firsts.find(lettersOf(name));
    if (first == firsts.end()) {
        firsts.insert(lettersOf(name), number);
    } else {
        added.next = *first;
        *first = number;
    }
    return number;
}

// A name that stands nowhere makes room: while one is typed, each key makes another.
void ThemeIndex::forget(qint32 number)
{
    const Name name = m_names.at(number);
    if (!name.files.isEmpty())
        return;
    QHash<quint64, qint32> &firsts = m_firsts[size_t(name.kind)];
    const auto first = firsts.find(lettersOf(name.text));
    if (*first != number) {
        qint32 before = *first;
        while (m_names.at(before).next != number)
            before = m_names.at(before).next;
        m_names[before].next = name.next;
    } else if (name.next >= 0) {
        *first = name.next;
    } else {
        firsts.erase(first);
    }
    m_names[number] = Name();
    m_free.append(number);
}

// Changes the lists of the names that come and go, and gives those that may have gone for good.
std::vector<qint32> ThemeIndex::relist(qint32 file, const std::vector<Entry> &before,
                                       const std::vector<Entry> &after)
{
    std::vector<qint32> gone;
    const auto relist = [this, file](const Entry &entry, auto change) {
        Name &name = m_names[entry.name()];
        const bool wasDefined = name.isDefined();
        change(name.files, entry.isDefinition() ? ~file : file);
        if (wasDefined != name.isDefined())
            m_stamps[size_t(name.kind)] = nextStamp();
    };
    const auto skip = [](auto &at, auto end) {
        const qint32 key = at->key;
        while (at != end && at->key == key)
            ++at;
    };
    auto was = before.begin();
    auto is = after.begin();
    while (was != before.end() || is != after.end()) {
        if (is == after.end() || (was != before.end() && was->key < is->key)) {
            relist(*was, [](auto &files, qint32 number) { removeSorted(files, number); });
            gone.push_back(was->name());
            skip(was, before.end());
        } else if (was == before.end() || is->key < was->key) {
            relist(*is, [](auto &files, qint32 number) { insertSorted(files, number); });
            skip(is, after.end());
        } else {
            skip(was, before.end());
            skip(is, after.end());
        }
    }
    gone.erase(std::unique(gone.begin(), gone.end()), gone.end());
    return gone;
}

void ThemeIndex::put(qint32 file, std::vector<Entry> entries)
{
    std::stable_sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        return a.key != b.key ? a.key < b.key : a.range.start < b.range.start;
    });
    entries.shrink_to_fit();
    const Entries before = m_entries.at(file);
    m_entries[file] = std::make_shared<const std::vector<Entry>>(std::move(entries));
    for (const qint32 name : relist(file, *before, *m_entries.at(file)))
        forget(name);
}

// What a text, or the rows of a catalogue, say nothing about.
std::vector<ThemeIndex::Entry> ThemeIndex::keptBeside(qint32 file, From from) const
{
    std::vector<Entry> kept;
    for (const Entry &entry : *m_entries.at(file)) {
        const bool isDocument = m_files.at(file).role == FileRole::Window && entry.isDefinition();
        if (isDocument || (from == From::Rows && entry.row < 0))
            kept.push_back(entry);
    }
    return kept;
}

bool ThemeIndex::replace(qint32 file, const FoundNames &found, From from)
{
    const FileRole role = m_files.at(file).role;
    std::vector<Entry> entries = keptBeside(file, from);
    entries.reserve(entries.size() + found.names.size());
    const FoundName *last = nullptr;
    for (const FoundName &name : found.names) {
        // Most lists of colours say one three times.
        const bool isSame = last && last->kind == name.kind && last->name == name.name;
        const qint32 number = isSame ? entries.back().name() : intern(name.kind, name.name);
        entries.push_back(
            {keyOf(number, name.isDefinition), name.range, name.place.line, name.place.column, name.row});
        last = &name;
    }
    const Entries before = m_entries.at(file);
    put(file, std::move(entries));
    if (from == From::Text)
        putElements(file, found.elements);
    const auto sameName = [](const Entry &a, const Entry &b) { return a.key == b.key; };
    return role == FileRole::LanguageCatalogue ||
           (role == FileRole::WindowCatalogue &&
            !std::equal(before->begin(), before->end(), m_entries.at(file)->begin(),
                        m_entries.at(file)->end(), sameName));
}

void ThemeIndex::putElements(qint32 file, const std::vector<ElementUse> &elements)
{
    const std::shared_ptr<const std::vector<ElementUse>> before = m_elements.at(file);
    for (const ElementUse &use : *before)
        m_counts[use.className][size_t(use.kind)] -= use.count;
    auto counted = std::make_shared<std::vector<ElementUse>>();
    counted->reserve(elements.size());
    for (const ElementUse &use : elements) {
        if (m_counts.size() >= kMostClasses && !m_counts.contains(use.className))
            continue;
        auto counts = m_counts.find(use.className);
        if (counts == m_counts.end())
            counts = m_counts.insert(use.className, {});
        (*counts)[size_t(use.kind)] += use.count;
        // One text for all files.
        counted->push_back({counts.key(), use.kind, use.count});
    }
    m_elements[file] = std::move(counted);
    for (const ElementUse &use : *before) {
        if (elementsIn(use.className, Kind::Widget) == 0)
            m_counts.remove(use.className);
    }
}

qint32 ThemeIndex::elementsIn(const QString &className, Kind kind) const
{
    const auto counts = m_counts.constFind(className);
    return counts == m_counts.constEnd() ? 0 : (*counts)[size_t(kind)];
}

QStringList ThemeIndex::classes() const
{
    QStringList names;
    for (auto each = m_counts.cbegin(); each != m_counts.cend(); ++each) {
        if (each.value()[size_t(Kind::Widget)] > 0)
            names.append(each.key());
    }
    std::sort(names.begin(), names.end(), [this](const QString &a, const QString &b) {
        const qint32 ofA = elementsIn(a, Kind::Widget), ofB = elementsIn(b, Kind::Widget);
        return ofA != ofB ? ofA > ofB : a < b;
    });
    return names;
}

bool ThemeIndex::update(const QString &path, const QString &text)
{
    bool isNew = path == joinPath(m_folder, u"theme.xml");
    for (const qint32 file : numbersOf(path))
        isNew = replace(file, findNames(m_files.at(file).role, text), From::Text) || isNew;
    return isNew;
}

bool ThemeIndex::update(const QString &path, const Outline &window)
{
    bool isNew = false;
    for (const qint32 file : numbersOf(path)) {
        const FileRole role = m_files.at(file).role;
        const bool isWindow = role == FileRole::Window || role == FileRole::Style;
        const FoundNames found = isWindow ? findNames(window) : findNames(role, window.text());
        isNew = replace(file, found, From::Text) || isNew;
    }
    return isNew;
}

bool ThemeIndex::update(const QString &path, const QList<ListRows::Row> &rows)
{
    bool isNew = false;
    for (const qint32 file : numbersOf(path))
        isNew = replace(file, findNames(m_files.at(file).role, rows), From::Rows) || isNew;
    return isNew;
}

NamePlace ThemeIndex::placeOf(qint32 file, const Entry &entry) const
{
    const Name &name = m_names.at(entry.name());
    return {name.kind,  name.text,    file,      entry.range,
            entry.line, entry.column, entry.row, entry.isDefinition()};
}

QList<NamePlace> ThemeIndex::placesOf(NameKind kind, QStringView name, bool areDefinitions) const
{
    QList<NamePlace> places;
    const qint32 number = find(kind, name);
    if (number < 0)
        return places;
    const qint32 key = keyOf(number, areDefinitions);
    const auto add = [&](qint32 file) {
        const std::vector<Entry> &entries = *m_entries.at(file);
        auto entry = std::ranges::lower_bound(entries, key, {}, &Entry::key);
        for (; entry != entries.end() && entry->key == key; ++entry)
            places.append(placeOf(file, *entry));
    };
    const auto &files = m_names.at(number).files;
    const auto uses = std::lower_bound(files.begin(), files.end(), 0);
    if (areDefinitions) {
        for (auto each = uses; each != files.begin();)
            add(~*--each);
    } else {
        std::for_each(uses, files.end(), add);
    }
    return places;
}

QList<NamePlace> ThemeIndex::definitions(NameKind kind, QStringView name) const
{
    return placesOf(kind, name, true);
}

QList<NamePlace> ThemeIndex::uses(NameKind kind, QStringView name) const
{
    return placesOf(kind, name, false);
}

bool ThemeIndex::isDefined(NameKind kind, QStringView name) const
{
    const qint32 number = find(kind, name);
    return number >= 0 && m_names.at(number).isDefined();
}

QString ThemeIndex::nameOf(NameKind kind, QStringView name) const
{
    const qint32 number = find(kind, name);
    return number < 0 ? name.toString() : m_names.at(number).text;
}

bool ThemeIndex::isUsed(NameKind kind, QStringView name) const
{
    const qint32 number = find(kind, name);
    return number >= 0 && m_names.at(number).isUsed();
}

QList<NamePlace> ThemeIndex::placesIn(qint32 file) const
{
    QList<NamePlace> places;
    for (const Entry &entry : *m_entries.at(file))
        places.append(placeOf(file, entry));
    std::sort(places.begin(), places.end(), [](const NamePlace &a, const NamePlace &b) {
        return std::pair(a.range.start, a.row) < std::pair(b.range.start, b.row);
    });
    return places;
}

QStringList ThemeIndex::matching(NameKind kind, QStringView part) const
{
    QStringList begin, hold;
    for (qint32 number = 0; number < m_names.size(); ++number) {
        const Name &name = m_names.at(number);
        if (name.kind != kind || !name.isDefined())
            continue;
        if (matchesIgnoringCase(name.text, 0, part))
            begin.append(name.text);
        else if (containsIgnoringCase(name.text, part))
            hold.append(name.text);
    }
    const auto inOrder = [](const QString &a, const QString &b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a < b;
    };
    std::sort(begin.begin(), begin.end(), inOrder);
    std::sort(hold.begin(), hold.end(), inOrder);
    return begin + hold;
}

template <typename Fits>
QStringList ThemeIndex::otherLetters(NameKind kind, QStringView name, Fits fits) const
{
    QStringList names;
    qint32 number = m_firsts[size_t(kind)].value(lettersOf(name), -1);
    for (; number >= 0; number = m_names.at(number).next) {
        const Name &other = m_names.at(number);
        const bool hasSameLetters =
            other.text.size() == name.size() && matchesIgnoringCase(other.text, 0, name);
        if (hasSameLetters && other.text != name && fits(other))
            names.append(other.text);
    }
    return names;
}

QStringList ThemeIndex::inOtherLetters(NameKind kind, QStringView name) const
{
    return otherLetters(kind, name, [](const Name &other) { return other.isDefined(); });
}

QStringList ThemeIndex::usedInOtherLetters(NameKind kind, QStringView name) const
{
    return otherLetters(kind, name, [](const Name &other) { return other.isUsed(); });
}

} // namespace quillmere
