#pragma once

#include "checks/Problem.h"
#include "theme/ThemeEdit.h"
#include "theme/ThemeIndex.h"

namespace quillmere {

// What one edit does about a problem.
struct Mend
{
    QString title; // for a menu
    ThemeEdit edit;
    QString file;          // that it changes
    QString before, after; // the lines of a text that change, without blanks around them; empty for rows
};

// What a theme holds at the moment; see ThemeSources. The rows that are open for editing come by the path of
// their catalogue, saved or not, nothing for a catalogue that is not open.
struct MendedTheme
{
    const ThemeSources &sources;
    const ThemeIndex &index;
    std::function<std::optional<QList<ListRows::Row>>(const QString &path)> openRows;
};

// The most likely first. Nothing where no single edit would do, or where the problem is of an older text.
QList<Mend> mendsFor(const Problem &problem, const MendedTheme &theme);

} // namespace quillmere
