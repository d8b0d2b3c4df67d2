#pragma once

#include "outline/CaretPlace.h"
#include "theme/ThemeIndex.h"

#include <optional>

namespace quillmere {

// What may be typed where the caret stands, and what of the text an entry takes the place of.
struct Completion
{
    enum class Of : quint8 {
        Nothing,
        Element,   // behind a "<", or between elements, where an entry brings its "<" along
        Closing,   // behind a "</"
        Attribute, // the name of one
        Class,     // the value of `class`
        Word,      // one of a few words: a mode, an alignment, a state
        Name,      // what the table of names knows; a window in an attribute, all others in an element
    };

    Of of = Of::Nothing;
    NameKind kind = NameKind::Image; // of Name
    qint32 element = -1;             // see CaretPlace
    Range word;                      // what stands there by now, whole; gives way to an entry
    qint32 caret = 0;
    QStringList entries; // in order; of Name they are those that the index has of the kind

    // What an entry must hold.
    QStringView typed(const Outline &outline) const { return outline.at({word.start, caret}); }
    // Whether it is offered without being asked for: where the value is known before it is typed.
    bool opensItself() const
    {
        return of == Of::Name || of == Of::Word || of == Of::Class || (of == Of::Element && !bringsBracket);
    }
    bool bringsBracket = false; // an element where there is no "<" yet
};
// `index` may be missing: then there are no names, and elements come in the order of the vocabulary. Nothing
// is offered in comments and signals. In the catalogue of windows, windows have the names of documents. Time
// is that of caretPlace.
Completion completionAt(const Outline &outline, qsizetype caret, const ThemeIndex *index,
                        FileRole role = FileRole::Window);

// How the text changes when an entry is taken.
struct TakenEntry
{
    Range range;
    QString text;        // takes the place of the range
    qint32 caret;        // in the text that comes of it
    bool goesOn = false; // something is to be typed there, and may be offered at once
};
// An element that is open is closed: behind its value, or right away when its name is taken.
TakenEntry takeEntry(const Outline &outline, const Completion &completion, const QString &entry);

} // namespace quillmere
