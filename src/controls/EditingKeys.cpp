#include "controls/EditingKeys.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

#include <utility>

namespace quillmere {

EditingKeys::EditingKeys(QWidget &window, Commands commands)
    : QObject(&window), m_commands(std::move(commands))
{
    window.installEventFilter(this);
    for (QLineEdit *box : window.findChildren<QLineEdit *>())
        box->installEventFilter(this); // it takes these keys in any case
}

bool EditingKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const auto *box = qobject_cast<QLineEdit *>(watched);
    const bool isRedo = key->matches(QKeySequence::Redo) || key->keyCombination() == (Qt::CTRL | Qt::Key_Y);
    if (key->matches(QKeySequence::Save))
        m_commands.save();
    else if (key->matches(QKeySequence::Undo) && !(box && box->isUndoAvailable()))
        m_commands.undo();
    else if (isRedo && !(box && box->isRedoAvailable()))
        m_commands.redo();
    else
        return QObject::eventFilter(watched, event);
    return true;
}

} // namespace quillmere
