#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace quillmere {

// Ctrl+S, Ctrl+Z and Ctrl+Shift+Z in a window beside the main one, for what it edits there. A text box takes
// its own typing back first, and a list that has steps of its own keeps the keys.
class EditingKeys : public QObject
{
    Q_OBJECT

public:
    struct Commands
    {
        std::function<void()> save, undo, redo;
    };

    // Made when all controls of the window are there; the window owns it.
    EditingKeys(QWidget &window, Commands commands);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Commands m_commands;
};

} // namespace quillmere
