#pragma once

#include "rows/ListRows.h"

#include <QObject>
#include <QSet>

namespace quillmere {

class ListView;
class ThemeEditing;

// Keeps rows selected while edits of the theme change them or load their list again, and has the tab show
// such a row anew: its boxes would put the old name back.
class SelectedRows : public QObject
{
    Q_OBJECT

public:
    // The rows of the lists are ListRows.
    SelectedRows(ThemeEditing &editing, QList<ListView *> lists, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Selected
    {
        ListView *list;
        int number;
        ListRows::Row row;
    };

    void note();
    void select();
    void showAnew(ListView *list);

    QList<ListView *> m_lists;
    QList<Selected> m_selected; // while an edit is made
    QSet<QObject *> m_late;     // lists of tabs that show their row when they are turned to
};

} // namespace quillmere
