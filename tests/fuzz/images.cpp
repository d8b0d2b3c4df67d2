#include "Fuzz.h"
#include "catalogues/ImageCatalogue.h"
#include "files/FileList.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/TestFiles.h"

// A row an image element; what is written is read again as the same rows, and written again as the same
// bytes, unless a name holds what ends a name or is closed up.
void fuzz(const Input &input)
{
    static const TestFiles files({"a.png", "sub/b.png"});
    const QString folder = files.folder() + separator();
    const QString name = u"image.xml"_s;
    const QString path = files.write(name, input.bytes(0));
    FileList list;
    Files disk;
    disk.backups().setFolder(files.path(u"backup"_s));
    ImageCatalogue images;
    images.LoadImageList(Document::open(disk, path, files.folder()), folder, list);
    const QString read = rowsAsText(images.rows.rows());
    bool plain = true;
    for (const ListRows::Row &row : images.rows.rows()) {
        const QString id = row.sub(1), file = row.text.mid(folder.size());
        check(row.text.startsWith(folder), "path below the folder", row.text);
        check(row.sub(2).isEmpty() || QFileInfo::exists(row.text), "marked where it is there", row.text);
        same(images.rows.sub(images.rowOf(id), 1), id, "finds the row");
        plain = plain && !holdsAny(id, u">=") && !file.contains(u'=') && !file.contains(files.folder());
    }
    images.SaveImageList(disk);
    const QByteArray written = files.read(name);
    images.LoadImageList(Document::open(disk, path, files.folder()), folder, list);
    if (plain) {
        same(rowsAsText(images.rows.rows()), read, "what is written is read");
        images.SaveImageList(disk);
        check(files.read(name) == written, "written again the same", read);
    }
    QDir(disk.backups().folder()).removeRecursively();
}
