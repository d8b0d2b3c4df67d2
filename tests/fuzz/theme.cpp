#include "Fuzz.h"
#include "files/Files.h"
#include "files/TestFiles.h"
#include "markup/mndIni.h"
#include "theme/ThemeProject.h"

namespace {

QString stripped(QString name)
{
    return StripControlChars(name);
}

QString everyList(const ThemeProject &theme)
{
    QString text;
    for (const ListRows *rows :
         {&theme.lvTheme, &theme.widgets.LvWidget, &theme.widgets.lvWidgetDel, &theme.images.rows,
          &theme.lvColor, &theme.lvFont, &theme.lvKeyGroup, &theme.lvLang})
        text += rowsAsText(rows->rows()) + u'\n';
    return text + theme.widgets.width + theme.fontFile.path() + theme.keymapFile.path() +
           theme.languageList.path() + theme.images.folder();
}

} // namespace

// A theme of any files opens, opens again with the same lists, and gives for each name the first row that has
// it.
void fuzz(const Input &input)
{
    static const TestFiles files({"theme/a.png", "theme/A.xml", "theme/f.ttf"});
    Files disk;
    int part = 0;
    for (const char *name : {"theme", "widget", "image", "color", "i18n", "font", "keymap", "default"})
        files.write(u"theme/%1.xml"_s.arg(QLatin1String(name)), input.bytes(part++));

    ThemeProject theme(disk);
    const QString folder = files.path(u"theme"_s);
    check(theme.LoadTheme(folder) != input.bytes(0).isEmpty(), "opens where there is a theme.xml");
    const QString lists = everyList(theme);
    theme.LoadTheme(folder);
    same(everyList(theme), lists, "opens again the same");
    QHash<QString, QString> images, colours;
    for (const ListRows::Row &row : theme.images.rows.rows())
        images.insert(stripped(row.sub(1)), images.value(stripped(row.sub(1)), row.text));
    for (const ListRows::Row &row : theme.images.rows.rows())
        same(theme.images.GetImg(row.sub(1)), images.value(stripped(row.sub(1))), "finds the first image");
    for (const ListRows::Row &row : theme.lvColor.rows()) {
        if (!colours.contains(stripped(row.sub(1))))
            colours.insert(stripped(row.sub(1)), row.sub(2));
        same(theme.colours.GetColor(row.sub(1)), colours.value(stripped(row.sub(1))),
             "finds the first colour");
    }
}
