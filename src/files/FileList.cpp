#include "files/FileList.h"

#include "files/Paths.h"

#include <QDir>

#include <algorithm>

namespace quillmere {

namespace {

bool inNameOrder(const QString &a, const QString &b)
{
    const int order = a.compare(b, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : a < b;
}

} // namespace

QStringList filesOf(const QString &folder)
{
    // QDir takes an empty path for the current folder.
    const QString found = findFolder(folder);
    if (found.isEmpty())
        return {};
    QStringList names = QDir(found).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
    std::sort(names.begin(), names.end(), inNameOrder);
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
