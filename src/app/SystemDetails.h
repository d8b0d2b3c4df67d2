#pragma once

#include <QString>

namespace quillmere {

// What a report of a fault should say of the program and the system it runs on, a line each. It names no
// files.
QString systemDetails();

} // namespace quillmere
