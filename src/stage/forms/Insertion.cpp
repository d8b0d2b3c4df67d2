#include "stage/forms/Insertion.h"

#include "asking/Talk.h"
#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/Stage.h"

#include <QApplication>

#include <utility>

namespace quillmere {

bool Insertion::hasKeyboard() const
{
    return m_frame.wb->hasFocus() || m_frame.wb->isAncestorOf(QApplication::focusWidget());
}

void Insertion::begin(NewBlock kind)
{
    if (!hasKeyboard())
        m_keyboard = QApplication::focusWidget();
    m_kind = kind;
    m_frame.wb->setFocus(Qt::OtherFocusReason);
    m_talk.say(
        tr("Draw the place of the new block with the mouse, or press Enter to insert it in the middle; "
           "Esc cancels."));
}

bool Insertion::giveUp()
{
    if (!std::exchange(m_kind, {}))
        return false;
    QWidget *before = std::exchange(m_keyboard, nullptr);
    if (before && hasKeyboard())
        before->setFocus(Qt::OtherFocusReason);
    m_talk.say(tr("No block was inserted."));
    return true;
}

// A rect counts from where that of the block around it begins.
Box Insertion::boxAt(const QRectF &drawn) const
{
    const Outline &outline = m_stage.outline();
    const int parent = parentForNew(outline, m_stage.selection());
    const Box origin = parent < 0 ? Box() : placesOnScreen(outline)[size_t(parent)].value_or(Box());
    const QRect box = drawn.normalized().toRect();
    return {box.x() - origin.x, box.y() - origin.y, box.width(), box.height()};
}

void Insertion::putAt(const QRectF &drawn, qint64 revision)
{
    put(parentForNew(m_stage.outline(), m_stage.selection()), boxAt(drawn), revision);
}

void Insertion::putInMiddle()
{
    const Outline &outline = m_stage.outline();
    const int parent = parentForNew(outline, m_stage.selection());
    put(parent, placeForNew(outline, *m_kind, parent, m_frame.screenSize()), m_stage.revision());
}

void Insertion::put(int parent, const Box &box, qint64 revision)
{
    m_keyboard.clear();
    const Edited edited = inserted(m_stage.outline(), *std::exchange(m_kind, {}), parent, box);
    if (edited.changes.isEmpty())
        m_talk.say(tr("There is no window to insert the block into."));
    else if (m_stage.write(edited.changes, revision, edited.selection))
        m_talk.say(tr("%1 was inserted.").arg(calledInText(m_stage.outline(), edited.selection.first())));
}

} // namespace quillmere
