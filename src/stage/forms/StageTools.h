#pragma once

#include "stage/forms/ArrangeMenu.h"
#include "stage/forms/BlockLink.h"
#include "stage/forms/Picture.h"
#include "stage/forms/PropertiesLink.h"
#include "stage/forms/ReceiverView.h"
#include "stage/forms/Rulers.h"
#include "stage/forms/TextInPlace.h"
#include "stage/forms/TranslationSteps.h"

namespace quillmere {

class ThemeProject;

// What works on the blocks that are selected, whichever way they were.
class StageTools : public QObject
{
    Q_OBJECT

public:
    StageTools(Stage &stage, SourceTab &tab, PreviewFrame &frame, const ThemeProject &theme, Talk &talk,
               QWidget &window);

    void addCommands(Commands &menu);
    // See Picture::endsAlone.
    void setEndsAlone(const std::function<bool()> &ends);

    ReceiverView receiver;
    TextInPlace textInPlace;
    TranslationSteps translations;

signals:
    // The Source tab is to be shown.
    void sourceWanted();

private:
    void addSafeArea(Commands &menu, const char *name, double part);

    SourceTab &m_tab;
    PreviewFrame &m_frame;
    QWidget &m_window;
    Picture &m_picture;
    BlockLink m_link;
    Rulers m_rulers;
    PropertiesLink m_properties;
    ArrangeMenu m_arrange;
};

} // namespace quillmere
