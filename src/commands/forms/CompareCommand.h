#pragma once

#include "commands/CommandLine.h"

class QTextStream;

namespace quillmere {

// Compares what viewers see of two themes, and writes a report with pictures of the windows that differ to a
// folder. Prints a line a window that differs, complaints to `err`. Returns the exit status: 0 where all are
// the same, 1 where one differs, 2 when it cannot run.
int compareThemes(const CommandLine &line, QTextStream &out, QTextStream &err);

} // namespace quillmere
