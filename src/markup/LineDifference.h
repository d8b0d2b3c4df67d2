#pragma once

#include <QList>
#include <QStringView>

namespace quillmere {

// Which lines of one text stand in another one as well, in the same order. Line ends are no part of a line,
// and whether there is one behind the last line does not matter. Everything here is views into the texts.
struct LineDifference
{
    enum class Kind { Same, Removed, Added };
    struct Line
    {
        Kind kind;
        QStringView text;
    };
    // Lines that differ, those gone before those that come, between a few that do not.
    struct Hunk
    {
        qsizetype from, to; // where it begins in either text: lines before it
        QList<Line> lines;
    };

    QList<Hunk> hunks; // in order, none touching another
    qsizetype removed = 0, added = 0;
};

// `context` is the most lines that are shown around a difference on each side. As few lines as possible
// differ, except where finding that out would take too long: then everything between the first and the last
// difference does.
// Lines that differ in the blanks before them alone may count as the same; `from` has them to show.
enum class Indentation { Counts, Ignored };
LineDifference compareLines(QStringView from, QStringView to, qsizetype context = 3,
                            Indentation indentation = Indentation::Counts);

// How many lines of a text stand in another one as they are but for the blanks before them. Lines of blanks
// alone do not count. Where finding them takes too long, those between the first and the last other change
// are left out.
qsizetype onlyIndented(QStringView from, QStringView to);

} // namespace quillmere
