#pragma once

#include "files/Progress.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSet>
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

struct Version
{
    QString path;    // of the file it is a version of, which need not be there any more
    QString name;    // the same below the folder that was asked for
    QString copy;    // where the version is kept
    qint64 size = 0; // bytes

    // When the copy was made, in local time: the file's own state is that of some time before.
    QDateTime time() const;
};
// The backup folder.
class Backups
{
public:
    Backups() = default;
    Q_DISABLE_COPY_MOVE(Backups)

    // In the person's data folder; setting an empty one restores that.
    QString folder() const;
    void setFolder(const QString &folder);

    // Copies the files and gives the paths of the copies. RunTimeError where that fails, and no copy stays.
    QStringList backUp(const QStringList &paths);

    // Deletes what the limits leave no room for beside `newest`, the paths of copies just made, which stay in
    // any case. Touches nothing but copies made by backUp, and nothing behind a symbolic link that leads out
    // of the backup folder. What cannot be deleted stays, silently: it must not keep a file from being saved.
    void prune(const QStringList &newest);

    // The versions of all files in a folder and below it, newest first. `progress` is told how many were
    // found, with 0 for how many there are; Cancelled goes through.
    // With those of `others`, files anywhere, which have their whole path for a name.
    QList<Version> versionsBelow(const QString &folder, const Progress &progress = {},
                                 const QStringList &others = {}) const;

private:
    QString root() const;
    void keepBytes(const QString &folder, qint64 added, const QSet<QString> &spared);

    QString m_folder;
    // Bytes by which the versions of a theme may grow before its limit is looked at again: asking for the
    // size of every copy at every save would be felt where there are many. By the theme's folder in the
    // backup folder.
    QHash<QString, qint64> m_roomLeft;
};

} // namespace quillmere
