#include "controls/RowsHistory.h"

#include "controls/ListView.h"

#include <QAction>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr int kMostSteps = 200;

bool isSame(const ListRows::Row &a, const ListRows::Row &b)
{
    return a.checked == b.checked && a.text == b.text && a.subItems == b.subItems;
}

bool isSameButForTick(const ListRows::Row &a, const ListRows::Row &b)
{
    return a.text == b.text && a.subItems == b.subItems;
}

} // namespace

// The rows between the first that changed and the last.
class RowsHistory::Step : public QUndoCommand
{
public:
    Step(RowsHistory &history, const QList<ListRows::Row> &before, const QList<ListRows::Row> &after)
        : number(++history.m_made), m_history(history)
    {
        const qsizetype most = std::min(before.size(), after.size());
        m_head = std::mismatch(before.begin(), before.begin() + most, after.begin(), isSame).first -
                 before.begin();
        qsizetype tail = 0;
        while (tail < most - m_head &&
               isSame(before[before.size() - 1 - tail], after[after.size() - 1 - tail]))
            ++tail;
        m_before = before.mid(m_head, before.size() - m_head - tail);
        m_after = after.mid(m_head, after.size() - m_head - tail);
    }
    void undo() override { put(m_after.size(), m_before); }
    void redo() override
    {
        if (!std::exchange(m_isNew, false)) // the rows are there when the step is made
            put(m_before.size(), m_after);
    }

    const qint64 number;

private:
    void put(qsizetype gone, const QList<ListRows::Row> &come)
    {
        QList<ListRows::Row> rows = m_history.m_rows.rows();
        rows = rows.first(m_head) + come + rows.sliced(m_head + gone);
        const QScopedValueRollback stepping(m_history.m_steps, true);
        m_history.m_rows.edit(rows);
        m_history.m_before = std::move(rows);
    }

    RowsHistory &m_history;
    qsizetype m_head = 0;
    QList<ListRows::Row> m_before, m_after;
    bool m_isNew = true;
};

RowsHistory::RowsHistory(ListRows &rows, Of what, QObject *parent)
    : QObject(parent), m_rows(rows), m_of(what), m_before(rows.rows())
{
    steps.setUndoLimit(kMostSteps);
    connect(&rows, &ListRows::modelReset, this, &RowsHistory::onReset);
    connect(&rows, &ListRows::dataChanged, this, &RowsHistory::note);
    connect(&rows, &ListRows::rowsInserted, this, &RowsHistory::note);
    connect(&rows, &ListRows::rowsRemoved, this, &RowsHistory::note);
    connect(&rows, &ListRows::edited, this, &RowsHistory::onEdited);
}

qint64 RowsHistory::numberAt(int index) const
{
    const QUndoCommand *step = steps.command(index);
    return step ? static_cast<const Step *>(step)->number : 0;
}

void addUndo(QUndoStack &steps, ListView &list)
{
    const auto add = [&list](QAction *action, const char *name, const QString &tip,
                             const QList<QKeySequence> &keys) {
        action->setObjectName(QLatin1String(name));
        action->setToolTip(tip);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        list.addAction(action);
    };
    add(steps.createUndoAction(&list, RowsHistory::tr("Undo")), "mnuRowsUndo",
        RowsHistory::tr("Undoes the last change in this list."), {QKeySequence::Undo});
    add(steps.createRedoAction(&list, RowsHistory::tr("Redo")), "mnuRowsRedo",
        RowsHistory::tr("Redoes the change that was undone."),
        {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
}

void RowsHistory::addTo(ListView &list)
{
    addUndo(steps, list);
}

// Rows that take the place of all others are another file's, unless it is said at once that they were edited.
void RowsHistory::onReset()
{
    if (m_replacement)
        beginAnew();
    m_replacement = m_rows.rows();
    keep();
}

void RowsHistory::onEdited()
{
    m_replacement.reset();
    keep();
}

void RowsHistory::note()
{
    if (m_replacement)
        beginAnew();
    keep();
}

void RowsHistory::beginAnew()
{
    m_before = *std::exchange(m_replacement, {});
    steps.clear();
}

void RowsHistory::keep()
{
    if (m_steps || std::exchange(m_waits, true))
        return;
    QTimer::singleShot(0, this, [this] {
        m_waits = false;
        if (m_replacement)
            beginAnew();
        const QList<ListRows::Row> &now = m_rows.rows();
        if (std::ranges::equal(m_before, now, isSame))
            return;
        if (m_of == Of::Ticks && !std::ranges::equal(m_before, now, isSameButForTick)) {
            m_before = now;
            steps.clear();
            return;
        }
        const QList<ListRows::Row> before = std::exchange(m_before, now);
        steps.push(new Step(*this, before, now));
    });
}

} // namespace quillmere
