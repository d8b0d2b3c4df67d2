#pragma once

#include "files/Progress.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace quillmere {

// Every file is copied into the backup folder before it is written or deleted. The path of its folder is
// repeated there, and the copy is named NAME.NUMBER-yyyyMMdd-hhmmss-zzzZ, in UTC. The number only grows, and
// says alone which copy came later: a clock may be set back. Where the name is long, the copy is
// .NUMBER-yyyyMMdd-hhmmss-zzzZ in a folder NAME. Earlier releases named it NAME.yyyyMMdd-hhmmss-zzz, in local
// time; such a copy is older than all that have a number.
//
// What is kept: of one file at most kMostVersions, of all files of a theme together at most kMostBytes; the
// oldest go first. The number counts for each file by itself, or saving one window fifty times would throw
// away the only version of another. The theme of a file is the nearest folder named "theme" above it; a file
// in none shares the bytes with the files beside it.
constexpr int kMostVersions = 50;
constexpr qint64 kMostBytes = 200'000'000;
// A larger file, of which no version could be kept beside another, is neither written nor deleted.
constexpr qint64 kLargestCopied = 200 * 1024 * 1024;

// An empty folder restores the default, in the person's data folder.
QString backupFolder();
void setBackupFolder(const QString &folder);

// Copies the file and gives the path of the copy. RunTimeError where that fails.
QString backUp(const QString &path);

// Deletes what the limits leave no room for beside `newest`, the path of a copy just made, which stays in any
// case. Touches nothing but copies made by backUp, and nothing behind a symbolic link that leads out of the
// backup folder. What cannot be deleted stays, silently: it must not keep a file from being saved.
void pruneBackups(const QString &newest);

struct Version
{
    QString path;    // of the file it is a version of, which need not be there any more
    QString name;    // the same below the folder that was asked for
    QString copy;    // where the version is kept
    qint64 size = 0; // bytes

    // When the copy was made, in local time: the file's own state is that of some time before.
    QDateTime time() const;
};
// The versions of all files in a folder and below it, newest first. `progress` is told how many were found,
// with 0 for how many there are; Cancelled goes through.
// With those of `others`, files anywhere, which have their whole path for a name.
QList<Version> versionsBelow(const QString &folder, const Progress &progress = {},
                             const QStringList &others = {});

} // namespace quillmere
