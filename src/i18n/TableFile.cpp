#include "i18n/TableFile.h"

#include <optional>

namespace quillmere {

namespace {

constexpr qsizetype kMostColumns = 1000;
constexpr QStringView kFuzzy = u"fuzzy", kTranslated = u"translated";
constexpr QStringView kSeparatorLine = u"sep=";

QStringView nameOf(UnitState state)
{
    switch (state) {
    case UnitState::Fuzzy:
        return kFuzzy;
    case UnitState::Translated:
        return kTranslated;
    case UnitState::None:
        break;
    }
    return {};
}

UnitState stateOf(const QString &name)
{
    const QString letters = name.trimmed().toLower();
    return letters == kFuzzy        ? UnitState::Fuzzy
           : letters == kTranslated ? UnitState::Translated
                                    : UnitState::None;
}

void addCell(QString &text, const QString &cell, QChar separator)
{
    // Some programs take blanks at the ends away where nothing holds them.
    const bool isPlain = !cell.contains(separator) && !cell.contains(u'"') && !cell.contains(u'\n') &&
                         (cell.isEmpty() || (!cell.front().isSpace() && !cell.back().isSpace()));
    if (isPlain)
        text += cell;
    else
        text += u'"' + QString(cell).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

// The lines of a table, one after the other.
class TableLines
{
public:
    TableLines(QStringView text, QChar separator, int line)
        : m_text(text), m_separator(separator), m_next(line)
    {
    }

    // The cells of the next line, at most so many; false at the end.
    bool read(qsizetype most)
    {
        m_cells.clear();
        m_hasMore = false;
        m_line = m_next;
        if (m_at >= m_text.size())
            return false;
        while (true) {
            QString cell = readCell();
            if (m_cells.size() < most)
                m_cells.append(cell);
            else
                m_hasMore = m_hasMore || !cell.isEmpty();
            if (m_at >= m_text.size())
                return true;
            if (m_text[m_at++] == u'\n') {
                ++m_next;
                return true;
            }
        }
    }

    const QStringList &cells() const { return m_cells; }
    bool hasMore() const { return m_hasMore; } // cells with something in them
    int line() const { return m_line; }        // where it begins

private:
    bool atEnd() const
    {
        return m_at >= m_text.size() || m_text[m_at] == m_separator || m_text[m_at] == u'\n';
    }

    QString readCell()
    {
        const qsizetype start = m_at;
        if (m_at >= m_text.size() || m_text[m_at] != u'"') {
            while (!atEnd())
                ++m_at;
            return m_text.sliced(start, m_at - start).toString();
        }
        const int line = m_next;
        QString cell;
        while (true) {
            const qsizetype quote = m_text.indexOf(u'"', m_at + 1);
            if (quote < 0)
                throw LineError(line, QStringLiteral("the double quote here has no other"));
            cell += m_text.sliced(m_at + 1, quote - m_at - 1);
            m_at = quote + 1;
            if (m_at >= m_text.size() || m_text[m_at] != u'"')
                break;
            cell += u'"';
        }
        m_next += int(cell.count(u'\n'));
        if (!atEnd())
            throw LineError(m_next, QStringLiteral("something stands behind a closing double quote"));
        return cell;
    }

    QStringView m_text;
    QChar m_separator;
    qsizetype m_at = 0;
    int m_next, m_line = 0;
    QStringList m_cells;
    bool m_hasMore = false;
};

struct Columns
{
    qsizetype source, translation, state, count;
};

std::optional<Columns> columnsOf(QStringView text, QChar separator, int line)
{
    TableLines lines(text, separator, line);
    lines.read(kMostColumns);
    QStringList names;
    for (const QString &cell : lines.cells())
        names.append(cell.trimmed().toLower());
    const Columns columns = {names.indexOf(QStringLiteral("source")),
                             names.indexOf(QStringLiteral("translation")),
                             names.indexOf(QStringLiteral("state")), names.size()};
    return columns.source < 0 || columns.translation < 0 ? std::nullopt : std::optional(columns);
}

void readUnit(ExchangeTable &table, const TableLines &lines, const Columns &columns)
{
    const QStringList &cells = lines.cells();
    if (lines.hasMore())
        table.refuse(lines.line(), QStringLiteral("there are more cells than columns"));
    else if (cells.size() <= std::max(columns.source, columns.translation))
        table.refuse(lines.line(), QStringLiteral("a cell is missing"));
    else if (cells[columns.source].isEmpty())
        table.refuse(lines.line(), QStringLiteral("the source is empty"));
    else
        table.add({cells[columns.source],
                   cells[columns.translation],
                   columns.state < 0 ? UnitState::None : stateOf(cells.value(columns.state)),
                   {},
                   lines.line()});
}

} // namespace

QString tableText(const ExchangeTable &table, QChar separator)
{
    const QString columns[] = {QStringLiteral("Source"), QStringLiteral("Translation"),
                               QStringLiteral("State"), QStringLiteral("Places")};
    QString text;
    const auto add = [&](std::initializer_list<QString> cells) {
        for (const QString &cell : cells) {
            if (&cell != cells.begin())
                text += separator;
            addCell(text, cell, separator);
        }
        text += u"\r\n";
    };
    add({columns[0], columns[1], columns[2], columns[3]});
    for (const ExchangeUnit &unit : table.units)
        add({unit.source, unit.translation, nameOf(unit.state).toString(),
             inOneLine(unit.places.join(QStringLiteral("; ")))});
    return text;
}

ExchangeTable readTable(QStringView text, QChar separator)
{
    QList<QChar> separators = {separator, u',', u';', u'\t'};
    int line = 1;
    const qsizetype end = text.indexOf(u'\n');
    const QStringView first = text.first(end < 0 ? text.size() : end);
    if (first.startsWith(kSeparatorLine, Qt::CaseInsensitive) && first.size() == kSeparatorLine.size() + 1) {
        separators = {first.back()};
        text = text.sliced(std::min(first.size() + 1, text.size()));
        line = 2;
    }
    std::optional<Columns> columns;
    for (qsizetype i = 0; i < separators.size() && !columns; ++i) {
        separator = separators[i];
        try {
            columns = columnsOf(text, separator, line);
        } catch (const LineError &) {
            if (i + 1 == separators.size())
                throw;
        }
    }
    if (!columns)
        throw LineError(1, QStringLiteral("there are no columns Source and Translation"));
    ExchangeTable table;
    TableLines lines(text, separator, line);
    lines.read(columns->count);
    while (lines.read(columns->count)) {
        const bool isBlank = lines.cells() == QStringList(QString()) && !lines.hasMore();
        if (!isBlank)
            readUnit(table, lines, *columns);
    }
    return table;
}

} // namespace quillmere
