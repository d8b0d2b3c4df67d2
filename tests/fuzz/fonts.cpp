#include "Fuzz.h"
#include "catalogues/FontCatalogue.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "markup/LiteralTwins.h"
#include "preview/PreviewPage.h"

// A row a font element, with its four fields.
void fuzz(const Input &input)
{
    static const TestFiles files;
    Files disk;
    const QString path = files.write(u"font.xml"_s, input.bytes(0));
    ListRows rows(QStringList(5));
    LoadFontList(rows, Document::open(disk, path));
    QList<ListRows::Row> expected;
    QString size;
    bool found = false;
    for (const QString &piece :
         input.text(0).split(u"<font>"_s, Qt::KeepEmptyParts, Qt::CaseInsensitive).mid(1)) {
        QStringList fields;
        for (const char *field : {"name", "file", "size", "style"})
            fields.append(twins::splitField(piece, u"<%1>"_s.arg(QLatin1String(field)),
                                            u"</%1>"_s.arg(QLatin1String(field)), 1, 0));
        if (fields[3].isEmpty())
            fields[3] = u"normal"_s;
        if (!found && fields[0] == u"font_prog") {
            size = fields[2];
            found = true;
        }
        expected.append({QString(), fields});
    }
    same(rowsAsText(rows.rows()), rowsAsText(expected), "a row a font");
    same(defaultFontSize(rows), size, "default size");
}
