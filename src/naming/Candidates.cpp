#include "naming/Candidates.h"

#include "markup/Matching.h"

#include <numeric>

namespace quillmere {

Candidates::Candidates(const QStringList &names) : m_names(names)
{
    m_folded.reserve(names.size());
    for (const QString &name : names) {
        const QString folded = foldedText(name);
        m_folded.append(folded == name ? name : folded); // most are the same text, so they share it
    }
}

std::vector<qint32> Candidates::matching(QStringView typed) const
{
    std::vector<qint32> found;
    if (typed.isEmpty()) {
        found.resize(size_t(m_names.size()));
        std::iota(found.begin(), found.end(), 0);
        return found;
    }
    const QString folded = foldedText(typed);
    std::vector<qint32> inside;
    for (qint32 number = 0; number < qint32(m_folded.size()); ++number) {
        const qsizetype at = m_folded.at(number).indexOf(folded);
        if (at >= 0)
            (at == 0 ? found : inside).push_back(number);
    }
    found.insert(found.end(), inside.begin(), inside.end());
    return found;
}

} // namespace quillmere
