#pragma once

#include <QPalette>

namespace quillmere {

// What colours the program has: those of the desktop, or its own whatever the desktop has.
enum class Scheme { Desktop, Light, Dark };

// The program's own colours; not for Scheme::Desktop. Text is read at 4.5:1 at the least on every ground that
// it has there, and what has the focus stands out from its ground at 3:1.
QPalette paletteOf(Scheme scheme);

bool isDark(const QPalette &palette);

// The ground and the text of what asks for attention without a question; on dark and light desktops alike it
// differs from all that is around it.
QPalette noticeColours(const QPalette &around);

} // namespace quillmere
