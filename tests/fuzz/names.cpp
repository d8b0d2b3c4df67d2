#include "Fuzz.h"
#include "files/TestFiles.h"
#include "markup/mndIni.h"
#include "naming/FoundPlaces.h"
#include "theme/ThemeIndex.h"

// Every definition and use is found again by its text, at its line and column, and an index that is brought
// up to date says what a new one says. The parts are the files of a theme, then new texts for the first
// window and the images.
void fuzz(const Input &input)
{
    static const TestFiles files;
    int part = 0;
    files.write(
        u"theme/theme.xml"_s,
        "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image><file_color>"
        "color.xml</file_color><file_i18n>i18n.xml</file_i18n><file_font>font.xml</file_font></config>");
    files.write(u"theme/widget.xml"_s, "<widget class=\"window\" name=\"a\"/>");
    files.write(u"theme/i18n.xml"_s, "<language id=\"l\">l.xml</language>");
    for (const char *name : {"a", "image", "color", "font", "l"})
        files.write(u"theme/%1.xml"_s.arg(QLatin1String(name)), input.bytes(part++));
    ThemeSources sources;
    sources.folder = files.path(u"theme"_s);
    ThemeIndex index = *ThemeIndex::build(sources);

    const auto everything = [](const ThemeIndex &names) {
        QString text;
        for (qint32 file = 0; file < names.files().size(); ++file) {
            for (const NamePlace &place : names.placesIn(file))
                text += place.name + u" %1 %2 %3 %4 %5\n"_s.arg(file)
                                         .arg(place.range.start)
                                         .arg(place.range.end)
                                         .arg(place.line)
                                         .arg(names.uses(place.kind, place.name).size() * 1000 +
                                              names.definitions(place.kind, place.name).size());
        }
        for (int kind = 0; kind < kNameKinds; ++kind) {
            for (const QString &name : names.names(NameKind(kind)))
                text += name + u'|' + names.inOtherLetters(NameKind(kind), name).join(u'|') + u'\n';
        }
        return text;
    };
    for (qint32 file = 0; file < index.files().size(); ++file) {
        const QString text = LoadFile(index.files()[file].path);
        for (const NamePlace &place : index.placesIn(file)) {
            if (place.kind == NameKind::Window && place.isDefinition)
                continue;
            check(place.range.start >= 0 && place.range.end <= text.size(), "ranges lie in the text", text);
            QString found = place.range.in(text).toString(), name = place.name;
            same(CloseUpEquals(found), CloseUpEquals(name), "the name stands there");
            check(text.first(place.range.start).count(u'\n') + 1 == place.line, "on its line", text);
            check(place.range.start - text.first(place.range.start).lastIndexOf(u'\n') == place.column,
                  "in its column", text);
            bool isThere = false;
            for (const NamePlace &other : place.isDefinition ? index.definitions(place.kind, place.name)
                                                             : index.uses(place.kind, place.name))
                isThere =
                    isThere || (other.file == file && other.range == place.range && other.row == place.row);
            check(isThere, "it is found by its name", place.name);
        }
        // A rename finds the same places in the files.
        if (const QList<NamePlace> places = index.placesIn(file);
            !places.isEmpty() && places.first().kind != NameKind::Window) {
            const NamePlace &first = places.first();
            const FoundPlaces found = placesOf({first.kind, first.name}, index, sources, {});
            check(found.places.size() == index.definitions(first.kind, first.name).size() +
                                             index.uses(first.kind, first.name).size(),
                  "all of its places are found", first.name);
        }
    }
    const ThemeIndex before = index;
    const QString first = everything(before);
    for (const char *name : {"theme/a.xml", "theme/image.xml"}) {
        const QString path = files.path(QLatin1String(name));
        sources.texts.insert(path, input.text(part));
        index.update(path, input.text(part++));
        same(everything(index), everything(*ThemeIndex::build(sources)), "up to date");
    }
    same(everything(before), first, "a copy stays what it was");
}
