#include "checks/forms/TextFitCommand.h"

#include "asking/Talk.h"
#include "browser/forms/TextMeasurer.h"
#include "checks/forms/LiveCheck.h"
#include "controls/Commands.h"
#include "receiver/BlockText.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <algorithm>

namespace quillmere {

TextFitCommand::TextFitCommand(LiveCheck &check, const LiveIndex &index, const ThemeProject &theme,
                               Talk &talk, QObject *parent)
    : QObject(parent), m_check(check), m_index(index), m_theme(theme), m_talk(talk)
{
    connect(&check, &LiveCheck::changed, this, &TextFitCommand::tellWhatIsCut);
}

void TextFitCommand::addCommands(Commands &menu)
{
    menu.on("mnuTextFit", [this] { mnuTextFit_Click(); });
}

void TextFitCommand::mnuTextFit_Click()
{
    const std::shared_ptr<const ThemeIndex> index = m_index.sharedIndex();
    if (!index) {
        m_talk.say(m_theme.folder().isEmpty() ? tr("Open a theme first.")
                                              : tr("The theme is still being read."));
        return;
    }
    const ThemeSources sources = m_index.sources();
    const ReceiverParts parts = receiverParts(m_theme);
    const auto measures = std::make_shared<TextMeasures>();
    m_talk.runLong(tr("Measuring the texts"), [&](const Progress &progress) {
        const QList<SetText> texts = textsToMeasure(sources, *index, {parts.theme.font, nullptr}, progress);
        *measures = TextMeasurer(sources.folder, parts.fonts, textSheet()).measure(texts, progress);
    });
    m_isTelling = true;
    m_check.setMeasures(measures, [&theme = m_theme] { return receiverParts(theme).theme.font; });
}

void TextFitCommand::tellWhatIsCut()
{
    if (!m_isTelling || !m_check.isMeasured())
        return;
    m_isTelling = false;
    const auto count = [&](Rule rule) {
        return int(std::ranges::count(*m_check.problems(), rule, &Problem::rule));
    };
    const int cut = count(Rule::TextFit);
    const QString found = cut == 0   ? tr("No text is cut.")
                          : cut == 1 ? tr("1 text is cut; the Check tab has it.")
                                     : tr("%1 texts are cut; the Check tab lists them.").arg(cut);
    m_talk.say(count(Rule::UnmeasuredText) == 0
                   ? found
                   : found + u' ' + tr("Notes there say what could not be measured in its own font."));
}

} // namespace quillmere
