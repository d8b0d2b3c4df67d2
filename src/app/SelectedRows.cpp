#include "app/SelectedRows.h"

#include "app/ThemeEditing.h"
#include "controls/ListView.h"

#include <QEvent>

#include <utility>

namespace quillmere {

SelectedRows::SelectedRows(ThemeEditing &editing, QList<ListView *> lists, QObject *parent)
    : QObject(parent), m_lists(std::move(lists))
{
    for (ListView *list : std::as_const(m_lists))
        list->installEventFilter(this);
    connect(&editing, &ThemeEditing::applying, this, &SelectedRows::note);
    connect(&editing, &ThemeEditing::applied, this, &SelectedRows::select);
}

void SelectedRows::note()
{
    m_selected.clear();
    for (ListView *list : std::as_const(m_lists)) {
        const auto *rows = qobject_cast<const ListRows *>(list->model());
        if (const int number = list->selectedRow(); rows && number >= 0)
            m_selected.append({list, number, rows->row(number)});
    }
}

void SelectedRows::select()
{
    for (const auto &[list, number, row] : std::exchange(m_selected, {})) {
        const auto *rows = qobject_cast<const ListRows *>(list->model());
        if (number >= rows->count())
            continue;
        const bool isSelected = list->selectedRow() == number;
        if (isSelected && rows->text(number) == row.text && rows->row(number).subItems == row.subItems)
            continue;
        if (!isSelected)
            list->setCurrentIndex(rows->index(number, 0));
        // A tab puts itself in front with a row of its list.
        if (list->isVisible())
            showAnew(list);
        else
            m_late.insert(list);
    }
}

void SelectedRows::showAnew(ListView *list)
{
    if (list->selectedRow() >= 0)
        emit list->rowClicked(list->selectedRow());
}

bool SelectedRows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && m_late.remove(watched)) {
        auto *list = static_cast<ListView *>(watched);
        QMetaObject::invokeMethod(
            list, [this, list] { showAnew(list); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillmere
