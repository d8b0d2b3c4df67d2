#include "checks/PictureStore.h"

#include "checks/Parallel.h"
#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace quillmere {

// Where paths really lead, with one question a folder.
class PictureStore::Folders
{
public:
    explicit Folders(const QString &themeFolder) : m_root(QFileInfo(themeFolder).canonicalFilePath() + u'/')
    {
    }

    // The path of the file itself, empty where it is not in the theme.
    QString inTheme(const QString &path)
    {
        const QFileInfo info(path);
        QString real;
        if (info.isSymLink()) {
            real = info.canonicalFilePath();
        } else {
            const QString folder = folderOf(path).toString();
            auto known = m_folders.constFind(folder);
            if (known == m_folders.constEnd())
                known = m_folders.insert(folder, QFileInfo(folder).canonicalFilePath() + u'/');
            real = *known + fileNameOf(path);
        }
        return real.startsWith(m_root) ? real : QString();
    }

private:
    QString m_root;
    QHash<QString, QString> m_folders;
};

QList<PictureFacts> PictureStore::facts(const QStringList &paths, const QString &themeFolder,
                                        std::stop_token stop)
{
    Folders folders(themeFolder);
    QStringList real;
    real.reserve(paths.size());
    for (const QString &path : paths)
        real.append(path.isEmpty() ? QString() : folders.inTheme(path));
    QList<PictureFacts> facts(paths.size());
    PictureFacts *const each = facts.data();
    inParallel(paths.size(), stop, [&](qsizetype i) {
        if (!paths.at(i).isEmpty())
            each[i] = factsOf(paths.at(i), real.at(i));
    });
    return facts;
}

PictureFacts PictureStore::factsOf(const QString &path, const QString &inTheme)
{
    const QFileInfo info(inTheme.isEmpty() ? path : inTheme);
    PictureFacts facts;
    facts.bytes = info.size();
    if (inTheme.isEmpty())
        return facts;
    const QDateTime time = info.lastModified();
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_known.constFind(inTheme);
        if (known != m_known.constEnd() && known->time == time && known->facts.bytes == facts.bytes)
            return known->facts;
    }
    QString reason;
    const QByteArray bytes = readRegular(inTheme, kLargestFile, reason);
    if (reason.isEmpty()) {
        facts.hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
        // A drawing has no pixels, and reading one could lead to other files.
        if (inTheme.endsWith(u".svg", Qt::CaseInsensitive)) {
            facts.isReadable = true;
        } else {
            const PictureReading reading = m_reader(bytes);
            facts.size = reading.size;
            facts.isReadable = reading.isReadable;
        }
    }
    const std::lock_guard lock(m_mutex);
    m_known.insert(inTheme, {time, facts});
    return facts;
}

} // namespace quillmere
