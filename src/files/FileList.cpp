#include "files/FileList.h"

#include "files/Paths.h"

#include <QDir>

#include <algorithm>
#include <memory>

#ifdef Q_OS_UNIX
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace quillmere {

namespace {

bool inNameOrder(const QString &a, const QString &b)
{
    const int order = a.compare(b, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : a < b;
}

#ifdef Q_OS_UNIX

// A link counts by what it leads to; it may be anything but a folder.
bool isFile(DIR *folder, const dirent &entry)
{
    if (entry.d_type == DT_REG)
        return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return false;
    struct stat found = {};
    if (entry.d_type == DT_UNKNOWN) {
        if (::fstatat(dirfd(folder), entry.d_name, &found, AT_SYMLINK_NOFOLLOW) != 0)
            return false;
        if (!S_ISLNK(found.st_mode))
            return S_ISREG(found.st_mode);
    }
    return ::fstatat(dirfd(folder), entry.d_name, &found, 0) == 0 && !S_ISDIR(found.st_mode);
}

// As QDir::entryList, which makes a QFileInfo of each, and takes five times as long.
QStringList entriesOf(const QString &folder)
{
    QStringList names;
    const std::unique_ptr<DIR, int (*)(DIR *)> opened(::opendir(QFile::encodeName(folder).constData()),
                                                      ::closedir);
    if (!opened)
        return names;
    while (const dirent *entry = ::readdir(opened.get())) {
        const QByteArrayView name(entry->d_name);
        // Nothing can be opened by a name that does not become text.
        if (isFile(opened.get(), *entry) && name.isValidUtf8())
            names.append(QFile::decodeName(QByteArray::fromRawData(name.data(), name.size())));
    }
    return names;
}

#else

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
}

#endif

} // namespace

void sortByName(QStringList &names)
{
    std::sort(names.begin(), names.end(), inNameOrder);
}

QStringList unsortedFilesOf(const QString &folder)
{
    // QDir takes an empty path for the current folder.
    const QString found = findFolder(folder);
    return found.isEmpty() ? QStringList() : entriesOf(found);
}

QStringList filesOf(const QString &folder)
{
    QStringList names = unsortedFilesOf(folder);
    sortByName(names);
    return names;
}

void FileList::setPath(const QString &folder)
{
    beginResetModel();
    m_path = folder;
    m_files.clear();
    m_listed = false;
    endResetModel();
}

const QStringList &FileList::files() const
{
    if (!m_listed) {
        m_files = filesOf(m_path);
        m_listed = true;
    }
    return m_files;
}

int FileList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(files().size());
}

QVariant FileList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) ||
        (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return files().at(index.row());
}

bool FileNames::contains(const QString &folder, const QString &name)
{
    auto known = m_folders.find(folder);
    if (known == m_folders.end()) {
        const QStringList files = filesOf(folder);
        known = m_folders.insert(folder, QSet<QString>(files.cbegin(), files.cend()));
    }
    return known->contains(name);
}

} // namespace quillmere
