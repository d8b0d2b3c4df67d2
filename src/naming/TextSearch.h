#pragma once

#include "naming/FoundPlaces.h"

#include <stop_token>

namespace quillmere {

// A text looked for in windows. It stands in one line.
struct TextSearch
{
    QString text;
    bool mindsCase = false;
    QString file = {}; // the only one to look in; empty for all windows and style.xml

    bool operator==(const TextSearch &) const = default;
};

constexpr qsizetype kMostListed = 5000; // places; whoever finds more looks for something else

// Every place of the text, without overlap, in the order of the index; the first `most` are listed, the
// others counted. `progress` is told of files, on the thread that calls. Nothing where it was told to stop.
std::optional<FoundPlaces> searchTexts(const TextSearch &search, const ThemeIndex &index,
                                       const ThemeSources &sources, std::stop_token stop = {},
                                       const Progress &progress = {}, qsizetype most = kMostListed);

// Those in one text.
FoundPlaces placesIn(const TextSearch &search, const QString &file, const QString &text);

} // namespace quillmere
