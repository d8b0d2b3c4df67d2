#include "Fuzz.h"
#include "files/Files.h"
#include "files/TestFiles.h"

// A file that is loaded and saved stays the same byte for byte; another text is read as it was written, and
// the bytes it replaced come back from the backup folder. Nothing else is left beside the file.
void fuzz(const Input &input)
{
    static const TestFiles files;
    const QByteArray old = input.bytes(0);
    const QString name = u"theme/a.xml"_s;
    const QString path = files.write(name, old);
    Files disk;
    disk.backups().setFolder(files.path(u"backup"_s));

    disk.saveOwn(path, LoadFile(path));
    check(files.read(name) == old, "an untouched file stays as it was", LoadFile(path));
    disk.saveOwn(path, input.text(1));
    same(LoadFile(path), input.text(1), "what is saved is loaded");
    const QList<Version> versions = disk.backups().versionsBelow(files.folder());
    check(versions.size() == 2, "each save makes a copy");
    for (const Version &version : versions) {
        same(version.path, path, "the file of a version");
        disk.restore(path, version.copy, files.folder());
        check(files.read(name) == old, "the old bytes come back", path);
    }
    const QDir::Filters all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
    check(QDir(QFileInfo(path).path()).entryList(all).size() == 1, "nothing is left beside the file");
    QDir(disk.backups().folder()).removeRecursively();
}
