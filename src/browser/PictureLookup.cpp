#include "browser/PictureLookup.h"

#include "browser/PictureUrls.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace quillmere {

namespace {

constexpr qsizetype kLongestPath = 32767;

// Letter by letter, as names are compared: the library's own folding of texts makes two letters of one, and
// its way back from code points takes a mark of byte order off the front.
QString folded(const QString &name)
{
    QString folded;
    folded.reserve(name.size());
    const QList<uint> letters = name.toUcs4();
    for (const uint letter : letters)
        folded += QStringView(QChar::fromUcs4(QChar::toCaseFolded(letter)));
    return folded;
}

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

PictureLookup::PictureLookup(const QString &themeFolder)
    : m_given(themeFolder.isEmpty() ? QString() : QDir::cleanPath(QDir::fromNativeSeparators(themeFolder))),
      m_root(themeFolder.isEmpty() ? QString() : QFileInfo(themeFolder).canonicalFilePath()),
      m_rootParts(m_root.split(u'/'))
{
}

// Where the path begins, as near to the root as it says, and the parts that lead on from there.
bool PictureLookup::start(const QString &path, Place &place, QStringList &parts) const
{
    const qsizetype length = m_given.size();
    if (path.size() > length && path[length] == u'/' && isSame(path.first(length), m_given)) {
        place = {0, m_root};
        parts = path.sliced(length).split(u'/', Qt::SkipEmptyParts);
        return true;
    }
    parts = path.split(u'/');
    if (!isSame(parts.takeFirst(), m_rootParts.first()))
        return false;
    parts.removeAll(QString());
    place = {1, {}};
    return true;
}

// One folder further. False where there is none, or none that could lead to the theme.
bool PictureLookup::goInto(Place &place, const QString &name)
{
    if (name == u".")
        return true;
    if (name == u"..") {
        if (place.folder.isEmpty())
            place.above = std::max<qsizetype>(1, place.above - 1);
        else if (place.folder == m_root)
            place = {m_rootParts.size() - 1, {}};
        else
            place.folder.truncate(place.folder.lastIndexOf(u'/'));
        return true;
    }
    if (place.folder.isEmpty()) {
        if (!isSame(name, m_rootParts[place.above]))
            return false;
        if (++place.above == m_rootParts.size())
            place = {0, m_root};
        return true;
    }
    const QString found = entry(place.folder, name, Kind::Folder);
    const QString real = found.isEmpty() ? QString() : QFileInfo(found).canonicalFilePath();
    if (real == m_root || real.startsWith(m_root + u'/'))
        place.folder = real;
    else if (!real.isEmpty() && m_root.startsWith(real + u'/'))
        place = {real.count(u'/') + 1, {}};
    else
        return false;
    return true;
}

QString PictureLookup::entry(const QString &folder, const QString &name, Kind kind)
{
    const auto isThere = [&](const QString &path) {
        const QFileInfo info(path);
        return kind == Kind::File ? info.isFile() : info.isDir();
    };
    const QString exact = folder + u'/' + name;
    if (isThere(exact))
        return exact;
    auto list = m_lists.constFind(folder);
    if (list == m_lists.cend()) {
        QHash<QString, QStringList> names;
        for (const QString &other : QDir(folder).entryList(
                 QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort))
            names[folded(other)].append(other);
        for (QStringList &same : names)
            same.sort();
        list = m_lists.insert(folder, names);
    }
    for (const QString &other : list->value(folded(name))) {
        if (isThere(folder + u'/' + other))
            return folder + u'/' + other;
    }
    return {};
}

QString PictureLookup::admitted(const QUrl &url)
{
    static const QStringList kinds = {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                      QStringLiteral("gif"), QStringLiteral("bmp"), QStringLiteral("webp"),
                                      QStringLiteral("svg"), QStringLiteral("ico")};
    if (m_root.isEmpty() || url.scheme() != QLatin1String(kPictureScheme))
        return {};
    const QString path = QDir::fromNativeSeparators(picturePath(url));
    const bool remote = path.startsWith(u"//") && !m_given.startsWith(u"//");
    if (remote || path.size() > kLongestPath || path.contains(QChar(QChar::Null)) || path.endsWith(u'/'))
        return {};
    Place place;
    QStringList parts;
    if (!start(path, place, parts) || parts.isEmpty())
        return {};
    const QString name = parts.takeLast();
    for (const QString &part : parts) {
        if (!goInto(place, part))
            return {};
    }
    if (place.folder.isEmpty())
        return {};
    const QString file = entry(place.folder, name, Kind::File);
    const QFileInfo real(file.isEmpty() ? QString() : QFileInfo(file).canonicalFilePath());
    return real.filePath().startsWith(m_root + u'/') && real.isFile() &&
                   kinds.contains(real.suffix().toLower())
               ? real.filePath()
               : QString();
}

} // namespace quillmere
