#pragma once

#include "files/Progress.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>

namespace quillmere {

// A text or a picture that is larger is none that anybody works on. Bytes.
constexpr qint64 kLargestFile = 64 * 1024 * 1024;

// What stands at a path may be a pipe, a device or a file without end, put there by a theme or another
// program. So a file is opened without waiting, looked at once it is open, and never read beyond `most`
// bytes. All paths are exact.

// Null, with the system's reason or ours, where it is not to be read.
std::unique_ptr<QFile> openRegular(const QString &path, qint64 most, QString &reason);

// The bytes; empty, with the reason, where they are not to be read.
QByteArray readRegular(const QString &path, qint64 most, QString &reason, const Progress &progress = {});

// What the system says of a file without opening it; of a link's target where it is a link.
struct FileState
{
    qint64 bytes = 0;
    qint64 changed = 0; // when it was written last; only to be compared
    bool isLink = false;
};
// All 0 where there is no file.
FileState stateOf(const QString &path);

} // namespace quillmere
