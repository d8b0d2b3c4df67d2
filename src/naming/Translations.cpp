#include "naming/Translations.h"

#include "files/Paths.h"

#include <QFileInfo>

#include <algorithm>

namespace quillmere {

Translations Translations::read(const ThemeSources &sources, const QList<Language> &languages,
                                const Translations &before)
{
    Translations read;
    for (const Language &language : languages) {
        const auto rows = sources.rows.constFind(language.path);
        Read next = {language, {}, 0, {}};
        auto strings = std::make_shared<Strings>();
        // Where a string stands twice, the first one counts.
        const auto add = [&strings](const QString &string, const QString &translation) {
            if (!strings->contains(string))
                strings->insert(string, translation);
        };
        if (rows != sources.rows.constEnd()) {
            for (const ListRows::Row &row : *rows)
                add(row.sub(1), row.sub(2));
        } else {
            const IndexedFile file = {language.path, findFile(language.path)};
            const QFileInfo info(file.found);
            next.time = info.lastModified();
            next.size = info.size();
            const auto known =
                std::find_if(before.m_languages.begin(), before.m_languages.end(), [&](const Read &other) {
                    return other.language.path == language.path && other.time == next.time &&
                           other.size == next.size && next.time.isValid();
                });
            if (known != before.m_languages.end()) {
                next.strings = known->strings;
                read.m_languages.append(next);
                continue;
            }
            const QString text = textOf(sources, file).value_or(QString());
            for (const CatalogueEntry &entry : catalogueEntries(FileRole::Language, text))
                add(entry.name.in(text).toString(), entry.value.in(text).toString());
        }
        next.strings = std::move(strings);
        read.m_languages.append(next);
    }
    return read;
}

QList<Translations::Said> Translations::of(const QString &string) const
{
    QList<Said> said;
    for (const Read &each : m_languages)
        said.append({each.language.name, each.strings->value(string)});
    return said;
}

QString Translations::shortly(const QString &string) const
{
    QString same;
    for (const Read &each : m_languages) {
        const QString text = each.strings->value(string);
        if (!text.isEmpty() && text != string)
            return text;
        if (!text.isEmpty())
            same = text;
    }
    return same;
}

} // namespace quillmere
