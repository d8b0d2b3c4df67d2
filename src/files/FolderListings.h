#pragma once

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>
#include <mutex>

namespace quillmere {

// Finds files as findFile does, with one listing a folder: for whoever looks for thousands. May be asked on
// any thread.
class FolderListings
{
public:
    // The path of the existing file that is meant by `path`, which may have other letters; empty where there
    // is none.
    QString find(const QString &path);

private:
    struct Listing
    {
        std::once_flag listed, foldedOnce;
        QString folder; // as it is named where it exists, so that paths stay as they are written
        QStringList files;
        QSet<QString> names;
        QHash<QString, QString> folded; // the first of each; made when a name is not found as it stands
    };

    std::shared_ptr<Listing> of(const QString &folder);

    std::mutex m_mutex; // of the hash, not of what stands in it
    QHash<QString, std::shared_ptr<Listing>> m_listings;
};

} // namespace quillmere
