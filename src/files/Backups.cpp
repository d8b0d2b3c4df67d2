#include "files/Backups.h"

#include "files/FailedStep.h"
#include "files/Paths.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>

namespace quillmere {

namespace {

// All paths in here have "/", as Qt gives them.
constexpr int kLongestName = 255; // bytes; what file systems commonly take
constexpr int kStamp = 20;        // length of ".yyyyMMdd-hhmmss-zzz"
constexpr int kTellEvery = 256;   // copies

constexpr qint64 kRoomMade = kMostBytes / 100;

QString chosenBackupFolder;
// Bytes by which the versions of a theme may grow before its limit is looked at again: asking for the size of
// every copy at every save would be felt where there are many. By the theme's folder in the backup folder.
QHash<QString, qint64> roomLeft;

QString backupRoot()
{
    return QDir::cleanPath(QDir(backupFolder()).absolutePath());
}

// The folder that stands for an original one: its whole path, without a drive's colon.
QString backupFolderOf(const QString &folder)
{
    // A file is written and deleted by different ways that lead to it; its versions belong together.
    QString path = QFileInfo(folder).canonicalFilePath();
    if (path.isEmpty())
        path = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    if (!path.startsWith(u'/'))
        path.remove(u':');
    while (path.startsWith(u'/'))
        path.remove(0, 1);
    return QDir(backupRoot()).filePath(path);
}

bool isTooLong(QStringView name)
{
    return QFile::encodeName(name.toString()).size() + kStamp > kLongestName;
}

QDate dateOf(QStringView stamp)
{
    return {stamp.sliced(1, 4).toInt(), stamp.sliced(5, 2).toInt(), stamp.sliced(7, 2).toInt()};
}

QTime timeOfDay(QStringView stamp)
{
    return {stamp.sliced(10, 2).toInt(), stamp.sliced(12, 2).toInt(), stamp.sliced(14, 2).toInt(),
            stamp.sliced(17, 3).toInt()};
}

bool isStamp(QStringView text)
{
    constexpr QStringView form = u".00000000-000000-000";
    for (qsizetype i = 0; i < kStamp; ++i) {
        const bool isDigit = text[i] >= u'0' && text[i] <= u'9';
        if (form[i] == u'0' ? !isDigit : text[i] != form[i])
            return false;
    }
    return dateOf(text).isValid() && timeOfDay(text).isValid();
}

// The path without the time, which is what the copies of one file have in common; empty for a file that is no
// copy of ours.
QStringView originalOf(QStringView copy)
{
    if (copy.size() <= kStamp || !isStamp(copy.last(kStamp)))
        return {};
    QStringView original = copy.chopped(kStamp);
    const bool inOwnFolder = original.endsWith(u'/');
    if (inOwnFolder)
        original.chop(1);
    return isTooLong(fileNameOf(original)) == inOwnFolder ? original : QStringView();
}

bool isNewer(const Version &a, const Version &b)
{
    const int order = QStringView(a.copy).last(kStamp).compare(QStringView(b.copy).last(kStamp));
    return order != 0 ? order > 0 : a.copy < b.copy;
}

// The copies in a folder below the backup folder whose paths begin with `start`, newest first; path and size
// are left out.
QList<Version> copiesIn(const QString &folder, QDirIterator::IteratorFlag deep, QStringView start = {},
                        const Progress &progress = {})
{
    QList<Version> versions;
    if (!liesBelow(folder, backupRoot()))
        return versions;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks, deep);
    while (it.hasNext()) {
        const QString copy = it.next();
        const QStringView original = copy.startsWith(start) ? originalOf(copy) : QStringView();
        if (original.isEmpty())
            continue;
        // Nothing is left of the name where the folder is a file's own.
        versions.append({{}, original.mid(folder.size() + 1).toString(), copy});
        if (progress && versions.size() % kTellEvery == 0)
            progress(versions.size(), 0);
    }
    std::sort(versions.begin(), versions.end(), isNewer);
    return versions;
}

// The length of the path of the theme's folder, which is the nearest above that has this name; -1 for none.
qsizetype themeEnd(QStringView path)
{
    constexpr QStringView theme = u"/theme/";
    const qsizetype at = path.lastIndexOf(theme);
    return at < 0 ? -1 : at + theme.size() - 1;
}

void keepNumber(const QString &newest)
{
    const QStringView original = originalOf(newest);
    int count = 1;
    for (const Version &version :
         copiesIn(QFileInfo(newest).path(), QDirIterator::NoIteratorFlags, newest.chopped(kStamp))) {
        if (version.copy != newest && originalOf(version.copy) == original && ++count > kMostVersions)
            QFile::remove(version.copy);
    }
}

void keepBytes(const QString &newest)
{
    const qsizetype end = themeEnd(newest);
    const bool inTheme = end > backupRoot().size();
    const QString folder = inTheme ? newest.first(end) : QFileInfo(newest).path();
    const qint64 added = QFileInfo(newest).size();
    const auto known = roomLeft.find(folder);
    if (known != roomLeft.end() && *known >= added) {
        *known -= added;
        return;
    }
    QList<Version> versions =
        copiesIn(folder, inTheme ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    versions.removeIf(
        [&](const Version &version) { return version.copy == newest || themeEnd(version.copy) != end; });
    qint64 all = added;
    for (Version &version : versions) {
        version.size = QFileInfo(version.copy).size();
        all += version.size;
    }
    // A little more than has to be, or at the limit the next save would have to look at all of them again.
    for (const qint64 most = all > kMostBytes ? kMostBytes - kRoomMade : all;
         all > most && !versions.isEmpty(); versions.removeLast()) {
        if (QFile::remove(versions.last().copy))
            all -= versions.last().size;
    }
    roomLeft[folder] = kMostBytes - all;
}

} // namespace

QString backupFolder()
{
    if (!chosenBackupFolder.isEmpty())
        return chosenBackupFolder;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return joinPath(data, u"Quillmere/backup");
}

void setBackupFolder(const QString &folder)
{
    chosenBackupFolder = folder;
    roomLeft.clear();
}

QString backUp(const QString &path)
{
    const QFileInfo info(path);
    QString folder = backupFolderOf(info.absolutePath());
    QString name = info.fileName();
    if (isTooLong(name)) {
        folder += QString(u'/' + name);
        name.clear();
    }
    if (!QDir().mkpath(folder))
        throwFailed("back up", path, QStringLiteral("the folder \"%1\" cannot be made").arg(folder));
    // Two copies within one millisecond: the later one takes the next that is free.
    QDateTime time = QDateTime::currentDateTime();
    QString copy;
    do {
        copy = folder + u'/' + name + time.toString(u".yyyyMMdd-hhmmss-zzz");
        time = time.addMSecs(1);
    } while (QFileInfo::exists(copy));
    QFile file(path);
    if (!file.copy(copy))
        throwFailed("back up", path, file.errorString());
    return copy;
}

void pruneBackups(const QString &newest)
{
    keepNumber(newest);
    keepBytes(newest);
}

QDateTime Version::time() const
{
    const QStringView stamp = QStringView(copy).last(kStamp);
    return {dateOf(stamp), timeOfDay(stamp)};
}

QList<Version> versionsBelow(const QString &folder, const Progress &progress)
{
    QList<Version> versions = copiesIn(backupFolderOf(folder), QDirIterator::Subdirectories, {}, progress);
    for (Version &version : versions) {
        version.size = QFileInfo(version.copy).size();
        version.name = withOwnSeparators(version.name);
        version.path = joinPath(folder, version.name);
    }
    return versions;
}

} // namespace quillmere
