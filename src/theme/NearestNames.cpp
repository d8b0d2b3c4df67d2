#include "theme/NearestNames.h"

#include "markup/Matching.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillmere {

namespace {

constexpr qsizetype kLongest = 200; // letters; nobody mistypes a name as long as this
constexpr int kMostApart = 3;
constexpr qsizetype kLettersAFault = 3; // of a name, for each that may be wrong

} // namespace

// Row by row, as far from the diagonal as `most` allows. A swap looks back two rows.
int lettersApart(QStringView a, QStringView b, int most)
{
    if (a.size() > b.size())
        std::swap(a, b);
    if (b.size() - a.size() > most || b.size() > kLongest)
        return most + 1;
    const auto same = [](QChar x, QChar y) { return foldCase(x.unicode()) == foldCase(y.unicode()); };
    std::array<std::array<int, kLongest + 1>, 3> rows;
    for (qsizetype j = 0; j <= b.size(); ++j)
        rows[0][size_t(j)] = int(j);
    for (qsizetype i = 1; i <= a.size(); ++i) {
        auto &row = rows[size_t(i % 3)];
        const auto &above = rows[size_t((i - 1) % 3)];
        const qsizetype from = std::max<qsizetype>(1, i - most), to = std::min(b.size(), i + most);
        row[size_t(from - 1)] = from == 1 ? int(i) : most + 1;
        int least = row[size_t(from - 1)];
        for (qsizetype j = from; j <= to; ++j) {
            // Beyond the band nothing was counted.
            const int over = j == i + most ? most + 1 : above[size_t(j)];
            int apart = std::min(
                {above[size_t(j - 1)] + !same(a[i - 1], b[j - 1]), row[size_t(j - 1)] + 1, over + 1});
            if (i > 1 && j > 1 && same(a[i - 1], b[j - 2]) && same(a[i - 2], b[j - 1]))
                apart = std::min(apart, rows[size_t((i - 2) % 3)][size_t(j - 2)] + 1);
            row[size_t(j)] = apart;
            least = std::min(least, apart);
        }
        // A swap may still lead on from the row above, one fault dearer.
        if (least > most && *std::min_element(above.begin() + std::max<qsizetype>(0, from - 2),
                                              above.begin() + std::min(to, i - 1 + most) + 1) >= most)
            return most + 1;
    }
    return std::min(rows[size_t(a.size() % 3)][size_t(b.size())], most + 1);
}

QStringList nearestOf(const QStringList &names, QStringView name, qsizetype most)
{
    struct Near
    {
        int apart;
        QString name;
    };
    std::vector<Near> near;
    const int mostApart = int(std::clamp<qsizetype>(name.size() / kLettersAFault, 1, kMostApart));
    for (const QString &other : names) {
        const int apart = lettersApart(name, other, mostApart);
        // All that differs has nothing to do with it.
        if (apart <= mostApart && apart < other.size() && other != name)
            near.push_back({apart, other});
    }
    std::sort(near.begin(), near.end(), [](const Near &a, const Near &b) {
        return a.apart != b.apart ? a.apart < b.apart : a.name < b.name;
    });
    QStringList nearest;
    for (const Near &each : near) {
        if (nearest.size() == most)
            break;
        nearest.append(each.name);
    }
    return nearest;
}

QStringList nearestNames(const ThemeIndex &index, NameKind kind, QStringView name, qsizetype most)
{
    QStringList names;
    index.eachName(kind, [&](const QString &each) { names.append(each); });
    return nearestOf(names, name, most);
}

} // namespace quillmere
