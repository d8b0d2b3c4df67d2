#pragma once

#include <QString>
#include <QStringList>

namespace quillmere {

// Where the program keeps what is the person's to edit: replace.ini and the dictionaries. The folder of the
// program when files can be made in it, else the person's data folder for Quillmere, which gets what was
// shipped beside the program when it is first asked for. No separator at its end.
QString programFolder();
// Another folder from now on; an empty one restores the default.
void setProgramFolder(const QString &folder);

// Copies these files, and folders with all that is in them, from one folder to another. What is missing there
// is passed over, what stands in the other already is left alone, what cannot be copied is left out.
void copyMissing(const QString &from, const QString &to, const QStringList &names);

} // namespace quillmere
