#include "naming/TextSearch.h"

#include "files/Paths.h"
#include "markup/Matching.h"
#include "outline/LineStarts.h"

namespace quillmere {

namespace {

void searchIn(FoundPlaces &found, const TextSearch &search, const QString &file, const QString &text,
              qsizetype most, const std::stop_token &stop)
{
    const auto next = [&](qsizetype from) {
        return search.mindsCase ? indexOfExact(text, search.text, from)
                                : indexOfIgnoringCase(text, search.text, from);
    };
    std::optional<LineStarts> lines;
    for (qsizetype at = next(0); at >= 0 && !stop.stop_requested(); at = next(at + search.text.size())) {
        if (found.places.size() >= most) {
            ++found.more;
            continue;
        }
        if (!lines)
            lines.emplace(text);
        const Range range = {qint32(at), qint32(at + search.text.size())};
        found.addText(file, text, range, lines->placeOf(at).line);
    }
}

} // namespace

FoundPlaces placesIn(const TextSearch &search, const QString &file, const QString &text)
{
    FoundPlaces found;
    if (!search.text.isEmpty())
        searchIn(found, search, file, text, kMostListed, {});
    return found;
}

std::optional<FoundPlaces> searchTexts(const TextSearch &search, const ThemeIndex &index,
                                       const ThemeSources &sources, std::stop_token stop,
                                       const Progress &progress, qsizetype most)
{
    FoundPlaces found;
    if (search.text.isEmpty())
        return found;
    const auto searchFile = [&](const IndexedFile &file) {
        if (const std::optional<QString> text = textOf(sources, file))
            searchIn(found, search, file.path, *text, most, stop);
    };
    if (!search.file.isEmpty())
        searchFile({search.file, findFile(search.file)});
    QSet<QString> seen;
    for (qsizetype number = 0; search.file.isEmpty() && number < index.files().size(); ++number) {
        if (stop.stop_requested())
            return std::nullopt;
        tell(progress, number, index.files().size());
        const IndexedFile &file = index.files().at(number);
        const bool isWindow = file.role == FileRole::Window || file.role == FileRole::Style;
        if (!isWindow || seen.contains(file.path))
            continue;
        seen.insert(file.path); // a file may have several roles
        searchFile(file);
    }
    if (stop.stop_requested())
        return std::nullopt;
    return found;
}

} // namespace quillmere
