#include "checks/PictureStore.h"

#include "checks/Parallel.h"
#include "files/Paths.h"

#include <QFileInfo>
#include <QHashFunctions>
#include <QRandomGenerator>

namespace quillmere {

namespace {

// A cryptographic hash would take longer than reading the file does. The seed is another one each time the
// program starts, so nobody can prepare two pictures that look the same to it.
PictureMark markOf(const QByteArray &bytes)
{
    static const std::array<quint64, 2> seeds = {QRandomGenerator::system()->generate64(),
                                                 QRandomGenerator::system()->generate64()};
    PictureMark mark;
    for (size_t i = 0; i < seeds.size(); ++i)
        mark[i] = qHashBits(bytes.constData(), size_t(bytes.size()), seeds[i]);
    mark[0] |= 1; // it is known
    return mark;
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
    QString inTheme(const QString &path, bool isLink)
    {
        QString real;
        if (isLink) {
            real = QFileInfo(path).canonicalFilePath();
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
    {
        const std::lock_guard lock(m_mutex);
        m_known.reserve(paths.size());
    }
    inParallel(paths.size(), stop, [&](qsizetype i) {
        const QString &path = paths.at(i);
        if (path.isEmpty())
            return;
        const FileState state = stateOf(path);
        each[i] = factsOf(folders.inTheme(path, state.isLink), state);
    });
    return facts;
}

PictureFacts PictureStore::factsOf(const QString &inTheme, const FileState &state)
{
    PictureFacts facts;
    facts.bytes = state.bytes;
    if (inTheme.isEmpty())
        return facts;
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_known.constFind(inTheme);
        if (known != m_known.constEnd() && known->changed == state.changed &&
            known->facts.bytes == facts.bytes)
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
    m_known.insert(inTheme, {state.changed, facts});
    return facts;
}

} // namespace quillmere
