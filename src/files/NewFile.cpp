#include "files/NewFile.h"

#include "files/FailedStep.h"
#include "files/Paths.h"
#include "files/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <filesystem>

namespace quillmere {

QString writeNewFile(const QString &path, QByteArrayView bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return file.errorString();
    QString reason;
    while (reason.isEmpty() && !bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            reason = file.errorString();
        else
            bytes = bytes.sliced(written);
    }
    if (reason.isEmpty())
        reason = keptOnDisk(file);
    file.close();
    if (!reason.isEmpty())
        file.remove();
    return reason;
}

namespace {

// The folders above this one that are not there, the outermost last.
QStringList missingAbove(const QString &folder)
{
    QStringList missing;
    QString above = QFileInfo(folder).path();
    for (; !QFileInfo::exists(above) && above != QFileInfo(above).path(); above = QFileInfo(above).path())
        missing.append(above);
    return missing;
}

void writeBelow(const QString &folder, const QList<NewFile> &files)
{
    for (const NewFile &file : files) {
        const QString path = folder + u'/' + file.name;
        QString reason = makeFolder(QFileInfo(path).path());
        if (reason.isEmpty())
            reason = writeNewFile(path, file.bytes);
        if (!reason.isEmpty())
            throwFailed("write", file.name, reason);
    }
}

// The system's reason where it fails. One that is there and empty gives way, any other does not.
QString renameFolder(const QString &from, const QString &to)
{
#ifndef Q_OS_UNIX
    QDir().rmdir(to);
#endif
    std::error_code error;
    std::filesystem::rename(QFileInfo(from).filesystemFilePath(), QFileInfo(to).filesystemFilePath(), error);
    return error ? qt_error_string(error.value()) : QString();
}

} // namespace

QString whyNotNewFolder(const QString &folder)
{
    const QFileInfo there(folder);
    if (!there.isAbsolute())
        return QObject::tr("Type the whole path of the folder.");
    if (there.isSymLink() && !there.exists())
        return QObject::tr("The folder is a link that leads nowhere.");
    if (there.exists() && !there.isDir())
        return QObject::tr("A file of this name exists.");
    if (there.exists() &&
        !QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        return QObject::tr("This folder is not empty.");
    return {};
}

void writeNewFolder(const QString &folder, const QList<NewFile> &files)
{
    if (const QString why = whyNotNewFolder(folder); !why.isEmpty())
        throwFailed("make", folder, why.chopped(1));
    const QFileInfo there(QDir::cleanPath(folder));
    const QString target = there.exists() ? there.canonicalFilePath() : there.filePath();
    const QStringList missing = missingAbove(target);
    const QString number = QString::number(QRandomGenerator::system()->generate64(), 36);
    const QString beside = joinPath(QFileInfo(target).path(), QString(u".unfinished-" + number));
    auto takeBack = qScopeGuard([&] {
        QDir(beside).removeRecursively();
        for (const QString &made : missing)
            QDir().rmdir(made);
    });
    if (const QString reason = makeFolder(beside); !reason.isEmpty())
        throwFailed("make", folder, reason);
    writeBelow(beside, files);
    if (const QString reason = renameFolder(beside, target); !reason.isEmpty())
        throwFailed("make", folder, reason);
    takeBack.dismiss();
}

} // namespace quillmere
