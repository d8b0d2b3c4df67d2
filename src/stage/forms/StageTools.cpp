#include "stage/forms/StageTools.h"

#include <QWidget>

namespace quillmere {

StageTools::StageTools(Stage &stage, SourceTab &tab, PreviewFrame &frame, Talk &, QWidget &window)
    : QObject(&window), m_window(window), m_link(stage, tab), m_rulers(frame, this)
{
}

void StageTools::addCommands(Commands &menu)
{
    m_link.addCommands(menu, m_window);
    m_rulers.addCommands(menu, m_window);
}

} // namespace quillmere
