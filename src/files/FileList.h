#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace quillmere {

// The files of one folder in name order (ignoring case): names only, no folders, names beginning with a dot
// too. A folder that cannot be listed has no files.
QStringList filesOf(const QString &folder);
// The same in the order of the system, which takes half the time.
QStringList unsortedFilesOf(const QString &folder);
void sortByName(QStringList &names);

// A file list box: points at a folder and shows its files. The listing is made when it is first read, so a
// loader may point the list at a thousand folders and pay for the last.
class FileList : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    const QString &path() const { return m_path; }
    // Points the list at a folder and drops what was listed before, also when the folder is the same.
    void setPath(const QString &folder);
    void refresh() { setPath(QString(m_path)); }
    const QStringList &files() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    QString m_path;
    mutable QStringList m_files;
    mutable bool m_listed = true;
};

// Answers "is there a file of this very name" for many paths with one listing a folder.
class FileNames
{
public:
    // `folder` with or without a separator at its end. The name is compared with letter case minded on every
    // system; the folder is found as findFolder finds it.
    bool contains(const QString &folder, const QString &name);

private:
    QHash<QString, QSet<QString>> m_folders;
};

} // namespace quillmere
