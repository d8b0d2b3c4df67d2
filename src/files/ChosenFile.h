#pragma once

#include <QByteArray>
#include <QString>

namespace quillmere {

class Files;

// Writes exactly the file that the person named, wherever it lies, and follows a link there. What it held is
// backed up first. RunTimeError says why it cannot be written, and the old file is then as it was.
void writeChosen(Files &files, const QString &path, const QByteArray &bytes);

} // namespace quillmere
