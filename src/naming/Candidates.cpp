#include "naming/Candidates.h"

#include "markup/Matching.h"

#include <numeric>

namespace quillmere {

std::vector<qint32> Candidates::matching(QStringView typed) const
{
    std::vector<qint32> found;
    if (typed.isEmpty()) {
        found.resize(size_t(m_names.size()));
        std::iota(found.begin(), found.end(), 0);
        return found;
    }
    std::vector<qint32> inside;
    for (qint32 number = 0; number < qint32(m_names.size()); ++number) {
        const qsizetype at = indexOfIgnoringCase(m_names.at(number), typed);
        if (at >= 0)
            (at == 0 ? found : inside).push_back(number);
    }
    found.insert(found.end(), inside.begin(), inside.end());
    return found;
}

} // namespace quillmere
