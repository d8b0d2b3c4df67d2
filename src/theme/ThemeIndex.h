#pragma once

#include "files/TextFile.h"
#include "theme/NameTable.h"

#include <QHash>
#include <QSharedData>
#include <QVarLengthArray>

#include <array>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace quillmere {

// What an index is made from. Paths are as the lists of the open theme have them: the theme's folder and what
// its files say, joined. Texts and rows that are open count in the place of their files.
struct ThemeSources
{
    QString folder;
    QHash<QString, QString> texts;
    QHash<QString, QList<ListRows::Row>> rows; // of catalogues with changes that are not written
    CodePageRule rule = CodePageRule::Automatic;
};

struct IndexedFile
{
    QString path;
    QString found; // the file that is meant, which may have other letters; empty where there is none
    FileRole role = FileRole::Window;
    bool isListed = true;   // false for a document that the window catalogue does not name
    bool isReadable = true; // false for one that is missing or not to be read; see LoadBytes
};

// The text that counts for a file; nothing for one that is missing or not to be read.
std::optional<QString> textOf(const ThemeSources &sources, const IndexedFile &file);

// Where a name stands. A document is the definition of its window: its place is the beginning of the file.
struct NamePlace
{
    NameKind kind = NameKind::Image;
    QString name;
    qint32 file = -1;            // number in ThemeIndex::files
    Range range;                 // empty for rows that are not written, and for a document
    qint32 line = 0, column = 0; // from 1; 0 for rows that are not written
    qint32 row = -1;             // in the list of a catalogue
    bool isDefinition = false;
};

// Outlines of windows, by the number of their file; nullptr for other files.
using WindowOutlines = std::vector<std::unique_ptr<const Outline>>;

// Every name of a theme, with where it is defined and where it is used. A value: it is built beside the
// window's thread, and copies share what they have in common. Names are told apart by letter case.
class ThemeIndex
{
public:
    // Reads all files of the theme on a few threads of its own. Nothing where it was told to stop. Gives the
    // outlines of what it has read to whoever would else read all windows again.
    static std::optional<ThemeIndex> build(const ThemeSources &sources, std::stop_token stop = {},
                                           WindowOutlines *outlines = nullptr);

    const QList<IndexedFile> &files() const { return m_files; }
    // The numbers of a file, by its path as named or as found; one for each role it has.
    QList<qint32> numbersOf(const QString &path) const;

    // Brings one file up to date with a text, or with rows that are not written. What other files hold does
    // not change, so where theme.xml, or the windows or languages that a catalogue names, have changed, a new
    // index has to be built; says whether that is so. Nothing for a path that is not in the index.
    bool update(const QString &path, const QString &text);
    bool update(const QString &path, const Outline &window);
    bool update(const QString &path, const QList<ListRows::Row> &rows);

    // In the order of the files and of the text. Time is that of what is found.
    QList<NamePlace> definitions(NameKind kind, QStringView name) const;
    QList<NamePlace> uses(NameKind kind, QStringView name) const;
    bool isDefined(NameKind kind, QStringView name) const;
    // The name in the text that the index has of it, so that who keeps many names keeps no others; a text of
    // its own where the index does not know it.
    QString nameOf(NameKind kind, QStringView name) const;
    bool isUsed(NameKind kind, QStringView name) const;
    // Everything in one file, in the order of the text.
    QList<NamePlace> placesIn(qint32 file) const;

    // Calls `use` with each defined name of a kind, in no order.
    template <typename Use>
    void eachName(NameKind kind, Use use) const
    {
        for (qint32 number = 0; number < m_names.size(); ++number) {
            const Name &name = m_names.at(number);
            if (name.kind == kind && name.isDefined())
                use(name.text);
        }
    }
    // The defined names of a kind, in alphabetical order ignoring case.
    QStringList names(NameKind kind) const { return matching(kind, {}); }
    // Those that hold `part`, ignoring case; first those that begin with it.
    QStringList matching(NameKind kind, QStringView part) const;
    // The defined names that differ from this one in letter case alone.
    QStringList inOtherLetters(NameKind kind, QStringView name) const;
    // The same of used names.
    QStringList usedInOtherLetters(NameKind kind, QStringView name) const;
    // Another number whenever other names of the kind are defined, in this index or in one built later.
    qint64 stamp(NameKind kind) const { return m_stamps[size_t(kind)]; }

