#pragma once

#include <QString>

namespace quillmere {

struct WindowLook;

enum class WindowTemplate { Empty, List, MessageBox, Bar };

// The document of a new window of this name.
QString windowText(WindowTemplate kind, const QString &name, const WindowLook &look);

} // namespace quillmere
