#pragma once

#include "outline/Values.h"
#include "theme/ThemeIndex.h"

namespace quillmere {

// What there is to say about a place in a window.
struct Hover
{
    enum class Of : quint8 { Nothing, Name, Block };

    Of of = Of::Nothing;
    Range range; // of the name; of a block, its opening tag

    NameKind kind = NameKind::Image;
    QString name; // of a name or a block
    bool isDefined = false;
    QStringList nearest; // names that may be meant, where it is not

    QString className;
    std::optional<Box> rect;  // as it is written
    std::optional<Box> place; // on the screen: moved by the blocks around it
};
// A name, or a block where the unit at `offset` is of its tags or its rect. Without an index everything
// counts as defined.
Hover hoverAt(const Outline &outline, qsizetype offset, const ThemeIndex *index);
// The same for a caret, which is between two units, and in a block wherever else it stands.
Hover hoverAtCaret(const Outline &outline, qsizetype caret, const ThemeIndex *index);

} // namespace quillmere
