#include "files/Backups.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/RegularFile.h"
#include "files/RunTimeError.h"
#include "files/WholeFile.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QMap>
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

// The folder below `root` that stands for an original one: its whole path, without a drive's colon.
QString backupFolderOf(const QString &root, const QString &folder)
{
    // A file is written and deleted by different ways that lead to it; its versions belong together.
    QString path = QFileInfo(folder).canonicalFilePath();
    if (path.isEmpty())
        path = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    if (!path.startsWith(u'/'))
        path.remove(u':');
    while (path.startsWith(u'/'))
        path.remove(0, 1);
    return QDir(root).filePath(path);
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
quint64 highestNumber(const QString &root)
{
    quint64 highest = 0;
    QDirIterator it(root, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (it.hasNext())
        highest = std::max(highest, numberOf(endingOf(it.next())));
    return highest;
}

// The first of so many numbers for the next copies. Two programs that wait for each other in vain may take
// the same ones, which leaves open only which of two copies is the later. RunTimeError where they cannot be
// kept: `path` is what was to be backed up.
quint64 takeNumbers(const QString &root, const QString &path, qsizetype count)
{
    QFile kept(joinPath(root, u".last-number"));
    QLockFile lock(kept.fileName() + QStringLiteral(".lock"));
    lock.tryLock(kPatience);
    QByteArray digits;
    if (kept.open(QIODevice::ReadOnly))
        digits = kept.read(kNumberLength + 1);
    const bool known = fits(kEnding.sliced(1, kNumberLength), QString::fromLatin1(digits));
    const quint64 before = known ? digits.toULongLong() : highestNumber(root);
    const quint64 last = std::min(before + quint64(count), kLastNumber);
    const QString reason =
        WholeFile(kept.fileName()).writeAll(QByteArray::number(last).rightJustified(kNumberLength, '0'));
    if (!reason.isEmpty())
        throwFailed("back up", path, reason);
    return std::min(before + 1, kLastNumber);
}

QString newEnding(quint64 number)
{
    return QStringLiteral(".%1-%2Z")
        .arg(number, kNumberLength, 10, QChar(u'0'))
        .arg(QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd-hhmmss-zzz"));
}

// The copies in a folder below `root` whose paths begin with `start`, newest first; path and size
// are left out.
QList<Version> copiesIn(const QString &root, const QString &folder, QDirIterator::IteratorFlag deep,
                        QStringView start = {}, const Progress &progress = {})
{
    QList<Version> versions;
    if (!liesBelow(folder, root))
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
QList<Version> copiesOf(const QString &root, QStringView original)
{
    // Those of a long name may lie beside its folder, from earlier releases.
    QList<Version> versions =
        copiesIn(root, folderOf(original).toString(), QDirIterator::NoIteratorFlags, original);
    if (isTooLong(fileNameOf(original), kEnding))
        versions = copiesIn(root, original.toString(), QDirIterator::NoIteratorFlags) + versions;
    versions.removeIf([&](const Version &version) { return originalOf(version.copy) != original; });
    return versions;
}

// A folder is listed once for all the files in it.
void keepNumbers(const QString &root, const QStringList &newest, const QSet<QString> &spared)
{
    QHash<QString, QSet<QString>> originals; // by folder
    for (const QString &copy : newest) {
        const QString original = originalOf(copy).toString();
        originals[folderOf(original).toString()].insert(original);
    }
    for (auto folder = originals.cbegin(); folder != originals.cend(); ++folder) {
        const QSet<QString> &wanted = folder.value();
        QList<Version> versions = wanted.size() == 1
                                      ? copiesOf(root, *wanted.begin())
                                      : copiesIn(root, folder.key(), QDirIterator::NoIteratorFlags);
        if (wanted.size() > 1) {
            for (const QString &original : wanted) {
                if (isTooLong(fileNameOf(original), kEnding))
                    versions = copiesIn(root, original, QDirIterator::NoIteratorFlags) + versions;
            }
        }
        QHash<QString, int> counts; // without those that are spared, of which each file has one
        for (const Version &version : std::as_const(versions)) {
            const QString original = originalOf(version.copy).toString();
            if (wanted.contains(original) && !spared.contains(version.copy) &&
                ++counts[original] >= kMostVersions)
                QFile::remove(version.copy);
        }
    }
}

// The folder whose copies share their bytes with this one: the theme's, else that in which it lies.
QString sharedFolder(const QString &root, const QString &copy)
{
    const qsizetype end = themeEnd(copy);
    return end > root.size() ? copy.first(end) : QFileInfo(copy).path();
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

QString Backups::folder() const
{
    if (!m_folder.isEmpty())
        return m_folder;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return joinPath(data, u"Quillmere/backup");
}

void Backups::setFolder(const QString &folder)
{
    m_folder = folder;
    m_roomLeft.clear();
}

QString Backups::root() const
{
    return QDir::cleanPath(QDir(folder()).absolutePath());
}

QStringList Backups::backUp(const QStringList &paths)
{
    if (paths.isEmpty())
        return {};
    const QString top = root();
    QStringList copies;
    quint64 number = 0;
    try {
        for (const QString &path : paths) {
            const QFileInfo info(path);
            QString folder = backupFolderOf(top, info.absolutePath());
            QString name = info.fileName();
            if (isTooLong(name, kEnding)) {
                folder += QString(u'/' + name);
                name.clear();
            }
            if (const QString reason = makeFolder(folder); !reason.isEmpty())
                throwFailed("back up", path,
                            QStringLiteral("the folder \"%1\" cannot be made: %2").arg(folder, reason));
            if (copies.isEmpty())
                number = takeNumbers(top, path, paths.size());
            QString copy;
            do
                copy = folder + u'/' + name + newEnding(number++);
            while (QFileInfo::exists(copy));
            copyTo(copy, path);
            copies.append(copy);
        }
    } catch (const RunTimeError &) {
        for (const QString &copy : std::as_const(copies))
            QFile::remove(copy);
        throw;
    }
    return copies;
}

void Backups::prune(const QStringList &newest)
{
    if (newest.isEmpty())
        return;
    const QSet<QString> spared(newest.begin(), newest.end());
    const QString top = root();
    keepNumbers(top, newest, spared);
    QMap<QString, qint64> added; // bytes, by what shares them
    for (const QString &copy : newest)
        added[sharedFolder(top, copy)] += QFileInfo(copy).size();
    for (const auto &[folder, bytes] : added.asKeyValueRange())
        keepBytes(folder, bytes, spared);
}

void Backups::keepBytes(const QString &folder, qint64 added, const QSet<QString> &spared)
{
    const auto known = m_roomLeft.find(folder);
    if (known != m_roomLeft.end() && *known >= added) {
        *known -= added;
        return;
    }
    const QString top = root();
    const qsizetype end = themeEnd(QString(folder + u'/'));
    const bool inTheme = end == folder.size() && end > top.size();
    QList<Version> versions =
        copiesIn(top, folder, inTheme ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    versions.removeIf([&](const Version &version) {
        return spared.contains(version.copy) || sharedFolder(top, version.copy) != folder;
    });
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
    m_roomLeft[folder] = kMostBytes - all;
}

QDateTime Version::time() const
{
    return timeOf(endingOf(copy)).toLocalTime();
}

QList<Version> Backups::versionsBelow(const QString &folder, const Progress &progress,
                                      const QStringList &others) const
{
    const QString top = root();
    QList<Version> versions =
        copiesIn(top, backupFolderOf(top, folder), QDirIterator::Subdirectories, {}, progress);
    for (Version &version : versions) {
        version.size = QFileInfo(version.copy).size();
        version.name = withOwnSeparators(version.name);
        version.path = joinPath(folder, version.name);
    }
    for (const QString &path : others) {
        const QFileInfo info(path);
        for (Version &version :
             copiesOf(top, QString(backupFolderOf(top, info.absolutePath()) + u'/' + info.fileName()))) {
            const QString shown = withOwnSeparators(path);
            versions.append({shown, shown, version.copy, QFileInfo(version.copy).size()});
        }
    }
    std::sort(versions.begin(), versions.end(), isNewer);
    return versions;
}

} // namespace quillmere
