#include "naming/Rename.h"

#include "files/Paths.h"

#include <QFileInfo>
#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

bool hasAny(const QString &name, QStringView units)
{
    return std::any_of(name.begin(), name.end(), [units](QChar c) { return units.contains(c); });
}

// A window's name becomes that of a file, here and on other systems, and stays in its folder.
bool isFileName(const QString &name)
{
    return !hasAny(name, u"/\\:*?|>") && !name.startsWith(u'.') && !name.endsWith(u'.') &&
           name == name.trimmed();
}

bool isTaken(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
             const ThemeIndex &index)
{
    if (!thing.kind)
        return places.taken.contains(newName);
    if (index.isDefined(*thing.kind, newName) ||
        (thing.kind == NameKind::Window && index.isUsed(NameKind::Window, newName)))
        return true;
    // The file may be there although no window is named so.
    return std::any_of(places.places.begin(), places.places.end(), [&](const FoundPlace &place) {
        return place.of == FoundPlace::Of::FileName &&
               QFileInfo::exists(folderOf(place.file) + newName +
                                 fileNameOf(place.file).mid(place.range.end));
    });
}

} // namespace

QString whyNotRename(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
                     const ThemeIndex &index)
{
    if (newName.trimmed().isEmpty())
        return QObject::tr("The new name is empty.");
    if (hasAny(newName, u"\"<"))
        return QObject::tr("A name cannot hold a quote or \"<\".");
    const auto isControl = [](QChar c) { return c.unicode() < 32; };
    if (std::any_of(newName.begin(), newName.end(), isControl))
        return QObject::tr("A name cannot hold line breaks or tabs.");
    if (thing.kind == NameKind::Colour && hasAny(newName, u",[]"))
        return QObject::tr(
            "The name of a colour cannot hold \",\", \"[\" or \"]\": they divide lists of colours.");
    if (thing.kind == NameKind::Window && !isFileName(newName))
        return QObject::tr("This cannot be the name of a window: its file is named like it.");
    if ((thing.kind == NameKind::Image || thing.kind == NameKind::Colour) && newName != newName.trimmed())
        return QObject::tr("The blanks around the new name would not count.");
    // Where nothing defines the old name, its uses may well turn to one that is there.
    const bool isDefined = std::any_of(places.places.begin(), places.places.end(),
                                       [](const FoundPlace &place) { return place.isDefinition; });
    if (newName != thing.name && isDefined && isTaken(thing, newName, places, index))
        return QObject::tr("Another %1 has this name already.").arg(wordFor(thing.kind));
    return {};
}

} // namespace quillmere
