#pragma once

#include "checks/Problem.h"
#include "theme/ThemeEdit.h"
#include "theme/ThemeIndex.h"

namespace quillmere {

// What one edit does about a problem.
struct Mend
{
    QString title; // for a menu
    QString done;  // a sentence for afterwards
    ThemeEdit edit;
    QString file;          // that it changes
    QString before, after; // what is taken out of a text, and what is put there; both empty for rows
    qint32 row = -1;       // of the file, where the person goes on with it
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
