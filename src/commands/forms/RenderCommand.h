#pragma once

#include "commands/CommandLine.h"

namespace quillmere {

// Draws widget windows of a theme to DIR/NAME.png, as the preview shows them. Prints a line a window. Returns
// the exit status: 0, or 1 when a window has no document or a picture could not be written.
int renderWindows(const CommandLine &line);

} // namespace quillmere
