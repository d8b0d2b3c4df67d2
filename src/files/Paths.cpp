#include "files/Paths.h"

#include "files/FileList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quillmere {

namespace {

constexpr QChar slash = u'/';
constexpr QChar backslash = u'\\';

// Longer than any path a system takes. It keeps a damaged theme file from being looked up part by part.
constexpr qsizetype longestPath = 32767;

constexpr int kMostLinks = 40; // on the way to one file, as systems have it

// Qt takes and gives "/" on every system, so it counts beside the system's own.
bool isSeparator(QChar c)
{
    return c == slash || c == separator();
}

// A root keeps its one separator.
QStringView withoutLastSeparators(QStringView folder)
{
    while (folder.size() > 1 && isSeparator(folder.back()))
        folder.chop(1);
    return folder;
}

enum class Kind { File, Folder };

bool exists(const QString &path, Kind kind)
{
    const QFileInfo info(path);
    return kind == Kind::File ? info.isFile() : info.isDir();
}

// The first entry of the folder, in name order, that has this name but for letter case.
QString entryIgnoringCase(const QString &folder, const QString &name, Kind kind)
{
    QStringList entries;
    if (kind == Kind::File)
        entries = filesOf(folder);
    else
        entries = QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    const auto same = [&name](const QString &entry) { return entry.compare(name, Qt::CaseInsensitive) == 0; };
    const auto found = std::find_if(entries.cbegin(), entries.cend(), same);
    return found == entries.cend() ? QString() : *found;
}

// Goes up to the nearest folder that exists, then down again, one listing for every part that is missing.
QString findIgnoringCase(const QString &path, Kind kind)
{
    QStringList missing;
    QString found = path;
    Kind foundKind = kind;
    while (!exists(found, foundKind)) {
        const QStringView folder = folderOf(found);
        const QString name = fileNameOf(found).toString();
        if (name.isEmpty() && foundKind == Kind::File)
            return {}; // a file was asked for and a folder is named
        if (!name.isEmpty())
            missing.prepend(name);
        foundKind = Kind::Folder;
        QString parent = folder.isEmpty() ? QStringLiteral(".") : withoutLastSeparators(folder).toString();
        if (parent == found)
            return {}; // a root that is not there
        found = std::move(parent);
    }
    for (qsizetype i = 0; i < missing.size(); ++i) {
        const Kind partKind = i + 1 < missing.size() ? Kind::Folder : kind;
        QString name = missing.at(i);
        if (!exists(joinPath(found, name), partKind))
            name = entryIgnoringCase(found, name, partKind);
        if (name.isEmpty())
            return {};
        found = joinPath(found, name);
    }
    return found;
}

QString find(const QString &path, Kind kind)
{
    if (path.isEmpty() || path.size() > longestPath || path.contains(QChar(QChar::Null)))
        return {};
    if (exists(path, kind))
        return path;
    return findIgnoringCase(withOwnSeparators(path), kind);
}

} // namespace

QChar separator()
{
    return QDir::separator();
}

QString withOwnSeparators(QStringView path)
{
    QString own = path.toString();
    own.replace(separator() == slash ? backslash : slash, separator());
    return own;
}

QString joinPath(QStringView folder, QStringView name)
{
    if (folder.isEmpty())
        return name.toString();
    while (!folder.isEmpty() && isSeparator(folder.back()))
        folder.chop(1);
    while (!name.isEmpty() && isSeparator(name.front()))
        name = name.sliced(1);
    return folder.toString() + separator() + name.toString();
}

QStringView fileNameOf(QStringView path)
{
    return path.sliced(folderOf(path).size());
}

QStringView folderOf(QStringView path)
{
    qsizetype end = path.size();
    while (end > 0 && !isSeparator(path[end - 1]))
        --end;
    return path.first(end);
}

bool isThemeFolder(QStringView path)
{
    return path.endsWith(QString(separator() + QStringLiteral("theme")));
}

QString findFile(const QString &path)
{
    return find(path, Kind::File);
}

QString findFolder(const QString &path)
{
    return find(path, Kind::Folder);
}

QString fileToWrite(const QString &path)
{
    const QString existing = findFile(path);
    const QFileInfo info(path);
    if (!existing.isEmpty() || info.exists() || info.isSymLink())
        return existing.isEmpty() ? path : existing;
    const QString own = withOwnSeparators(path);
    const QString folder = findFolder(folderOf(own).toString());
    return folder.isEmpty() ? own : joinPath(folder, fileNameOf(own));
}

QString realPlace(const QString &path)
{
    if (path.size() > longestPath)
        return {};
    // Qt's own ways to an absolute path take "NAME/.." away before anybody has seen that NAME is a link.
    const QString all = QDir::fromNativeSeparators(path);
    QStringList ahead = (QDir::isAbsolutePath(all) ? all : QDir::currentPath() + slash + all).split(slash);
    QString place =
        all.startsWith(slash) || QDir::currentPath().startsWith(slash) ? QString() : ahead.takeFirst();
    for (int links = 0; !ahead.isEmpty();) {
        const QString part = ahead.takeFirst();
        if (part.isEmpty() || part == u".")
            continue;
        if (part == u"..") {
            place.truncate(std::max<qsizetype>(place.lastIndexOf(slash), 0));
            continue;
        }
        const QString next = place + slash + part;
        std::error_code noLink;
        const std::filesystem::path target =
            std::filesystem::read_symlink(QFile::encodeName(next).toStdString(), noLink);
        if (noLink) {
            place = next;
            continue;
        }
        if (++links > kMostLinks)
            return {};
        const QString to = QDir::fromNativeSeparators(QFile::decodeName(target.string().c_str()));
        ahead = to.split(slash) + ahead;
        if (QDir::isAbsolutePath(to))
            place = to.startsWith(slash) ? QString() : ahead.takeFirst();
    }
    return place.isEmpty() ? QString(slash) : place;
}

bool isSameFile(const QString &a, const QString &b)
{
    const QString place = QFileInfo(findFile(a)).canonicalFilePath();
    return !place.isEmpty() && place == QFileInfo(findFile(b)).canonicalFilePath();
}

bool liesBelow(const QString &path, const QString &folder)
{
    const QString inner = QFileInfo(path).canonicalFilePath();
    QString outer = QFileInfo(folder).canonicalFilePath();
    if (inner.isEmpty() || outer.isEmpty())
        return false;
    // The separator behind the folder's name keeps "theme2" from lying below "theme".
    if (!outer.endsWith(slash))
        outer += slash;
    return inner.size() > outer.size() && inner.startsWith(outer);
}

} // namespace quillmere
