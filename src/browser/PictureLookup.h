#pragma once

#include <QHash>
#include <QStringList>
#include <QUrl>

namespace quillmere {

// Finds the pictures of a page as findFile() would, but looks nowhere outside of the theme's folder and lists
// each folder once. Files that come later than the list of their folder are found by their exact name only.
class PictureLookup
{
public:
    explicit PictureLookup(const QString &themeFolder);

    // The picture a page may have: the canonical path of an existing picture file (by its name: png, jpg,
    // jpeg, gif, bmp, webp, svg, ico) below the theme's folder once symbolic links are followed; empty for
    // anything else.
    QString admitted(const QUrl &url);

    // How many folders have been listed.
    int listings() const { return int(m_lists.size()); }

private:
    enum class Kind { File, Folder };
    struct Place
    {
        qsizetype above = 0; // this many parts of the root's path lead here, where it lies above the root
        QString folder;      // else the canonical path
    };

    bool start(const QString &path, Place &place, QStringList &parts) const;
    bool goInto(Place &place, const QString &name);
    QString entry(const QString &folder, const QString &name, Kind kind);

    QString m_given, m_root; // as the theme was opened; canonical
    QStringList m_rootParts;
    QHash<QString, QHash<QString, QStringList>> m_lists; // by folder, by name without letter case
};

} // namespace quillmere
