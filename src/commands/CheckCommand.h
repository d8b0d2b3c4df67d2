#pragma once

#include "browser/MeasuredText.h"
#include "browser/PageFonts.h"
#include "checks/PictureStore.h"
#include "commands/CommandLine.h"

#include <functional>

class QIODevice;
class QTextStream;

namespace quillmere {

// Measures texts in fonts of the theme in a folder.
using TextMeasuring = std::function<TextMeasures(const QString &folder, const QList<PageFont> &fonts,
                                                 const QList<SetText> &texts)>;

// Checks a theme and writes what it finds to `out`, in the format asked for; what keeps it from checking to
// `err`. Returns the exit status: 0, 1 where a problem is as severe as the line says, 2 where there is no
// theme. Writes no file and draws nothing. `measure` is asked where the line wants texts measured; `leave`,
// with the status, before anything is freed.
int runCheck(const CommandLine &line, const PictureReader &reader, QIODevice &out, QTextStream &err,
             const TextMeasuring &measure = {}, const std::function<void(int status)> &leave = {});

} // namespace quillmere
