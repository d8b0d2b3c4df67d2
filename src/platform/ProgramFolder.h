#pragma once

#include <QString>

namespace quillmere {

// Where replace.ini, Indonesia.txt and the folder "trans" stand, without a separator at its end: the folder
// of the program when it can be written, else the person's data folder for Quillmere. What was shipped is
// copied there the first time.
QString programFolder();
// An empty folder restores the default.
void setProgramFolder(const QString &folder);

} // namespace quillmere
