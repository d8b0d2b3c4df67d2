#pragma once

#include "files/RunTimeError.h"

#include <QDir>

namespace quillmere {

// What a step with a file says when it fails. `step` fits behind "Cannot", `reason` is a sentence without its
// full stop.
[[noreturn]] inline void throwFailed(const char *step, const QString &path, const QString &reason)
{
    throw RunTimeError(QStringLiteral("Cannot %1 \"%2\": %3.")
                           .arg(QLatin1String(step), QDir::toNativeSeparators(path), reason));
}

} // namespace quillmere
