#pragma once

#include <QByteArray>
#include <QFile>

#include <memory>

namespace quillmere {

// Opens the picture at a canonical path. Null when it is larger than 64 MB, cannot be read, is no regular
// file, or when something else has come to its place since somebody looked.
std::unique_ptr<QFile> openPicture(const QString &path);

constexpr qint64 kMostPixels = 64 * 1024 * 1024; // of a picture that is shown: 256 MB in the renderer

// What Qt calls the format of a picture made of pixels (png, jpeg, gif, bmp, webp, ico), by the first bytes
// of the file, which stays where it is; empty for anything else. Qt asked itself would also try what it has
// for drawings, and a drawing can name other files, pipes, or itself.
QByteArray pixelFormat(QIODevice &file);

} // namespace quillmere
