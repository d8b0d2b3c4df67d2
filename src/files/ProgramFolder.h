#pragma once

#include <QString>
#include <QStringList>

namespace quillmere {

// The folder of the program when files can be made in it and no package put it there, else the person's data
// folder for Quillmere, which gets what was shipped. No separator at its end.
QString findProgramFolder();

// Copies these files, and folders with all that is in them, from one folder to another. What is missing there
// is passed over, what stands in the other already is left alone, what cannot be copied is left out.
void copyMissing(const QString &from, const QString &to, const QStringList &names);

} // namespace quillmere
