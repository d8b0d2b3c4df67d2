#include "stage/forms/TranslationSteps.h"

#include "controls/RowsHistory.h"
#include "source/forms/SourceBox.h"

#include <QTimer>

namespace quillmere {

TranslationSteps::TranslationSteps(const SourceBox &source, QObject *parent)
    : QObject(parent), m_source(source)
{
}

void TranslationSteps::note()
{
    if (!m_strings)
        return;
    // The strings make a step of what has changed once control returns to the event loop.
    QTimer::singleShot(0, this, [this, text = textNow(), before = m_strings->toUndo()] {
        if (const qint64 step = m_strings->toUndo(); step != before)
            m_made.insert(step, text);
    });
}

bool TranslationSteps::stepBack()
{
    const bool is = m_strings && isNext(m_strings->toUndo());
    if (is)
        m_strings->steps.undo();
    return is;
}

bool TranslationSteps::stepForward()
{
    const bool is = m_strings && isNext(m_strings->toRedo());
    if (is)
        m_strings->steps.redo();
    return is;
}

TranslationSteps::TextState TranslationSteps::textNow() const
{
    return {m_source.document()->availableUndoSteps(), qHash(m_source.text())};
}

bool TranslationSteps::isNext(qint64 step) const
{
    const auto made = m_made.constFind(step);
    return made != m_made.constEnd() && *made == textNow();
}

} // namespace quillmere
