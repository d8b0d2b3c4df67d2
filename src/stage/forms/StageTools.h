#pragma once

#include "stage/forms/BlockLink.h"
#include "stage/forms/Rulers.h"

namespace quillmere {

class Commands;
class Talk;

// What works on the blocks that are selected.
class StageTools : public QObject
{
    Q_OBJECT

public:
    StageTools(Stage &stage, SourceTab &tab, PreviewFrame &frame, Talk &talk, QWidget &window);

    void addCommands(Commands &menu);

private:
    QWidget &m_window;
    BlockLink m_link;
    Rulers m_rulers;
};

} // namespace quillmere
