#pragma once

#include "files/RunTimeError.h"
#include "rows/ListRows.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace quillmere {

// What files for translators' programs have in common, whatever their format.
enum class UnitState {
    None,
    Fuzzy,      // somebody has to look at it
    Translated, // somebody has
};

struct ExchangeUnit
{
    QString source, translation; // lines end in LF
    UnitState state = UnitState::None;
    QStringList places; // where the source stands, as WINDOW:LINE; written, never read
    int line = 0;       // from 1, in the file that it was read from
};

// What is said of one line of a file.
struct LineNote
{
    int line = 0;
    QString text;
};

struct ExchangeTable
{
    QString language; // by a name or a code; empty where a file says none
    QList<ExchangeUnit> units;
    QList<LineNote> refused; // what no language file can hold, in the order of the lines

    // Each throws where the file holds more than any theme could.
    void add(const ExchangeUnit &unit);
    void refuse(int line, const QString &reason);
};

// A file that cannot be read, and the line because of which it cannot.
class LineError : public RunTimeError
{
public:
    LineError(int line, const QString &reason) : RunTimeError(reason), m_line(line) {}
    int line() const { return m_line; }

private:
    int m_line;
};

// The text with LF for every line end.
QString withLineFeeds(QString text);
// Nothing but blanks counts as no translation.
bool isTranslated(QStringView translation);
// The places in one line, without what would break it.
QString inOneLine(QString text);

// Units of the strings of a language: the first of those with one source, and none without a source. Those
// with a check mark are translated. `places` may be empty.
QList<ExchangeUnit> unitsOf(const QList<ListRows::Row> &strings,
                            const std::function<QStringList(const QString &source)> &places);

} // namespace quillmere
