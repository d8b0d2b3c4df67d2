#pragma once

#include <QObject>

namespace quillmere {

class Commands;
class LiveCheck;
class LiveIndex;
class Talk;
class ThemeProject;

// "Text Fit" in the Language menu: measures the texts of all windows in all languages, so that the checks
// tell which are cut. They go on telling what they can from these measures while texts, rects and alignments
// change; of a text, a font or a size that was not there when they were taken they say nothing.
class TextFitCommand : public QObject
{
    Q_OBJECT

public:
    TextFitCommand(LiveCheck &check, const LiveIndex &index, const ThemeProject &theme, Talk &talk,
                   QObject *parent = nullptr);

    void addCommands(Commands &menu);

private:
    void mnuTextFit_Click();
    void tellWhatIsCut();

    LiveCheck &m_check;
    const LiveIndex &m_index;
    const ThemeProject &m_theme;
    Talk &m_talk;
    bool m_isTelling = false; // when the checks are done
};

} // namespace quillmere
