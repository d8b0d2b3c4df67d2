#include "commands/forms/CommandTheme.h"

#include "files/RunTimeError.h"

#include <QFileInfo>
#include <QTextStream>

namespace quillmere {

CommandTheme::CommandTheme(const QString &folder, QTextStream &err)
{
    if (!QFileInfo(folder).isDir()) {
        err << "quillmere: there is no folder " << folder << Qt::endl;
        return;
    }
    try {
        m_project.LoadTheme(folder);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << error.message() << Qt::endl;
        return;
    }
    if (!m_project.problems().isEmpty())
        err << "quillmere: " << m_project.problems().text() << Qt::endl;
    m_isOpen = true;
}

} // namespace quillmere
