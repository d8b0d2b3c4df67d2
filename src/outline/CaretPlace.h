#pragma once

#include "outline/Outline.h"

namespace quillmere {

// What a caret stands in: what is being typed there, and so what may be offered.
struct CaretPlace
{
    enum class In {
        Text,        // between elements
        Value,       // a value of the vocabulary, or one entry of a list
        ElementName, // behind a "<"
        ClosingName, // behind a "</"
        Tag,         // in an opening tag, where an attribute may begin
        AttributeName,
        AttributeValue,
        Comment,
    };

    In in = In::Text;
    qint32 element = -1; // the innermost: that of the tag or the value, else the one around the caret
    Range word;          // the name, value or entry, whole; empty at the caret where nothing is typed yet
    Attribute attribute; // of an attribute's name or value
};
// `offset` counts from 0 to the length of the text. Time is that of a search among the elements and of
// reading the one that the caret is in.
CaretPlace caretPlace(const Outline &outline, qsizetype offset);

} // namespace quillmere
