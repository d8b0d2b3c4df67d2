#include "keeping/UnsavedTexts.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/WholeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace quillmere {

namespace {

QString chosenRecoveryFolder;

const QString kEnding = QStringLiteral(".txt");

// What the names of all files of a document begin with.
QString prefixOf(const QString &document)
{
    const QString path =
        document.isEmpty() ? document : QDir::cleanPath(QFileInfo(document).absoluteFilePath());
    return QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QByteArray toBytes(const QString &text)
{
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    return QByteArray(reinterpret_cast<const char *>(marked.constData()), marked.size() * 2);
}

// The text and what it was made from.
std::optional<UnsavedText> fromBytes(const QByteArray &bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::copy_n(bytes.constData(), text.size() * 2, reinterpret_cast<char *>(text.data()));
    const qsizetype end = text.indexOf(u'\n');
    if (!text.startsWith(QChar(QChar::ByteOrderMark)) || end < 0)
        return {};
    const QStringView base = QStringView(text).first(end).mid(1).split(u' ').first();
    return UnsavedText{{}, {}, text.mid(end + 1), QByteArray::fromHex(base.toLatin1())};
}

} // namespace

QList<UnsavedText> unsavedTextsOf(const QString &document)
{
    const QDir folder(recoveryFolder());
    const QFileInfoList files =
        folder.entryInfoList({QString(prefixOf(document) + u"-*" + kEnding)}, QDir::Files | QDir::NoSymLinks);
    QList<UnsavedText> kept;
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        if (auto text = fromBytes(file.readAll())) {
            text->file = info.filePath();
            text->time = info.lastModified();
            kept.append(*text);
        }
    }
    std::sort(kept.begin(), kept.end(),
              [](const UnsavedText &a, const UnsavedText &b) { return a.time > b.time; });
    return kept;
}

QString newUnsavedFile(const QString &document)
{
    const QString start = joinPath(recoveryFolder(), QString(prefixOf(document) + u'-'));
    QDateTime time = QDateTime::currentDateTime();
    QString file;
    do {
        file = start + time.toString(u"yyyyMMdd-hhmmss-zzz") + kEnding;
        time = time.addMSecs(1);
    } while (QFileInfo::exists(file));
    return file;
}

void keepUnsaved(const QString &file, const QString &document, const QString &text, const QByteArray &base)
{
    // The path is there for a person who looks into the folder; a line break in it would begin the text.
    const QByteArray bytes = toBytes(QString::fromLatin1(base.toHex()) + u' ' +
                                     QString(document).replace(u'\n', u' ') + u'\n' + text);
    QString reason = makeFolder(QFileInfo(file).path());
    if (reason.isEmpty())
        reason = WholeFile(file).writeAll(bytes);
    if (!reason.isEmpty())
        throwFailed("keep the unsaved text in", file, reason);
}

QString recoveryFolder()
{
    if (!chosenRecoveryFolder.isEmpty())
        return chosenRecoveryFolder;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return joinPath(data, u"Quillmere/recovery");
}

void setRecoveryFolder(const QString &folder)
{
    chosenRecoveryFolder = folder;
}

} // namespace quillmere
