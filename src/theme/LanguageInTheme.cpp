#include "theme/LanguageInTheme.h"

#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "i18n/LanguageCatalogue.h"
#include "theme/ThemeConfig.h"

namespace quillmere {

namespace {

constexpr qint64 kMostBytes = 1024 * 1024; // of a file that names others

QString textOf(const QString &path)
{
    const auto bytes = LoadBytes(path, {}, kMostBytes);
    return bytes ? decodeText(*bytes).text : QString();
}

} // namespace

QString languageFileIn(const QString &themeFolder, const QString &id)
{
    try {
        for (const ConfigEntry &entry : configEntries(textOf(joinPath(themeFolder, u"theme.xml")))) {
            if (entry.name != u"file_i18n")
                continue;
            const QString path = joinPath(themeFolder, u"") + withOwnSeparators(entry.value);
            Document catalogue;
            catalogue.setText(textOf(path));
            ListRows languages = makeLanguageRows();
            LoadLanguageList(languages, catalogue, folderOf(path).toString());
            for (const ListRows::Row &language : languages.rows()) {
                if (language.sub(1).compare(id, Qt::CaseInsensitive) == 0)
                    return findFile(language.text);
            }
        }
    } catch (const RunTimeError &) {
        // Nobody has asked for this theme.
    }
    return {};
}

} // namespace quillmere
