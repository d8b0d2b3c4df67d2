#pragma once

#include "commands/CommandLine.h"

class QTextStream;

namespace quillmere {

// Draws all windows of a theme, as the receiver shows them, into one file. Prints a line to `out`, complaints
// to `err`. Returns the exit status: 0, 1 when a window has no document or was not drawn, 2 when nothing was
// written.
int writeSheet(const CommandLine &line, QTextStream &out, QTextStream &err);

} // namespace quillmere
