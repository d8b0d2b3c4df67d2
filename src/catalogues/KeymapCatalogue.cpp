#include "catalogues/KeymapCatalogue.h"

#include "markup/Matching.h"
#include "markup/mndIni.h"
#include "rows/ListRows.h"

namespace quillmere {

void LoadKeymapList(ListRows &lvKeyGroup, const Document &file)
{
    lvKeyGroup.clear();
    QString text = file.text();
    if (text.isEmpty())
        return;
    CloseUpEquals(text);
    QList<ListRows::Row> groups;
    // What stands before the first element is none.
    for (QStringView piece : splitIgnoringCase(text, u"<item ").sliced(1)) {
        if (containsIgnoringCase(piece, u"group=\""))
            groups.append({SplitField(piece, u"display=\"", u"\"", 1, 0),
                           {SplitField(piece, u"group=\"", u"\"", 1, 0)}});
    }
    lvKeyGroup.assign(std::move(groups));
}

void ShowKeyGroup(ListRows &lvKeyMap, Document &file, const QString &groupName)
{
    lvKeyMap.clear();
    QString text = file.readAgain();
    if (text.isEmpty())
        return;
    CloseUpEquals(text);
    const QString name = u"name=\"" + groupName + u'"';
    for (QStringView group : splitIgnoringCase(text, u"<group ").sliced(1)) {
        if (!containsIgnoringCase(group, name))
            continue;
        QList<ListRows::Row> keys;
        for (QStringView key : splitIgnoringCase(group, u"<key ").sliced(1)) {
            // Unlike the group's, this test minds letter case.
            if (containsExact(key, u"name=\""))
                keys.append({SplitField(key, u"name=\"", u"\"", 1, 0), {SplitField(key, u">", u"</", 1, 0)}});
        }
        lvKeyMap.assign(std::move(keys));
        return;
    }
}

} // namespace quillmere
