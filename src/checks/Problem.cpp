#include "checks/Problem.h"

#include "checks/WindowReport.h"

#include <algorithm>
#include <compare>
#include <map>
#include <utility>
#include <vector>

namespace quillmere {

namespace {

// By what problems are sorted, and where they stood.
struct Place
{
    qint32 file, line, column, row;
    Rule rule;
    qint32 number;

    auto operator<=>(const Place &) const = default;
};

std::vector<Place> placesOf(const QList<Problem> &problems)
{
    // The files are few and their paths long, so these are compared once.
    std::map<QString, qint32> files;
    for (const Problem *before = nullptr; const Problem &each : problems) {
        if (!before || before->file != each.file)
            files.emplace(each.file, 0);
        before = &each;
    }
    qint32 next = 0;
    for (auto &[path, number] : files)
        number = next++;
    std::vector<Place> places;
    places.reserve(size_t(problems.size()));
    auto last = files.end();
    for (const Problem &each : problems) {
        if (last == files.end() || last->first != each.file)
            last = files.find(each.file);
        places.push_back({last->second, each.line, each.column, each.row, each.rule, qint32(places.size())});
    }
    return places;
}

} // namespace

// A theme may have tens of thousands of names that nothing uses, so what follows from them is not kept.
QString Problem::message() const
{
    if (const QString said = text(); !said.isEmpty())
        return said;
    switch (rule) {
    case Rule::UnusedImage:
        return u"Unused image " + quoted(name) + QStringLiteral(" (%1 bytes)").arg(bytes);
    case Rule::UnusedColour:
        return u"Unused colour " + quoted(name);
    case Rule::UnusedFont:
        return u"Unused font " + quoted(name);
    case Rule::UnusedString:
        return u"Unused string " + quoted(name);
    default:
        return {};
    }
}

// In their own list, round after round of those that change places: there may be many.
void sortByPlace(QList<Problem> &problems)
{
    std::vector<Place> places = placesOf(problems);
    std::sort(places.begin(), places.end());
    Problem *const all = problems.data();
    for (qint32 first = 0; first < qint32(places.size()); ++first) {
        if (places[size_t(first)].number == first)
            continue;
        Problem held = std::move(all[first]);
        qint32 to = first;
        for (qint32 from = places[size_t(to)].number; from != first; from = places[size_t(to)].number) {
            all[to] = std::move(all[from]);
            places[size_t(to)].number = to;
            to = from;
        }
        all[to] = std::move(held);
        places[size_t(to)].number = to;
    }
}

} // namespace quillmere
