#pragma once

#include <QString>
#include <QStringView>

namespace quillmere {

// Paths are shown and kept with the system's own separator; theme files may use either.

QChar separator();

// Every "/" and every "\" becomes the system's separator.
QString withOwnSeparators(QStringView path);

// Folder and file name joined by exactly one separator.
QString joinPath(QStringView folder, QStringView name);

// The text behind the last separator, and the text before it with that separator; together the whole path.
QStringView fileNameOf(QStringView path);
QStringView folderOf(QStringView path);

// True when the last six characters are exactly the separator and "theme".
bool isThemeFolder(QStringView path);

// The existing file that a theme means by `path`: as it stands; else with own separators; else looked up part
// by part ignoring letter case, since themes are made on systems that do not mind it. Empty when there is
// none.
QString findFile(const QString &path);
// The same for a folder; a separator at its end does not matter.
QString findFolder(const QString &path);

// The file that a text for `path` goes to: the one that findFile finds, else a new file in that folder. As it
// stands where something else than a file is there, or a link to a file that is not there yet.
QString fileToWrite(const QString &path);

// Where the system would really go for `path`: absolute, with "/", all symbolic links followed as far as
// there is something, also one that leads to what is not there yet. Empty where links lead in a circle.
QString realPlace(const QString &path);

// True when both name one file that is there, whatever letters and links lead to it.
bool isSameFile(const QString &a, const QString &b);

// True when `path` lies below `folder` after all symbolic links are followed. Both must exist.
bool liesBelow(const QString &path, const QString &folder);

} // namespace quillmere
