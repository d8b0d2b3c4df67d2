#include "checks/PictureStore.h"

#include "checks/Parallel.h"
#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QFileInfo>
#include <QHashFunctions>
#include <QRandomGenerator>

namespace quillmere {

namespace {

// A cryptographic hash would take longer than reading the file does. The seed is another one each time the
// program starts, so nobody can prepare two pictures that look the same to it.
QByteArray markOf(const QByteArray &bytes)
{
    static const std::array<quint64, 2> seeds = {QRandomGenerator::system()->generate64(),
                                                 QRandomGenerator::system()->generate64()};
    std::array<quint64, 3> mark = {quint64(bytes.size())};
    for (size_t i = 0; i < seeds.size(); ++i)
        mark[i + 1] = qHashBits(bytes.constData(), size_t(bytes.size()), seeds[i]);
    return QByteArray(reinterpret_cast<const char *>(mark.data()), sizeof mark);
}

} // namespace

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
            const std::lock_guard lock(m_mutex);
            auto known = m_folders.constFind(folder);
            if (known == m_folders.constEnd())
                known = m_folders.insert(folder, QFileInfo(folder).canonicalFilePath() + u'/');
            real = *known + fileNameOf(path);
        }
        return real.startsWith(m_root) ? real : QString();
    }

private:
    QString m_root;
    std::mutex m_mutex; // of what follows
    QHash<QString, QString> m_folders;
};

QList<PictureFacts> PictureStore::facts(const QStringList &paths, const QString &themeFolder,
                                        std::stop_token stop)
{
    Folders folders(themeFolder);
    QList<PictureFacts> facts(paths.size());
    PictureFacts *const each = facts.data();
    inParallel(paths.size(), stop, [&](qsizetype i) {
        if (!paths.at(i).isEmpty())
            each[i] = factsOf(paths.at(i), folders.inTheme(paths.at(i)));
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
        facts.mark = markOf(bytes);
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
