#include "files/Backups.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "files/WholeFile.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

namespace quillmere {

namespace {

// All paths in here have "/", as Qt gives them.
// How a copy's name ends: a number that only grows and the time in UTC, or the local time alone where an
// earlier release made it. A digit stands as 0.
constexpr QStringView kEnding = u".0000000000-00000000-000000-000Z";
constexpr QStringView kOldEnding = u".00000000-000000-000";
constexpr qsizetype kNumberLength = 10;
constexpr qsizetype kTimeLength = 19;
constexpr quint64 kLastNumber = 9'999'999'999;
// Bytes that a name may have before its copies get a folder of their own, now and in earlier releases. Some
// file systems take names of 143 bytes, most of 255.
constexpr int kLongestName = 100;
constexpr int kOldLongestName = 255 - 20;
constexpr int kPatience = 1000;      // ms
constexpr int kTellEvery = 256;      // copies
constexpr qint64 kPortion = 1 << 20; // bytes

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

bool fits(QStringView form, QStringView text)
{
    return std::equal(form.begin(), form.end(), text.begin(), text.end(), [](QChar wanted, QChar c) {
        return wanted == u'0' ? c >= u'0' && c <= u'9' : c == wanted;
    });
}

bool isTooLong(QStringView name, QStringView ending)
{
    const int longest = ending.size() == kEnding.size() ? kLongestName : kOldLongestName;
    return QFile::encodeName(name.toString()).size() > longest;
}

// "yyyyMMdd-hhmmss-zzz" of an ending, and as a time.
QStringView timePart(QStringView ending)
{
    return (ending.endsWith(u'Z') ? ending.chopped(1) : ending).last(kTimeLength);
}

QDateTime timeOf(QStringView ending)
{
    const QStringView time = timePart(ending);
    const auto number = [time](qsizetype at, qsizetype length) { return time.sliced(at, length).toInt(); };
    return {QDate(number(0, 4), number(4, 2), number(6, 2)),
            QTime(number(9, 2), number(11, 2), number(13, 2), number(16, 3)),
            ending.endsWith(u'Z') ? Qt::UTC : Qt::LocalTime};
}

// What a copy's name ends in, by its form.
QStringView endingOf(QStringView copy)
{
    for (const QStringView form : {kEnding, kOldEnding}) {
        const QStringView ending = copy.last(std::min(copy.size(), form.size()));
        if (fits(form, ending))
            return ending;
    }
    return {};
}

// 0 for a copy of an earlier release.
quint64 numberOf(QStringView ending)
{
    return ending.size() == kEnding.size() ? ending.sliced(1, kNumberLength).toULongLong() : 0;
}

// The path without the ending, which is what the copies of one file have in common; empty for a file that is
// no copy of ours.
QStringView originalOf(QStringView copy)
{
    const QStringView ending = endingOf(copy);
    if (ending.isEmpty() || ending.size() == copy.size())
        return {};
    // An hour that clocks skipped here may have been there where the copy was made.
    const QDateTime time = timeOf(ending);
    if (!time.date().isValid() || !time.time().isValid())
        return {};
    QStringView original = copy.chopped(ending.size());
    const bool inOwnFolder = original.endsWith(u'/');
    if (inOwnFolder)
        original.chop(1);
    return isTooLong(fileNameOf(original), ending) == inOwnFolder ? original : QStringView();
}

bool isNewer(const Version &a, const Version &b)
{
    const QStringView first = endingOf(a.copy), second = endingOf(b.copy);
    if (numberOf(first) != numberOf(second))
        return numberOf(first) > numberOf(second);
    const int order = timePart(first).compare(timePart(second));
    return order != 0 ? order > 0 : a.copy < b.copy;
}

// The highest number that a copy has.
quint64 highestNumber()
{
    quint64 highest = 0;
    QDirIterator it(backupRoot(), QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        highest = std::max(highest, numberOf(endingOf(it.next())));
    return highest;
}

// The number of the next copy. Two programs that wait for each other in vain may take the same one, which
// leaves open only which of two copies is the later. RunTimeError where it cannot be kept: `path` is what was
// to be backed up.
quint64 takeNumber(const QString &path)
{
    QFile kept(joinPath(backupRoot(), u".last-number"));
    QLockFile lock(kept.fileName() + QStringLiteral(".lock"));
    lock.tryLock(kPatience);
    QByteArray digits;
    if (kept.open(QIODevice::ReadOnly))
        digits = kept.read(kNumberLength + 1);
    const bool known = fits(kEnding.sliced(1, kNumberLength), QString::fromLatin1(digits));
    const quint64 number = std::min((known ? digits.toULongLong() : highestNumber()) + 1, kLastNumber);
    const QString reason =
        WholeFile(kept.fileName()).writeAll(QByteArray::number(number).rightJustified(kNumberLength, '0'));
    if (!reason.isEmpty())
        throwFailed("back up", path, reason);
    return number;
}

QString newEnding(quint64 number)
{
    return QStringLiteral(".%1-%2Z")
        .arg(number, kNumberLength, 10, QChar(u'0'))
        .arg(QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd-hhmmss-zzz"));
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

// The copies of one file, newest first; `original` is the path of a copy without its ending.
QList<Version> copiesOf(QStringView original)
{
    // Those of a long name may lie beside its folder, from earlier releases.
    QList<Version> versions =
        copiesIn(folderOf(original).toString(), QDirIterator::NoIteratorFlags, original);
    if (isTooLong(fileNameOf(original), kEnding))
        versions = copiesIn(original.toString(), QDirIterator::NoIteratorFlags) + versions;
    versions.removeIf([&](const Version &version) { return originalOf(version.copy) != original; });
    return versions;
}

void keepNumber(const QString &newest)
{
    int count = 1;
    const QList<Version> versions = copiesOf(originalOf(newest));
    for (const Version &version : versions) {
        if (version.copy != newest && ++count > kMostVersions)
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

void copyTo(const QString &copy, const QString &path)
{
    const auto require = [&](const QString &reason) {
        if (!reason.isEmpty())
            throwFailed("back up", path, reason);
    };
    QString reason;
    const std::unique_ptr<QFile> opened = openRegular(path, kLargestCopied, reason);
    require(reason);
    QFile &file = *opened;
    WholeFile target(copy);
    require(target.open());
    for (QByteArray portion = file.read(kPortion); !portion.isEmpty(); portion = file.read(kPortion))
        require(target.write(portion));
    if (file.error() != QFileDevice::NoError)
        require(file.errorString());
    require(target.flush());
    require(target.rename());
    QFile::setPermissions(copy, file.permissions());
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
    if (isTooLong(name, kEnding)) {
        folder += QString(u'/' + name);
        name.clear();
    }
    if (const QString reason = makeFolder(folder); !reason.isEmpty())
        throwFailed("back up", path,
                    QStringLiteral("the folder \"%1\" cannot be made: %2").arg(folder, reason));
    quint64 number = takeNumber(path);
    QString copy;
    do
        copy = folder + u'/' + name + newEnding(number++);
    while (QFileInfo::exists(copy));
    copyTo(copy, path);
    return copy;
}

void pruneBackups(const QString &newest)
{
    keepNumber(newest);
    keepBytes(newest);
}

QDateTime Version::time() const
{
    return timeOf(endingOf(copy)).toLocalTime();
}

QList<Version> versionsBelow(const QString &folder, const Progress &progress, const QStringList &others)
{
    QList<Version> versions = copiesIn(backupFolderOf(folder), QDirIterator::Subdirectories, {}, progress);
    for (Version &version : versions) {
        version.size = QFileInfo(version.copy).size();
        version.name = withOwnSeparators(version.name);
        version.path = joinPath(folder, version.name);
    }
    for (const QString &path : others) {
        const QFileInfo info(path);
        for (Version &version :
             copiesOf(QString(backupFolderOf(info.absolutePath()) + u'/' + info.fileName()))) {
            const QString shown = withOwnSeparators(path);
            versions.append({shown, shown, version.copy, QFileInfo(version.copy).size()});
        }
    }
    std::sort(versions.begin(), versions.end(), isNewer);
    return versions;
}

} // namespace quillmere
