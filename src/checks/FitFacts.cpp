#include "checks/FitFacts.h"

#include "checks/Catalogues.h"
#include "checks/FitTexts.h"
#include "theme/ThemeIndex.h"

#include <algorithm>

namespace quillmere {

StringTable translationsOf(const Catalogue &language)
{
    StringTable translations;
    for (const CatalogueRow &row : language.rows)
        translations.add(row.name, row.value);
    return translations;
}

std::vector<ShownText> shownTexts(const TextInRoom &text, const FitFacts &facts)
{
    std::vector<ShownText> shown;
    if (facts.languages.isEmpty())
        shown.push_back({{shownText(text.set.source, {}), text.set.font}, {}});
    for (const FitFacts::Language &language : facts.languages) {
        const auto translation = [&](const QString &source) { return language.translations.of(source); };
        const SetText set{shownText(text.set.source, translation), text.set.font};
        const auto same = std::ranges::find(shown, set, &ShownText::set);
        ShownText &in = same != shown.end() ? *same : shown.emplace_back(ShownText{set, {}});
        in.languages.append(language.name);
    }
    return shown;
}

QList<SetText> textsToMeasure(const ThemeSources &sources, const ThemeIndex &index,
                              const MeasuredTheme &fonts,
                              const std::function<void(qsizetype done, qsizetype all)> &tell)
{
    const Catalogues catalogues(sources, index, {});
    FitFacts facts{fonts, {}};
    for (const IndexedFile &file : catalogues.languages())
        facts.languages.append({catalogues.nameOfLanguage(file), translationsOf(catalogues.language(file))});
    QList<SetText> texts;
    QSet<SetText> known;
    const QList<IndexedFile> &files = index.files();
    for (qsizetype number = 0; number < files.size(); ++number) {
        if (tell)
            tell(number, files.size());
        const IndexedFile &file = files.at(number);
        const std::optional<QString> text =
            file.role == FileRole::Window && file.isReadable ? textOf(sources, file) : std::nullopt;
        if (!text)
            continue;
        for (const TextInRoom &each : textsInRooms(Outline(*text), receiverTheme(fonts))) {
            for (const ShownText &shown : shownTexts(each, facts)) {
                if (known.contains(shown.set))
                    continue;
                known.insert(shown.set);
                texts.append(shown.set);
            }
        }
    }
    return texts;
}

ReceiverTheme receiverTheme(const MeasuredTheme &fonts)
{
    ReceiverTheme theme;
    theme.font = fonts.font;
    return theme;
}

} // namespace quillmere
