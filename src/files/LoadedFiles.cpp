#include "files/LoadedFiles.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillmere {

namespace {

QString keyOf(const QString &path)
{
    return QDir::cleanPath(QFileInfo(withOwnSeparators(path)).absoluteFilePath());
}

QString resolved(const QString &path)
{
    const QString existing = findFile(path);
    return existing.isEmpty() ? keyOf(path) : QFileInfo(existing).canonicalFilePath();
}

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

QByteArray fingerprintOf(const QString &path)
{
    try {
        const std::optional<QByteArray> bytes = LoadBytes(path);
        return bytes ? hashOf(*bytes) : QByteArray();
    } catch (const RunTimeError &) {
        return QByteArrayLiteral("not to be read"); // and so unlike anything that was
    }
}

DecodedText LoadedFiles::load(const QString &path, CodePageRule rule, const Progress &progress)
{
    const std::optional<QByteArray> bytes = LoadBytes(path, progress);
    m_files.insert(keyOf(path), {resolved(path), bytes ? hashOf(*bytes) : QByteArray()});
    return decodeText(bytes.value_or(QByteArray()), rule);
}

QByteArray LoadedFiles::fingerprint(const QString &path) const
{
    return m_files.value(keyOf(path)).fingerprint;
}

void LoadedFiles::noteLoadedAs(const QString &path, const QByteArray &fingerprint)
{
    const auto loaded = m_files.find(keyOf(path));
    if (loaded != m_files.end())
        loaded->fingerprint = fingerprint;
}

bool LoadedFiles::changedOutside(const QString &path) const
{
    const auto loaded = m_files.constFind(keyOf(path));
    return loaded != m_files.constEnd() && loaded->fingerprint != fingerprintOf(path);
}

QString LoadedFiles::savingQuestion(const QString &question, const QString &path) const
{
    // Where the file is gone, nothing is written over.
    return changedOutside(path) && !fingerprintOf(path).isEmpty()
               ? QString(question + u"\nThe file was changed by another program.")
               : question;
}

void LoadedFiles::noteWritten(const QString &path, const std::optional<QByteArray> &bytes)
{
    const QString file = resolved(path);
    const QString key = keyOf(path);
    for (auto loaded = m_files.begin(); loaded != m_files.end(); ++loaded) {
        if (loaded->file == file || loaded.key() == key)
            *loaded = {file, bytes ? hashOf(*bytes) : QByteArray()};
    }
}

} // namespace quillmere
