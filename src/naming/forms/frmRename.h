#pragma once

#include "controls/RowsHistory.h"
#include "naming/FoundPlaces.h"

#include <QDialog>

#include <functional>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace quillmere {

class ListView;

// Asks for the new name of a thing and shows every place that it stands in, before and after.
class frmRename : public QDialog
{
    Q_OBJECT

public:
    // `folder` is that of the theme. `rename` makes the edit; false where it was not made.
    frmRename(const NamedThing &thing, const FoundPlaces &found, std::shared_ptr<const ThemeIndex> index,
              const QString &folder,
              std::function<bool(const QString &newName, const ThemeEdit &edit)> rename, QWidget *parent);

private:
    QLayout *makeName();
    QLayout *makeButtons();
    void txtRename_Change();
    void showCount();
    QList<bool> ticks() const;
    void cmdRename_Click();

    NamedThing m_thing;
    FoundPlaces m_found;
    std::shared_ptr<const ThemeIndex> m_index;
    QString m_folder;
    std::function<bool(const QString &, const ThemeEdit &)> m_rename;
    ListRows m_rows; // see PlaceRows.h
    RowsHistory m_history{m_rows, RowsHistory::Of::Ticks};
    QLineEdit *txtRename;
    ListView *lvRename;
    QLabel *lblRenameWhy, *lblRenameCount;
    QPushButton *cmdRename;
};

} // namespace quillmere
