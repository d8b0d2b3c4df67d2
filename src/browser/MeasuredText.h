#pragma once

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>

namespace quillmere {

// A text as a page sets it: one line, in a font that declarations of CSS say.
struct SetText
{
    QString text;
    QString font;

    bool operator==(const SetText &) const = default;
};
inline size_t qHash(const SetText &text, size_t seed = 0)
{
    return qHashMulti(seed, text.text, text.font);
}

// Where the ink of a text is in its line, pixels: from the left end of the line as wide as the text, and from
// its top. Ink may stand out at every side.
struct TextExtent
{
    float width = 0, height = 0; // of the line
    float left = 0, right = 0, top = 0, bottom = 0;
};

struct TextMeasures
{
    // Nothing for a text that could not be measured.
    QHash<SetText, std::optional<TextExtent>> texts;
    // Of the fonts asked for those that the browser can set texts in.
    QSet<QString> families;
};

} // namespace quillmere
