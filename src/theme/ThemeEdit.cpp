#include "theme/ThemeEdit.h"

#include "files/FailedStep.h"
#include "files/Paths.h"

#include <QCryptographicHash>

#include <algorithm>

namespace quillmere {

namespace {

// The changes that give back the text before.
QList<RangeChange> inverseOf(const QList<RangeChange> &changes)
{
    QList<RangeChange> inverse;
    qint32 moved = 0;
    for (const RangeChange &change : changes) {
        const qint32 start = change.range.start + moved;
        inverse.append({{start, start + qint32(change.after.size())}, change.after, change.before});
        moved += qint32(change.after.size() - change.before.size());
    }
    return inverse;
}

QList<RowChange> inverseOf(const QList<RowChange> &changes)
{
    QList<RowChange> inverse;
    for (const RowChange &change : changes)
        inverse.prepend({change.row, change.after, change.before});
    return inverse;
}

bool isSame(const ListRows::Row &a, const ListRows::Row &b)
{
    return a.text == b.text && a.subItems == b.subItems;
}

// The rows are as the changes would make them: they were undone in their own list, for example.
bool areMade(const QList<ListRows::Row> &rows, const QList<RowChange> &changes)
{
    return std::all_of(changes.begin(), changes.end(), [&](const RowChange &change) {
        return change.before && change.after && change.row >= 0 && change.row < rows.size() &&
               isSame(rows.at(change.row), *change.after);
    });
}

template <typename Target>
Target *openAt(const std::function<Target *(const QString &)> &find, const QString &path)
{
    return find ? find(path) : nullptr;
}

[[noreturn]] void throwChanged(const QString &path)
{
    throwFailed("change", path, QStringLiteral("it has changed in the meantime"));
}

} // namespace

// What has been done to files by then, the last first.
struct ThemeEdit::Done
{
    QList<WholeBytes> removed, created;
    QList<Move> moves; // as they are taken back
    QList<Files::Change> files;

