#pragma once

#include "commands/CommandLine.h"

class QTextStream;

namespace quillmere {

class Files;

// Writes the strings of a language to a file for translators. Returns the exit status: 0, or 2 where it
// cannot run; `err` says why, and nothing is written then.
int runExport(Files &files, const CommandLine &line, QTextStream &err);

// Puts the translations of such a file into the language, in place, and says in `out` how many there are and
// in `err` what was left alone. Returns the exit status: 0, or 2 where it cannot run and nothing is written.
// A dry run lists in `out` what would change, writes nothing, and returns 1 where something would.
int runImport(Files &files, const CommandLine &line, QTextStream &out, QTextStream &err);

} // namespace quillmere
