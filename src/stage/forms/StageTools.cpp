#include "stage/forms/StageTools.h"

#include <QWidget>

namespace quillmere {

StageTools::StageTools(Stage &stage, SourceTab &tab, PreviewFrame &, Talk &, QWidget &window)
    : QObject(&window), m_window(window), m_link(stage, tab)
{
}

void StageTools::addCommands(Commands &menu)
{
    m_link.addCommands(menu, m_window);
}

} // namespace quillmere
