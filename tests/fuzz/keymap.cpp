#include "Fuzz.h"
#include "catalogues/KeymapCatalogue.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "markup/LiteralTwins.h"

namespace {

QStringList pieces(const QString &text, const char16_t *separator)
{
    return text.split(QString::fromUtf16(separator), Qt::KeepEmptyParts, Qt::CaseInsensitive).mid(1);
}

QString field(const QString &text, const char16_t *from, const char16_t *to)
{
    return twins::splitField(text, QString::fromUtf16(from), QString::fromUtf16(to), 1, 0);
}

} // namespace

// The groups and the keys of one group, element by element.
void fuzz(const Input &input)
{
    static const TestFiles files;
    Files disk;
    const QString path = files.write(u"keymap.xml"_s, input.bytes(0)), name = input.text(1);
    if (hasSurrogates(name))
        return;
    const QString text = twins::closeUpEquals(input.text(0));
    ListRows groups({QString(), QString()}), keys({QString(), QString()});
    Document keymap = Document::open(disk, path);
    LoadKeymapList(groups, keymap);
    ShowKeyGroup(keys, keymap, name);
    QList<ListRows::Row> expectedGroups, expectedKeys;
    for (const QString &item : pieces(text, u"<item ")) {
        if (item.contains(u"group=\"", Qt::CaseInsensitive))
            expectedGroups.append({field(item, u"display=\"", u"\""), {field(item, u"group=\"", u"\"")}});
    }
    for (const QString &group : pieces(text, u"<group ")) {
        if (!group.contains(QString(u"name=\"" + name + u'"'), Qt::CaseInsensitive))
            continue;
        for (const QString &key : pieces(group, u"<key ")) {
            if (key.contains(u"name=\""))
                expectedKeys.append({field(key, u"name=\"", u"\""), {field(key, u">", u"</")}});
        }
        break;
    }
    same(rowsAsText(groups.rows()), rowsAsText(expectedGroups), "the groups");
    same(rowsAsText(keys.rows()), rowsAsText(expectedKeys), "the keys");
}
