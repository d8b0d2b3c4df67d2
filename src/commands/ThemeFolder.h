#pragma once

#include <QString>

namespace quillmere {

// Why the folder is no theme that a command could work on; empty where it is one.
QString reasonAgainst(const QString &folder);

} // namespace quillmere
