#include "files/FolderListings.h"

#include "files/FileList.h"
#include "files/Paths.h"

namespace quillmere {

QString FolderListings::find(const QString &path)
{
    const QString name = fileNameOf(path).toString();
    const Listing &listing = of(folderOf(path).toString());
    if (listing.names.contains(name))
        return joinPath(listing.folder, name);
    const QString other = listing.folded.value(name.toCaseFolded());
    return other.isEmpty() ? QString() : joinPath(listing.folder, other);
}

const FolderListings::Listing &FolderListings::of(const QString &folder)
{
    const auto known = m_listings.constFind(folder);
    if (known != m_listings.constEnd())
        return *known;
    Listing listing;
    listing.folder = findFolder(folder);
    for (const QString &name : filesOf(folder)) {
        listing.names.insert(name);
        const QString folded = name.toCaseFolded();
        if (!listing.folded.contains(folded))
            listing.folded.insert(folded, name);
    }
    return *m_listings.insert(folder, listing);
}

} // namespace quillmere
