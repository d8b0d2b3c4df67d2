#pragma once

#include "rows/ListRows.h"

#include <QObject>
#include <QUndoStack>

#include <optional>

namespace quillmere {

class ListView;

// Gives a list the keys of undo and redo, and items for the top of its context menu.
void addUndo(QUndoStack &steps, ListView &list);

// Undo and redo for the rows of a list: all that changes in one go, by hand or by a command, is one step.
// Other rows, as another file brings them, begin a history of their own; saving does not end it.
class RowsHistory : public QObject
{
    Q_OBJECT

public:
    // What is undone: all, or ticks alone where rows stand for files, and come and go with them.
    enum class Of { Rows, Ticks };

    // The rows must outlive the history.
    explicit RowsHistory(ListRows &rows, Of what = Of::Rows, QObject *parent = nullptr);

    // Gives a view of the rows the keys, and items for the top of its context menu.
    void addTo(ListView &list);

    // Steps that can be taken back; what changes now becomes one when control returns to the event loop.
    QUndoStack steps;
    // The number, this step's alone, of what undo and redo would take next; 0 where there is nothing.
    qint64 toUndo() const { return numberAt(steps.index() - 1); }
    qint64 toRedo() const { return numberAt(steps.index()); }

private:
    class Step;
    qint64 numberAt(int index) const;

    void note();
    void onReset();
    void onEdited();
    void beginAnew();
    void keep();

    ListRows &m_rows;
    Of m_of;
    QList<ListRows::Row> m_before;                     // what the next step begins with
    std::optional<QList<ListRows::Row>> m_replacement; // rows that all others gave way to, just now
    bool m_waits = false, m_steps = false;
    qint64 m_made = 0; // steps, ever
};

} // namespace quillmere
