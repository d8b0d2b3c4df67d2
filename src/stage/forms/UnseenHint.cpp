#include "stage/forms/UnseenHint.h"

#include "asking/Talk.h"
#include "stage/WhyUnseen.h"
#include "stage/forms/ReceiverView.h"
#include "widgets/forms/SourceTab.h"

namespace quillmere {

UnseenHint::UnseenHint(Stage &stage, const SourceTab &tab, const ReceiverView &receiver, Talk &talk,
                       QObject *parent)
    : QObject(parent), m_stage(stage), m_tab(tab), m_receiver(receiver), m_talk(talk)
{
    connect(&stage, &Stage::selectionChanged, this, &UnseenHint::onSelected);
}

void UnseenHint::onSelected(Stage::By by)
{
    if (by != Stage::By::List || m_stage.selection().size() != 1)
        return;
    Unseen unseen{{}, m_receiver.hidesByState(), m_receiver.isOn()};
    for (const ListRows::Row &row : m_tab.blocks.rows()) {
        if (row.checked)
            unseen.ticked.insert(row.sub(1));
    }
    const QString why = whyUnseen(m_stage.outline(), m_stage.selection().first(), unseen);
    if (!why.isEmpty())
        m_talk.sayUntilEdit(why);
}

} // namespace quillmere
