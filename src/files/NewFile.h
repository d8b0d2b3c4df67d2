#pragma once

#include <QByteArrayView>
#include <QString>

namespace quillmere {

// Makes a file that is not there yet, and has the disk keep it: whatever bears its name by then, links too,
// is left alone. The system's reason where it fails, and no file then; else nothing.
QString writeNewFile(const QString &path, QByteArrayView bytes);

} // namespace quillmere