    // What fails here stays as it is, and the old files are in the backup folder.
    void takeBack(const EditTargets &targets)
    {
        for (const WholeBytes &file : std::as_const(removed))
            targets.files.create(file.path, file.bytes, targets.folder);
        for (const Move &move : std::as_const(moves))
            targets.files.move(move.from, move.to, targets.folder);
        for (Files::Change &file : files)
            std::swap(file.before, file.after);
        targets.files.saveAll(files, targets.folder);
        for (const WholeBytes &file : std::as_const(created))
            targets.files.remove(file.path, targets.folder);
    }
};

QString changedText(const QString &text, const QList<RangeChange> &changes)
{
    QString changed;
    qsizetype size = text.size();
    for (const RangeChange &change : changes)
        size += change.after.size() - change.range.size();
    changed.reserve(size);
    qsizetype from = 0;
    for (const RangeChange &change : changes) {
        changed += QStringView(text).sliced(from, change.range.start - from);
        changed += change.after;
        from = change.range.end;
    }
    return changed += QStringView(text).sliced(from);
}

std::optional<QList<ListRows::Row>> changedRows(QList<ListRows::Row> rows, const QList<RowChange> &changes)
{
    for (const RowChange &change : changes) {
        const int most = int(rows.size()) - (change.before ? 1 : 0);
        if (change.row < 0 || change.row > most ||
            (change.before && !isSame(rows.at(change.row), *change.before)))
            return std::nullopt;
        if (change.before && change.after) {
            rows[change.row].text = change.after->text;
            rows[change.row].subItems = change.after->subItems;
        } else if (change.before) {
            rows.removeAt(change.row);
        } else if (change.after) {
            rows.insert(change.row, *change.after);
        }
    }
    return rows;
}

QByteArray ThemeEdit::markOf(const QString &text)
{
    return QCryptographicHash::hash(QByteArrayView(reinterpret_cast<const char *>(text.constData()),
                                                   text.size() * qsizetype(sizeof(QChar))),
                                    QCryptographicHash::Sha1);
}

bool ThemeEdit::replace(const QString &path, const QByteArray &mark, const QList<RangeChange> &changes,
                        std::optional<CodePage> page)
{
    qint32 behind = 0;
    for (const RangeChange &change : changes) {
        if (change.range.start < behind || change.range.size() != change.before.size())
            return false;
        behind = change.range.end;
    }
    return changes.isEmpty() || m_files.emplace(path, FileEdit{mark, {}, changes, page, {}}).second;
}

void ThemeEdit::create(const QString &path, const QByteArray &bytes)
{
    m_created.append({path, bytes});
}

void ThemeEdit::move(const QString &path, const QString &to)
{
    m_moves.append({path, to});
}

QString ThemeEdit::pathAfter(const QString &path) const
{
    const auto moved =
        std::find_if(m_moves.cbegin(), m_moves.cend(), [&](const Move &move) { return move.from == path; });
    return moved == m_moves.cend() ? path : moved->to;
}

bool ThemeEdit::replace(const QString &path, const QString &text, Range range, const QString &after,
                        std::optional<CodePage> page)
{
    if (range.start < 0 || range.end < range.start || range.end > text.size())
        return false;
    const QByteArray mark = markOf(text);
    const auto known = m_files.find(path);
    if (known != m_files.end() && known->second.madeFor != mark)
        return false;
    const QList<RangeChange> changes = known == m_files.end() ? QList<RangeChange>() : known->second.changes;
    const auto behind =
        std::lower_bound(changes.cbegin(), changes.cend(), range,
                         [](const RangeChange &change, Range at) { return change.range.start < at.start; });
    // Two changes may touch; but of two at one place nobody could say which comes first.
    if (behind != changes.cend() && (behind->range.start < range.end || behind->range.start == range.start))
        return false;
    if (behind != changes.cbegin() && (behind - 1)->range.end > range.start)
        return false;
    FileEdit &edit = m_files[path];
    edit.madeFor = mark;
    if (page)
        edit.page = page;
    edit.changes.insert(behind - changes.cbegin(), {range, range.in(text).toString(), after});
    return true;
}

void ThemeEdit::changeRow(const QString &path, const RowChange &change)
{
    m_rows[path].append(change);
}

void ThemeEdit::leaveOut(const QStringList &paths)
{
    for (const QString &path : paths)
        m_files.erase(path);
}

QStringList ThemeEdit::paths() const
{
    QStringList paths;
    for (const auto &[path, edit] : m_files)
        paths.append(path);
    for (const auto &[path, changes] : m_rows) {
        if (m_files.find(path) == m_files.end())
            paths.append(path);
    }
    return paths;
}

bool ThemeEdit::isTakenBack(const QString &path, const QString &text) const
{
    const auto edit = m_files.find(path);
    return edit != m_files.end() && !edit->second.gives.isEmpty() && edit->second.gives == markOf(text);
}

bool ThemeEdit::areTakenBack(const QString &path, const QList<ListRows::Row> &rows) const
{
    const auto edit = m_rows.find(path);
    return edit != m_rows.end() && areMade(rows, edit->second);
}

QList<RangeChange> ThemeEdit::changesOf(const QString &path) const
{
    const auto edit = m_files.find(path);
    return edit == m_files.end() ? QList<RangeChange>() : edit->second.changes;
}

QList<RowChange> ThemeEdit::rowChangesOf(const QString &path) const
{
    const auto changes = m_rows.find(path);
    return changes == m_rows.end() ? QList<RowChange>() : changes->second;
}

// A file that is to be written, with what is in it now.
struct ThemeEdit::Prepared
{
    Files::Change change;
    QString text; // afterwards
    Encoding old;
};

// None where there is nothing left to be written.
std::optional<ThemeEdit::Prepared> ThemeEdit::prepared(const QString &path, const FileEdit &edit,
                                                       const EditTargets &targets)
{
    const QString found = findFile(path);
    if (found.isEmpty())
        throwFailed("change", path, QStringLiteral("there is no such file"));
    if (!targets.files.place(Files::Step::Save, found, targets.folder).mayBeTouched)
        throwFailed("change", path, QStringLiteral("it lies outside the theme's folder"));
    const std::optional<QByteArray> bytes = LoadBytes(found);
    if (!bytes)
        throwFailed("read", path, QStringLiteral("it cannot be read"));
    const CodePageRule rule = edit.rule.value_or(targets.rule);
    const DecodedText old = decodeText(*bytes, rule);
    const QByteArray mark = markOf(old.text);
    if (mark == edit.gives)
        return {};
    if (mark != edit.madeFor)
        throwChanged(path);
    const QString text = changedText(old.text, edit.changes);
    try {
        const QByteArray after = encodeText(text, edit.page.value_or(old.page), rule);
        return Prepared{{found, *bytes, after}, text, {old.page, rule}};
    } catch (const RunTimeError &error) {
        throwFailed("write", path, error.message().chopped(1));
    }
}

void ThemeEdit::write(Done &done, const QList<Files::Change> &files, const EditTargets &targets) const
{
    for (const WholeBytes &file : m_created) {
        targets.files.create(file.path, file.bytes, targets.folder);
        done.created.prepend(file);
    }
    targets.files.saveAll(files, targets.folder);
    done.files = files;
    for (const Move &move : m_moves) {
        targets.files.move(findFile(move.from), move.to, targets.folder);
        done.moves.prepend({move.to, move.from});
    }
    for (const WholeBytes &file : m_removed) {
        targets.files.remove(file.path, targets.folder);
        done.removed.prepend(file);
    }
}

ThemeEdit ThemeEdit::apply(const EditTargets &targets) const
{
    ThemeEdit inverse;
    QList<Files::Change> files;
    QList<std::pair<OpenText *, const QList<RangeChange> *>> texts;
    QList<std::pair<OpenRows *, const QList<RowChange> *>> rows;
    for (const auto &[path, edit] : m_files) {
        FileEdit back = {{}, edit.madeFor, inverseOf(edit.changes), edit.page, edit.rule};
        if (OpenText *open = openAt(targets.text, path)) {
            const QString text = open->text();
            const QByteArray mark = markOf(text);
            if (mark == edit.gives)
                continue;
            if (mark != edit.madeFor)
                throwChanged(path);
            texts.append({open, &edit.changes});
            back.madeFor = markOf(changedText(text, edit.changes));
        } else {
            const std::optional<Prepared> file = prepared(path, edit, targets);
            if (!file)
                continue;
            files.append(file->change);
            back.madeFor = markOf(file->text);
            back.page = file->old.page;
            back.rule = file->old.rule;
        }
        inverse.m_files.emplace(pathAfter(path), back);
    }
    for (const auto &[path, changes] : m_rows) {
        OpenRows *open = openAt(targets.rows, path);
        if (open && areMade(open->rows(), changes))
            continue;
        if (!open || !changedRows(open->rows(), changes))
            throwChanged(path);
        rows.append({open, &changes});
        inverse.m_rows.emplace(path, inverseOf(changes));
    }
    for (const WholeBytes &file : m_removed) {
        if (LoadBytes(file.path) != file.bytes)
            throwChanged(file.path);
    }
    Done done;
    try {
        write(done, files, targets);
    } catch (const RunTimeError &) {
        done.takeBack(targets);
        throw;
    }
    inverse.m_moves = done.moves;
    inverse.m_removed = done.created;
    inverse.m_created = done.removed;
    for (const auto &[open, changes] : texts)
        open->apply(*changes);
    for (const auto &[open, changes] : rows)
        open->apply(*changes);
    return inverse;
}

} // namespace quillmere