    // How many elements of the vocabulary the blocks of a class hold, all windows together; see ElementUse.
    qint32 elementsIn(const QString &className, Kind kind) const;
    // The classes of the theme's blocks, the most used first. Of very many, some.
    QStringList classes() const;

private:
    struct Entry
    {
        qint32 key; // by which uses and definitions of all names are told apart
        Range range;
        qint32 line, column, row;

        qint32 name() const { return key / 2; }
        bool isDefinition() const { return key % 2 != 0; }
    };
    // By name, uses first, then in the order of the text.
    using Entries = std::shared_ptr<const std::vector<Entry>>;
    static qint32 keyOf(qint32 name, bool isDefinition) { return 2 * name + isDefinition; }

    struct Name
    {
        QString text;
        QVarLengthArray<qint32, 2> files; // that use it by number, ~number of those that define it; sorted
        qint32 next = -1;                 // of those with the same number in m_firsts
        NameKind kind = NameKind::Image;

        bool isDefined() const { return !files.isEmpty() && files.first() < 0; }
        bool isUsed() const { return !files.isEmpty() && files.last() >= 0; }
    };

    // Names by number. Copies share all but the pieces that one of them changes: a copy is made for each run
    // of checks, and the next key must not pay for all names.
    class Names
    {
    public:
        qint32 size() const { return m_size; }
        const Name &at(qint32 number) const
        {
            return m_pieces.at(number / kPiece)->names[size_t(number % kPiece)];
        }
        Name &operator[](qint32 number) { return m_pieces[number / kPiece]->names[size_t(number % kPiece)]; }
        qint32 append()
        {
            if (m_size % kPiece == 0)
                m_pieces.append(QSharedDataPointer(new Piece));
            return m_size++;
        }

    private:
        static constexpr qint32 kPiece = 256;
        struct Piece : QSharedData
        {
            std::array<Name, kPiece> names;
        };
        QList<QSharedDataPointer<Piece>> m_pieces;
        qint32 m_size = 0;
    };

    qint32 add(const IndexedFile &file);
    qint32 find(NameKind kind, QStringView name) const;
    qint32 intern(NameKind kind, QStringView name);
    void forget(qint32 name);
    void putElements(qint32 file, const std::vector<ElementUse> &elements);
    void put(qint32 file, std::vector<Entry> entries);
    std::vector<qint32> relist(qint32 file, const std::vector<Entry> &before,
                               const std::vector<Entry> &after);
    enum class From { Text, Rows };
    bool replace(qint32 file, const FoundNames &found, From from);
    std::vector<Entry> keptBeside(qint32 file, From from) const;
    template <typename Fits>
    QStringList otherLetters(NameKind kind, QStringView name, Fits fits) const;
    NamePlace placeOf(qint32 file, const Entry &entry) const;
    QList<NamePlace> placesOf(NameKind kind, QStringView name, bool areDefinitions) const;
    friend class IndexBuilder;

    QString m_folder;
    QList<IndexedFile> m_files;
    QList<Entries> m_entries; // by file
    QMultiHash<QString, qint32> m_numbers;
    Names m_names;
    QList<qint32> m_free; // numbers of names that stand nowhere any more
    // First of the names by a number that their letters make, whatever their case. It keeps no letters: with
    // them it took as much again as the names.
    QHash<quint64, qint32> m_firsts[kNameKinds];
    std::array<qint64, kNameKinds> m_stamps = {};
    QList<std::shared_ptr<const std::vector<ElementUse>>> m_elements; // by file, as far as they are counted
    QHash<QString, std::array<qint32, kKinds>> m_counts;              // by class
};

} // namespace quillmere
