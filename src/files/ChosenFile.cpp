#include "files/ChosenFile.h"

#include "files/FailedStep.h"
#include "files/Files.h"
#include "files/WholeFile.h"

#include <QFileInfo>

namespace quillmere {

void writeChosen(Files &files, const QString &path, const QByteArray &bytes)
{
    const QFileInfo old(path);
    if (old.exists() && !old.isFile())
        throwFailed("write", path, QStringLiteral("it is not a file"));
    const QStringList copies =
        old.exists() ? files.backups().backUp({old.canonicalFilePath()}) : QStringList();
    if (const QString reason = WholeFile(path).writeAll(bytes); !reason.isEmpty())
        throwFailed("write", path, reason);
    files.backups().prune(copies);
}

} // namespace quillmere
