#include "checks/FontLetters.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr quint32 kLetters = 0x110000; // in Unicode
constexpr quint32 kCmap = 0x636d6170, kCollection = 0x74746366;

// Big-endian numbers; beyond the end all are 0.
class Numbers
{
public:
    explicit Numbers(QByteArrayView bytes) : m_bytes(bytes) {}

    quint32 u16(qsizetype at) const { return byte(at) << 8 | byte(at + 1); }
    quint32 u32(qsizetype at) const { return u16(at) << 16 | u16(at + 2); }
    bool has(qsizetype at, qsizetype length) const
    {
        return at >= 0 && at <= m_bytes.size() && length <= m_bytes.size() - at;
    }
    Numbers from(qsizetype at) const { return Numbers(has(at, 0) ? m_bytes.sliced(at) : QByteArrayView()); }
    qsizetype size() const { return m_bytes.size(); }

private:
    quint32 byte(qsizetype at) const { return has(at, 1) ? quint8(m_bytes[at]) : 0; }

    QByteArrayView m_bytes;
};

Numbers cmapOf(const Numbers &file)
{
    const qsizetype font = file.u32(0) == kCollection ? qsizetype(file.u32(12)) : 0;
    const quint32 tables = file.u16(font + 4);
    for (quint32 table = 0; table < tables; ++table) {
        const qsizetype entry = font + 12 + qsizetype(table) * 16;
        if (file.u32(entry) == kCmap)
            return file.from(file.u32(entry + 8));
    }
    return Numbers({});
}

// Segments of 16-bit letters. They are in order; what is not is no font's, and looked at from where the one
// before has ended.
void readSegments(const Numbers &map, std::vector<bool> &has)
{
    const qsizetype segments = map.u16(6) / 2;
    const qsizetype ends = 14, starts = ends + 2 * segments + 2, deltas = starts + 2 * segments,
                    offsets = deltas + 2 * segments;
    quint32 next = 0;
    for (qsizetype segment = 0; segment < segments && map.has(offsets + 2 * segment, 2); ++segment) {
        const quint32 end = map.u16(ends + 2 * segment), start = map.u16(starts + 2 * segment);
        const quint32 delta = map.u16(deltas + 2 * segment), offset = map.u16(offsets + 2 * segment);
        for (quint32 letter = std::max(start, next); letter <= end; ++letter) {
            quint32 glyph = letter;
            if (offset != 0)
                glyph = map.u16(offsets + 2 * segment + offset + 2 * qsizetype(letter - start));
            // Where there is an offset, 0 stands for none whatever the delta is.
            has[letter] = (offset == 0 || glyph != 0) && ((glyph + delta) & 0xffff) != 0;
        }
        next = std::max(next, end + 1);
    }
}

// Groups of letters up to the end of Unicode, in order like segments.
void readGroups(const Numbers &map, std::vector<bool> &has)
{
    const qsizetype groups = std::min<qsizetype>(map.u32(12), (map.size() - 16) / 12);
    quint32 next = 0;
    for (qsizetype group = 0; group < groups; ++group) {
        const qsizetype at = 16 + 12 * group;
        const quint32 start = map.u32(at), end = std::min(map.u32(at + 4), kLetters - 1);
        const bool beginsWithNone = map.u32(at + 8) == 0;
        for (quint32 letter = std::max(start, next); letter <= end; ++letter)
            has[letter] = !beginsWithNone || letter != start;
        next = std::max(next, end + 1);
    }
}

} // namespace

std::optional<FontLetters> FontLetters::read(QByteArrayView font)
{
    const Numbers cmap = cmapOf(Numbers(font));
    const quint32 count = cmap.u16(2);
    qsizetype segments = 0, groups = 0;
    for (quint32 each = 0; each < count && cmap.has(4 + 8 * qsizetype(each), 8); ++each) {
        const qsizetype entry = 4 + 8 * qsizetype(each);
        const quint32 platform = cmap.u16(entry), encoding = cmap.u16(entry + 2);
        const qsizetype map = cmap.u32(entry + 4);
        const bool isUnicode = platform == 0 || (platform == 3 && (encoding == 1 || encoding == 10));
        if (isUnicode && cmap.u16(map) == 12)
            groups = map;
        else if (isUnicode && cmap.u16(map) == 4)
            segments = map;
    }
    if (groups == 0 && segments == 0)
        return std::nullopt;
    FontLetters letters;
    letters.m_has.resize(kLetters);
    if (groups != 0)
        readGroups(cmap.from(groups), letters.m_has);
    else
        readSegments(cmap.from(segments), letters.m_has);
    // One that was cut off, or made to lead astray.
    if (std::find(letters.m_has.begin(), letters.m_has.end(), true) == letters.m_has.end())
        return std::nullopt;
    return letters;
}

} // namespace quillmere
