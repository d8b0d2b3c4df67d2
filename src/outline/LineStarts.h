#pragma once

#include <QStringView>

#include <algorithm>
#include <vector>

namespace quillmere {

// Line and column, both counted from 1; columns count UTF-16 units.
struct LineColumn
{
    qint32 line = 1;
    qint32 column = 1;

    bool operator==(const LineColumn &) const = default;
};

// Where the lines of a text begin. A line ends behind its LF.
class LineStarts
{
public:
    explicit LineStarts(QStringView text)
    {
        for (qsizetype at = text.indexOf(u'\n'); at >= 0; at = text.indexOf(u'\n', at + 1))
            m_starts.push_back(qint32(at + 1));
    }

    LineColumn placeOf(qsizetype offset) const
    {
        const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), offset);
        return {qint32(behind - m_starts.begin()), qint32(offset - *(behind - 1)) + 1};
    }
    qint32 lines() const { return qint32(m_starts.size()); }

private:
    std::vector<qint32> m_starts = {0};
};

} // namespace quillmere
