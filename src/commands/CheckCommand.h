#pragma once

#include "checks/PictureStore.h"
#include "commands/CommandLine.h"

class QIODevice;
class QTextStream;

namespace quillmere {

// Checks a theme and writes what it finds to `out`, in the format asked for; what keeps it from checking to
// `err`. Returns the exit status: 0, 1 where a problem is as severe as the line says, 2 where there is no
// theme. Writes no file and draws nothing.
int runCheck(const CommandLine &line, const PictureReader &reader, QIODevice &out, QTextStream &err);

} // namespace quillmere
