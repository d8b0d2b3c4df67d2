#include "theme/ReceiverParts.h"

#include "browser/FontFamily.h"
#include "files/Paths.h"
#include "files/TextFile.h"
#include "receiver/StringTable.h"
#include "theme/ThemeProject.h"

#include <QHash>

namespace quillmere {

ReceiverParts receiverParts(const ThemeProject &theme)
{
    ReceiverParts parts;
    parts.theme.picture = theme.images.lookup();
    parts.theme.colour = theme.colours.lookup();
    QHash<QString, ReceiverTheme::Font> fonts;
    const QString folder = folderOf(theme.fontFile.path()).toString();
    for (const ListRows::Row &row : theme.lvFont.rows()) {
        if (fonts.contains(row.sub(1)))
            continue;
        const QString path =
            row.sub(2).isEmpty() ? QString() : findFile(folder + withOwnSeparators(row.sub(2)));
        const QString family = path.isEmpty() ? path : fontFamilyOf(path);
        fonts.insert(row.sub(1), {family, row.sub(3), row.sub(4)});
        if (!family.isEmpty())
            parts.fonts.append({family, path});
    }
    parts.theme.font = [fonts](const QString &name) {
        const auto font = fonts.constFind(name);
        return font == fonts.cend() ? fonts.value(QStringLiteral("font_prog")) : *font;
    };
    return parts;
}

namespace {

std::function<QString(const QString &source)> translationBy(const ListRows &strings)
{
    StringTable translations;
    for (const ListRows::Row &row : strings.rows())
        translations.add(row.sub(1), row.sub(2));
    return [translations](const QString &source) { return translations.of(source); };
}

} // namespace

std::function<QString(const QString &source)> translationBy(const QString &languageFile)
{
    ListRows strings = makeStringRows();
    OpenLgXml(strings, LoadFile(languageFile));
    return translationBy(strings);
}

QString languageFileOf(const ThemeProject &theme, const QString &languageName)
{
    for (const ListRows::Row &row : theme.lvLang.rows()) {
        if (row.sub(1) == languageName)
            return row.text;
    }
    return {};
}

QStringList languageNames(const ThemeProject &theme)
{
    QStringList names;
    for (const ListRows::Row &row : theme.lvLang.rows())
        names.append(row.sub(1));
    return names;
}

std::function<QString(const QString &source)> translationOf(const ThemeProject &theme,
                                                            const QString &languageName)
{
    const QString path = languageFileOf(theme, languageName);
    if (path.isEmpty())
        return {};
    const bool isOpen =
        !theme.language.document.path().isEmpty() && isSameFile(theme.language.document.path(), path);
    return isOpen ? translationBy(theme.LvBhs) : translationBy(path);
}

} // namespace quillmere
