#pragma once

#include <QByteArrayView>

#include <optional>
#include <vector>

namespace quillmere {

// The letters that a TrueType or OpenType font has, as its character map says.
class FontLetters
{
public:
    // Any bytes will do. Nothing where they are no font, or one whose map has no letter or is of a kind that
    // cannot be read here: of such a font nothing is known. Time is linear in the bytes, and never more than
    // all of Unicode.
    static std::optional<FontLetters> read(QByteArrayView font);

    bool has(char32_t letter) const { return letter < m_has.size() && m_has[letter]; }

private:
    std::vector<bool> m_has;
};

} // namespace quillmere
