#include "gallery/ContentNames.h"

#include "browser/PictureFile.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

bool isPlain(QStringView path)
{
    return std::ranges::all_of(path, [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
               QStringView(u"/._-").contains(c);
    });
}

} // namespace

ContentNames::ContentNames(const QString &themeFolder)
    : m_root(QFileInfo(themeFolder).canonicalFilePath() + u'/')
{
}

QString ContentNames::of(const QString &path)
{
    auto known = m_names.constFind(path);
    if (known == m_names.cend()) {
        known = m_names.insert(path, nameOf(path));
        m_paths.insert(*known, path);
    }
    m_certain = m_certain && !known->isEmpty();
    return *known;
}

bool ContentNames::certain()
{
    return std::exchange(m_certain, true);
}

QString ContentNames::nameOf(const QString &path) const
{
    const QString real = QFileInfo(path).canonicalFilePath();
    if (m_root.size() < 2 || !real.startsWith(m_root) || !isPlain(path) || !isPlain(real))
        return {};
    const std::unique_ptr<QFile> file = openPicture(real);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file || !hash.addData(file.get()))
        return {};
    return u'/' + QLatin1String(hash.result().toHex()) + u'.' + QFileInfo(path).suffix().toLower() + u'.' +
           QFileInfo(real).suffix().toLower();
}

} // namespace quillmere
