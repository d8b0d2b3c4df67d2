#include "naming/Rename.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"

#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

bool hasAny(const QString &name, QStringView units)
{
    return std::any_of(name.begin(), name.end(), [units](QChar c) { return units.contains(c); });
}

constexpr qsizetype kLongestName = 255; // bytes, in most file systems
constexpr QStringView kDevices[] = {u"con", u"prn", u"aux", u"nul"};

// What some systems take for a device whatever its ending is.
bool isDevice(const QString &name)
{
    const QString stem = name.section(u'.', 0, 0).trimmed().toLower();
    if (std::find(std::begin(kDevices), std::end(kDevices), stem) != std::end(kDevices))
        return true;
    return stem.size() == 4 && (stem.startsWith(u"com") || stem.startsWith(u"lpt")) && stem[3] >= u'1' &&
           stem[3] <= u'9';
}

bool isTaken(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
             const ThemeIndex &index)
{
    if (!thing.kind)
        return places.taken.contains(newName);
    if (index.isDefined(*thing.kind, newName))
        return true;
    if (thing.kind != NameKind::Window)
        return false;
    // Where letter case does not matter, windows of one name would share a file.
    const QStringList others = index.inOtherLetters(NameKind::Window, newName);
    if (index.isUsed(NameKind::Window, newName) || others.size() > others.count(thing.name))
        return true;
    // The file may be there although no window is named so.
    return std::any_of(places.places.begin(), places.places.end(), [&](const FoundPlace &place) {
        if (place.of != FoundPlace::Of::FileName)
            return false;
        const QString there =
            findFile(folderOf(place.file) + newName + fileNameOf(place.file).mid(place.range.end));
        return !there.isEmpty() && !isSameFile(there, place.file);
    });
}

} // namespace

QString whyNotFile(const QString &name)
{
    if (name.trimmed().isEmpty())
        return QObject::tr("The name of the file is empty.");
    if (hasAny(name, u"/\\:*?|<>\"") || name.startsWith(u'.') || name.endsWith(u'.') ||
        name != name.trimmed())
        return QObject::tr("A file cannot have this name.");
    if (isDevice(name))
        return QObject::tr("\"%1\" is the name of a device on some systems, and no file can have it.")
            .arg(name);
    if (name.toUtf8().size() > kLongestName)
        return QObject::tr("The name is too long for a file.");
    return {};
}

QString whyNotIn(const Encoding &encoding, const QString &name)
{
    const bool isOneByte =
        encoding.page == CodePage::Windows1252 || encoding.rule == CodePageRule::Windows1252;
    try {
        encodeText(name, encoding.page, isOneByte ? CodePageRule::Windows1252 : encoding.rule);
    } catch (const RunTimeError &) {
        return QObject::tr("The catalogue is in %1, which lacks a letter of this name.")
            .arg(codePageName(isOneByte ? CodePage::Windows1252 : CodePage::Utf8));
    }
    return {};
}

QString whyNotName(std::optional<NameKind> kind, const QString &name)
{
    if (name.trimmed().isEmpty())
        return QObject::tr("The new name is empty.");
    if (hasAny(name, u"\"<"))
        return QObject::tr("A name cannot hold a quote or \"<\".");
    const auto isControl = [](QChar c) { return c.unicode() < 32; };
    if (std::any_of(name.begin(), name.end(), isControl))
        return QObject::tr("A name cannot hold line breaks or tabs.");
    if (kind == NameKind::Colour && hasAny(name, u",[]"))
        return QObject::tr(
            "The name of a colour cannot hold \",\", \"[\" or \"]\": they divide lists of colours.");
    if (kind == NameKind::Window && !whyNotFile(name + u".xml").isEmpty())
        return QObject::tr("A window cannot have this name, because its file has the same.");
    const bool isClosedUp = kind == NameKind::Image || kind == NameKind::Colour || kind == NameKind::Language;
    if (kind != NameKind::Language && isClosedUp && name != name.trimmed())
        return QObject::tr("A name cannot begin or end with a blank.");
    if (isClosedUp && (name.contains(u'>') || name.contains(u" =") || name.contains(u"= ")))
        return QObject::tr("The catalogue cannot hold \">\" in a name, or a blank beside \"=\".");
    return {};
}

QString whyNotRename(const NamedThing &thing, const QString &newName, const FoundPlaces &places,
                     const ThemeIndex &index)
{
    if (const QString why = whyNotName(thing.kind, newName); !why.isEmpty())
        return why;
    // Where nothing defines the old name, its uses may well turn to one that is there.
    const bool isDefined = std::any_of(places.places.begin(), places.places.end(),
                                       [](const FoundPlace &place) { return place.isDefinition; });
    if (newName != thing.name && isDefined && isTaken(thing, newName, places, index))
        return QObject::tr("Another %1 has this name already.").arg(wordFor(thing.kind));
    return {};
}

} // namespace quillmere
