#include "Fuzz.h"
#include "catalogues/ColourCatalogue.h"
#include "colorpicker/ColourValue.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "markup/ColourCode.h"

// The same for colours; a code that stands for a colour comes back from its channels, and of digits as many
// may stand as make 255 at most.
void fuzz(const Input &input)
{
    static const TestFiles files;
    const QString name = u"color.xml"_s;
    const QString path = files.write(name, input.bytes(0));
    ListRows rows({QString(), QString(), QString()}, ListRows::Checks::Yes);
    Files disk;
    disk.backups().setFolder(files.path(u"backup"_s));
    ColourCatalogue colours(rows);
    colours.LoadColorList(Document::open(disk, path, files.folder()));
    const QString read = rowsAsText(rows.rows());
    bool plain = true;
    for (const ListRows::Row &row : rows.rows()) {
        plain = plain && !holdsAny(row.sub(1), u">=") && !row.sub(2).contains(u'=');
        if (const auto channels = channelsOf(row.sub(2))) {
            same(colourCode(*channels).mid(1), row.sub(2).mid(1).toUpper(), "code of the channels");
            check(channelsOf(colourValue(*channels)) == *channels, "channels of the value");
        }
    }
    colours.save(disk);
    const QByteArray written = files.read(name);
    colours.LoadColorList(Document::open(disk, path, files.folder()));
    if (plain) {
        same(rowsAsText(rows.rows()), read, "what is written is read");
        colours.save(disk);
        check(files.read(name) == written, "written again the same", read);
    }
    QDir(disk.backups().folder()).removeRecursively();

    const QString digits = input.text(1);
    const QString valid = digits.left(validLength(digits));
    check(channelValue(valid) <= 255 && validLength(valid) == valid.size(), "valid digits", digits);
}
