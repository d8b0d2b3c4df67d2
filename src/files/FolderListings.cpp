#include "files/FolderListings.h"

#include "files/FileList.h"
#include "files/Paths.h"

namespace quillmere {

QString FolderListings::find(const QString &path)
{
    const QString name = fileNameOf(path).toString();
    const std::shared_ptr<Listing> listing = of(folderOf(path).toString());
    if (listing->names.contains(name)) {
        const QString found = joinPath(listing->folder, name);
        return found == path ? path : found; // which keep both, keep one text
    }
    std::call_once(listing->foldedOnce, [&] {
        sortByName(listing->files);
        for (const QString &file : std::as_const(listing->files)) {
            const QString folded = file.toCaseFolded();
            if (!listing->folded.contains(folded))
                listing->folded.insert(folded, file);
        }
    });
    const QString other = listing->folded.value(name.toCaseFolded());
    return other.isEmpty() ? QString() : joinPath(listing->folder, other);
}

std::shared_ptr<FolderListings::Listing> FolderListings::of(const QString &folder)
{
    std::shared_ptr<Listing> listing;
    {
        const std::lock_guard lock(m_mutex);
        std::shared_ptr<Listing> &known = m_listings[folder];
        if (!known)
            known = std::make_shared<Listing>();
        listing = known;
    }
    std::call_once(listing->listed, [&] {
        listing->folder = findFolder(folder);
        listing->files = unsortedFilesOf(folder);
        listing->names = QSet<QString>(listing->files.begin(), listing->files.end());
    });
    return listing;
}

} // namespace quillmere
