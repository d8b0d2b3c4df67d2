#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace quillmere {

// Finds files as findFile does, with one listing a folder: for whoever looks for thousands.
class FolderListings
{
public:
    // The path of the existing file that is meant by `path`, which may have other letters; empty where there
    // is none.
    QString find(const QString &path);

private:
    struct Listing
    {
        QString folder; // as it is named where it exists, so that paths stay as they are written
        QSet<QString> names;
        QHash<QString, QString> folded; // the first of each
    };

    const Listing &of(const QString &folder);

    QHash<QString, Listing> m_listings;
};

} // namespace quillmere
