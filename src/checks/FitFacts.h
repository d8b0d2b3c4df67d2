#pragma once

#include "browser/MeasuredText.h"
#include "outline/Outline.h"
#include "receiver/ReceiverPage.h"
#include "receiver/StringTable.h"

#include <QList>
#include <QSet>

#include <functional>
#include <memory>

namespace quillmere {

class Catalogues;
struct Catalogue;
class ThemeIndex;
struct ThemeSources;

// The fonts of a theme, and how large its texts are in them. What has not been measured, be it that it has
// changed since, is not in the measures, and nothing is said of it.
struct MeasuredTheme
{
    std::function<ReceiverTheme::Font(const QString &name)> font;
    std::shared_ptr<const TextMeasures> measures;
};

// What the rule about texts that fit has to know.
struct FitFacts
{
    struct Language
    {
        QString name;
        StringTable translations;
    };

    MeasuredTheme measured;
    QList<Language> languages;
};
StringTable translationsOf(const Catalogue &language);

// The texts of all windows as they are shown in all languages, each once. Nothing is measured yet, so `fonts`
// are all that it takes. `tell` is called now and then, and may throw.
QList<SetText> textsToMeasure(const ThemeSources &sources, const ThemeIndex &index,
                              const MeasuredTheme &fonts,
                              const std::function<void(qsizetype done, qsizetype all)> &tell = {});

} // namespace quillmere
