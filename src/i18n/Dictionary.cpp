#include "i18n/Dictionary.h"

#include "markup/Matching.h"

#include <QHash>

namespace quillmere {

namespace {

constexpr QStringView kMarker = u"[*]";
constexpr int kShortSource = 2; // characters; shorter ones are the same in most languages

constexpr int kNoRow = -1;

void appendLower(QString &out, QStringView text)
{
    for (const QChar unit : text) {
        if (unit.unicode() >= 0x80) {
            out += text.toString().toLower();
            return;
        }
    }
    for (const QChar unit : text)
        out += QChar(foldCase(unit.unicode()));
}

// The unchecked rows by their sources, ignoring letter case. The rows are indexed rather than the lines: a
// dictionary may be a thousand times longer than a language.
class OpenSources
{
public:
    explicit OpenSources(const ListRows &LvBhs) : m_next(LvBhs.count(), kNoRow)
    {
        QList<qsizetype> ends(LvBhs.count());
        for (int row = 0; row < LvBhs.count(); ++row) {
            if (!LvBhs.isChecked(row))
                appendLower(m_sources, LvBhs.sub(row, 1));
            ends[row] = m_sources.size();
        }
        m_firstRow.reserve(LvBhs.count());
        for (int row = 0; row < LvBhs.count(); ++row) {
            if (LvBhs.isChecked(row))
                continue;
            const qsizetype begin = row > 0 ? ends[row - 1] : 0;
            const QStringView source = QStringView(m_sources).sliced(begin, ends[row] - begin);
            const auto known = m_firstRow.find(source);
            if (known == m_firstRow.end()) {
                m_firstRow.insert(source, row);
            } else {
                m_next[row] = *known;
                *known = row;
            }
        }
    }

    bool isEmpty() const { return m_firstRow.isEmpty(); }

    // The first of the rows with this source; they are open no longer. kNoRow when there is none.
    int take(QStringView key)
    {
        m_key.truncate(0);
        appendLower(m_key, key);
        const auto known = m_firstRow.find(m_key);
        if (known == m_firstRow.end())
            return kNoRow;
        const int row = *known;
        m_firstRow.erase(known);
        return row;
    }
    // The next with the same source.
    int next(int row) const { return m_next[row]; }

private:
    QString m_sources; // all in lower case, one behind the other; the index points into it
    QHash<QStringView, int> m_firstRow;
    QList<int> m_next;
    QString m_key;
};

} // namespace

int fillFromDictionary(ListRows &LvBhs, const QString &dictionary)
{
    OpenSources open(LvBhs);
    const QStringView text = dictionary;
    const QStringView lineEnd = containsExact(text, u"\r\n") ? QStringView(u"\r\n") : QStringView(u"\n");
    int filled = 0;
    for (qsizetype from = 0; from < text.size() && !open.isEmpty();) {
        qsizetype end = indexOfExact(text, lineEnd, from);
        if (end < 0)
            end = text.size();
        const QStringView line = text.sliced(from, end - from);
        from = end + lineEnd.size();

        const qsizetype marker = indexOfExact(line, kMarker);
        if (marker < 0)
            continue;
        int row = open.take(line.first(marker));
        if (row == kNoRow)
            continue;
        const QStringView rest = line.sliced(marker + kMarker.size());
        const qsizetype second = indexOfExact(rest, kMarker);
        const QString translation = (second < 0 ? rest : rest.first(second)).toString();
        for (; row != kNoRow; row = open.next(row)) {
            LvBhs.setSub(row, 2, translation);
            LvBhs.setChecked(row, true);
            ++filled;
        }
    }
    return filled;
}

QString linesToCopy(const ListRows &LvBhs, int start, CopiedColumn column)
{
    QString lines;
    for (int row = start; row < LvBhs.count(); ++row) {
        QString line = LvBhs.sub(row, column == CopiedColumn::Trans ? 2 : 1);
        if (column == CopiedColumn::NotTranslated) {
            if (line.size() <= kShortSource || LvBhs.isChecked(row))
                continue;
            line += kMarker;
        }
        if (!line.isEmpty())
            lines += QString(line + u"\r\n");
    }
    return lines;
}

int pasteLines(ListRows &LvBhs, int start, const QString &lines)
{
    int pasted = 0;
    for (QStringView line : splitExact(lines, u"\n")) {
        if (start + pasted >= LvBhs.count())
            break;
        // A carriage return belongs to the line end; behind the last line there is none.
        const bool ended = line.data() + line.size() < lines.constData() + lines.size();
        if (ended && line.endsWith(u'\r'))
            line.chop(1);
        LvBhs.setSub(start + pasted, 2, line.toString());
        ++pasted;
    }
    return pasted;
}

void checkContaining(ListRows &LvBhs, const QString &text)
{
    for (int row = 0; row < LvBhs.count(); ++row)
        LvBhs.setChecked(row, containsIgnoringCase(LvBhs.sub(row, 2), text));
}

QStringList dictionaryNames(const QStringList &files)
{
    QStringList names;
    for (QString name : files) {
        if (containsIgnoringCase(name, u".txt"))
            names.append(replaceIgnoringCase(name, u".txt", u""));
    }
    return names;
}

StringCounts countStrings(const ListRows &LvBhs)
{
    StringCounts counts;
    for (const ListRows::Row &string : LvBhs.rows()) {
        ++counts.all;
        counts.checked += string.checked ? 1 : 0;
        counts.untranslated += QStringView(string.sub(2)).trimmed().isEmpty() ? 1 : 0;
    }
    return counts;
}

int percentTranslated(const StringCounts &counts)
{
    return counts.all == 0 ? 0 : int(qint64(counts.all - counts.untranslated) * 100 / counts.all);
}

} // namespace quillmere
