#pragma once

#include "files/Files.h"
#include "outline/Range.h"
#include "rows/ListRows.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <map>
#include <optional>

namespace quillmere {

// A stretch of a text that becomes another, and what stood there.
struct RangeChange
{
    Range range; // in the text before
    QString before, after;

    bool operator==(const RangeChange &) const = default;
};
// `text` with all of the changes, which are in order and do not overlap.
QString changedText(const QString &text, const QList<RangeChange> &changes);

// A row that becomes another, comes (nothing before), or goes (nothing after). `row` counts in the rows as
// the changes before it leave them. Check marks are nobody's business here.
struct RowChange
{
    int row = 0;
    std::optional<ListRows::Row> before, after;
};
// The rows with all of the changes, nothing where another row stands in a place than the change was made for.
std::optional<QList<ListRows::Row>> changedRows(QList<ListRows::Row> rows, const QList<RowChange> &changes);

// What is open for editing takes part in the place of its file: it is changed as one undo step, and nothing
// is written. Neither call fails.
class OpenText
{
public:
    virtual ~OpenText() = default;
    virtual QString text() const = 0;
    virtual void apply(const QList<RangeChange> &changes) = 0;
};
class OpenRows
{
public:
    virtual ~OpenRows() = default;
    virtual QList<ListRows::Row> rows() const = 0;
    virtual void apply(const QList<RowChange> &changes) = 0;
};

// Where an edit is made: what writes the files, the theme's folder, what is open, by path, nullptr for what
// is not; and the rule by which closed files become text.
struct EditTargets
{
    Files &files;
    QString folder;
    std::function<OpenText *(const QString &path)> text = {};
    std::function<OpenRows *(const QString &path)> rows = {};
    CodePageRule rule = CodePageRule::Automatic;
};

// Replacements in several files of a theme, made for the texts that were there when it was put together. A
// value: it can be kept, shown, and applied when the person agrees.
class ThemeEdit
{
public:
    // Replaces a range of the text that the file at `path` holds. Ranges of one file may come in any order;
    // one that overlaps another is refused with false, as is another text than the file's first one.
    // `page` is that in which the file was read; an inverse needs it to give back the very bytes.
    bool replace(const QString &path, const QString &text, Range range, const QString &after,
                 std::optional<CodePage> page = {});
    // The same for all changes of one file at once, in order, for the text that has this mark. False where
    // they overlap or the file has changes already.
    bool replace(const QString &path, const QByteArray &mark, const QList<RangeChange> &changes,
                 std::optional<CodePage> page = {});
    // What tells a text from any other.
    static QByteArray markOf(const QString &text);
    // Changes rows of the catalogue at `path`, which must be open.
    void changeRow(const QString &path, const RowChange &change);

    // Changes nothing in the texts of these files any more.
    void leaveOut(const QStringList &paths);

    // Gives a file another name, after all else; that of another file is never taken.
    void move(const QString &path, const QString &to);

    // Makes a file, before all else; one that is there, in letters of any case, is never taken.
    void create(const QString &path, const QByteArray &bytes);

    struct Move
    {
        QString from, to;
    };
    struct WholeBytes
    {
        QString path;
        QByteArray bytes;
    };
    bool isEmpty() const
    {
        return m_files.empty() && m_rows.empty() && m_moves.isEmpty() && m_created.isEmpty() &&
               m_removed.isEmpty();
    }
    const QList<Move> &moves() const { return m_moves; }
    const QList<WholeBytes> &created() const { return m_created; }
    // Files that go again, of an edit that takes back another.
    const QList<WholeBytes> &removed() const { return m_removed; }
    QString pathAfter(const QString &path) const;
    // Of all that is changed; not of what comes and goes.
    QStringList paths() const;
    // This text of the file has nothing left to be taken back; known of an edit that takes back another.
    bool isTakenBack(const QString &path, const QString &text) const;
    // The same of the rows of a list.
    bool areTakenBack(const QString &path, const QList<ListRows::Row> &rows) const;
    QList<RangeChange> changesOf(const QString &path) const;
    QList<RowChange> rowChangesOf(const QString &path) const;

    // Makes all of the changes, or none: RunTimeError says which file holds something else than the edit was
    // made for, or could not be written; files that were written by then are put back. Returns the edit that
    // takes it back, for as long as nothing else has changed the files; it passes over texts that were taken
    // back by then.
    ThemeEdit apply(const EditTargets &targets) const;

private:
    struct FileEdit
    {
        QByteArray madeFor; // what tells the text from any other
        QByteArray gives;   // the same of what an inverse leads back to; empty where it is not known
        QList<RangeChange> changes;
        std::optional<CodePage> page;
        std::optional<CodePageRule> rule; // by which an inverse has to read
    };
    struct Prepared;
    struct Done;

    void write(Done &done, const QList<Files::Change> &files, const EditTargets &targets) const;
    static std::optional<Prepared> prepared(const QString &path, const FileEdit &edit,
                                            const EditTargets &targets);

    std::map<QString, FileEdit> m_files;
    std::map<QString, QList<RowChange>> m_rows;
    QList<Move> m_moves;
    QList<WholeBytes> m_created, m_removed;
};

} // namespace quillmere
