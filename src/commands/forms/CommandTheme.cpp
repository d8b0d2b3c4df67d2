#include "commands/forms/CommandTheme.h"

#include "commands/PictureNames.h"
#include "commands/ThemeFolder.h"
#include "files/RunTimeError.h"

#include <QTextStream>

namespace quillmere {

CommandTheme::CommandTheme(const QString &folder, QTextStream &err)
{
    if (const QString reason = reasonAgainst(folder); !reason.isEmpty()) {
        err << "quillmere: " << printable(reason) << Qt::endl;
        return;
    }
    try {
        m_project.LoadTheme(folder);
    } catch (const RunTimeError &error) {
        err << "quillmere: " << printable(error.message()) << Qt::endl;
        return;
    }
    if (!m_project.problems().isEmpty())
        for (const QString &line : m_project.problems().text().split(u'\n'))
            err << "quillmere: " << printable(line) << Qt::endl;
    m_isOpen = true;
}

} // namespace quillmere
