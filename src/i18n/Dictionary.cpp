#include "i18n/Dictionary.h"

#include "markup/Matching.h"

#include <QHash>

namespace quillmere {

namespace {

constexpr QStringView kMarker = u"[*]";
constexpr int kShortSource = 2; // characters; shorter ones are the same in most languages

// The lower-cased sources of the unchecked rows, each with its rows.
QHash<QString, QList<int>> openSources(const ListRows &LvBhs)
{
    QHash<QString, QList<int>> open;
    open.reserve(LvBhs.count());
    for (int row = 0; row < LvBhs.count(); ++row) {
        if (!LvBhs.isChecked(row))
            open[LvBhs.sub(row, 1).toLower()].append(row);
    }
    return open;
}

} // namespace

int fillFromDictionary(ListRows &LvBhs, const QString &dictionary)
{
    // The rows are indexed rather than the lines: a dictionary may be a thousand times longer than a
    // language.
    QHash<QString, QList<int>> open = openSources(LvBhs);
    const QStringView text = dictionary;
    const QStringView lineEnd = containsExact(text, u"\r\n") ? QStringView(u"\r\n") : QStringView(u"\n");
    int filled = 0;
    for (qsizetype from = 0; from < text.size() && !open.isEmpty();) {
        qsizetype end = indexOfExact(text, lineEnd, from);
        if (end < 0)
            end = text.size();
        const QStringView line = text.sliced(from, end - from);
        from = end + lineEnd.size();

        const qsizetype marker = line.indexOf(kMarker);
        if (marker < 0)
            continue;
        // Taken out of the index, so that a later line with the same key finds nothing to fill.
        const QList<int> rows = open.take(line.first(marker).toString().toLower());
        if (rows.isEmpty())
            continue;
        const QStringView rest = line.sliced(marker + kMarker.size());
        const qsizetype second = rest.indexOf(kMarker);
        const QString translation = (second < 0 ? rest : rest.first(second)).toString();
        for (const int row : rows) {
            LvBhs.setSub(row, 2, translation);
            LvBhs.setChecked(row, true);
        }
        filled += int(rows.size());
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

} // namespace quillmere
