#include "files/LoadedFiles.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace quillmere {

namespace {

struct Loaded
{
    QString file; // after all links, as SaveFile names it; the asked path where there was no file
    QByteArray fingerprint;
};

// By the path that was asked for, without "." and "..".
QHash<QString, Loaded> &loadedFiles()
{
    static QHash<QString, Loaded> files;
    return files;
}

QString keyOf(const QString &path)
{
    return QDir::cleanPath(QFileInfo(withOwnSeparators(path)).absoluteFilePath());
}

QString resolved(const QString &path)
{
    const QString existing = findFile(path);
    return existing.isEmpty() ? keyOf(path) : QFileInfo(existing).canonicalFilePath();
}

QByteArray fingerprint(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

struct LoadedForNow::Before
{
    QHash<QString, Loaded> files;
};

LoadedForNow::LoadedForNow() : m_before(std::make_unique<Before>(Before{loadedFiles()})) {}

LoadedForNow::~LoadedForNow()
{
    if (!m_kept)
        loadedFiles() = m_before->files;
}

DecodedText LoadForEditing(const QString &path, CodePageRule rule, const Progress &progress)
{
    const std::optional<QByteArray> bytes = LoadBytes(path, progress);
    loadedFiles().insert(keyOf(path), {resolved(path), bytes ? fingerprint(*bytes) : QByteArray()});
    return decodeText(bytes.value_or(QByteArray()), rule);
}

QByteArray fingerprintOf(const QString &path)
{
    try {
        const std::optional<QByteArray> bytes = LoadBytes(path);
        return bytes ? fingerprint(*bytes) : QByteArray();
    } catch (const RunTimeError &) {
        return QByteArrayLiteral("not to be read"); // and so unlike anything that was
    }
}

QByteArray loadedFingerprint(const QString &path)
{
    return loadedFiles().value(keyOf(path)).fingerprint;
}

void noteLoadedAs(const QString &path, const QByteArray &fingerprint)
{
    const auto loaded = loadedFiles().find(keyOf(path));
    if (loaded != loadedFiles().end())
        loaded->fingerprint = fingerprint;
}

bool changedOutside(const QString &path)
{
    const auto loaded = loadedFiles().constFind(keyOf(path));
    return loaded != loadedFiles().constEnd() && loaded->fingerprint != fingerprintOf(path);
}

QString savingQuestion(const QString &question, const QString &path)
{
    // Where the file is gone, nothing is written over.
    return changedOutside(path) && !fingerprintOf(path).isEmpty()
               ? QString(question + u"\nThe file was changed by another program.")
               : question;
}

void noteWritten(const QString &path, const std::optional<QByteArray> &bytes)
{
    const QString file = resolved(path);
    const QString key = keyOf(path);
    for (auto loaded = loadedFiles().begin(); loaded != loadedFiles().end(); ++loaded) {
        if (loaded->file == file || loaded.key() == key)
            *loaded = {file, bytes ? fingerprint(*bytes) : QByteArray()};
    }
}

} // namespace quillmere
