#pragma once

#include "commands/CommandLine.h"

class QTextStream;

namespace quillmere {

// Draws widget windows of a theme to DIR/NAME.png, as the preview shows them, each to a file of its own.
// Prints a line a window, complaints to `err`. Returns the exit status: 0, or 1 when a window has no document
// or a picture could not be written.
int renderWindows(const CommandLine &line, QTextStream &out, QTextStream &err);

} // namespace quillmere
