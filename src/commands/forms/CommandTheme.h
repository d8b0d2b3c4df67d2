#pragma once

#include "files/Files.h"
#include "theme/ThemeProject.h"

class QTextStream;

namespace quillmere {

// The theme that a command works on, opened for reading.
class CommandTheme
{
public:
    // What keeps it from being read goes to `err`, as does what of it cannot be read.
    CommandTheme(const QString &folder, QTextStream &err);

    bool isOpen() const { return m_isOpen; }
    const ThemeProject &project() const { return m_project; }

private:
    Files m_files;
    ThemeProject m_project{m_files};
    bool m_isOpen = false;
};

} // namespace quillmere
