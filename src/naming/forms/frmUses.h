#pragma once

#include "controls/ModelessDialog.h"
#include "rows/ListRows.h"

class QLabel;

namespace quillmere {

class ListView;

// The places where a name is used; stays open beside the window while one goes through them.
class frmUses : public ModelessDialog
{
    Q_OBJECT

public:
    explicit frmUses(QWidget &owner);

    // `title` and `summary` are shown as they stand; for the rows see PlaceRows.h.
    void showPlaces(const QString &title, const QString &summary, const QList<ListRows::Row> &rows);

signals:
    void placeChosen(int row);

private:
    ListRows m_rows;
    ListView *lvUses;
    QLabel *lblUses;
};

} // namespace quillmere
