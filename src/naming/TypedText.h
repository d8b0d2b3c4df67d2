#pragma once

#include "outline/Outline.h"

namespace quillmere {

// What finding and taking of entries ask of a text that is being typed.

inline bool isNamePart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

inline bool isBlank(QChar c)
{
    return c.unicode() <= 32;
}

// Whether the value is a list in brackets.
inline bool isList(Kind kind)
{
    return kind == Kind::BackColor || kind == Kind::ForeColor || kind == Kind::Rect;
}

// Whether the closing tag is still to be typed.
inline bool hasNoEnd(const Element &element)
{
    return element.end == End::Missing || element.end == End::Open;
}

} // namespace quillmere
