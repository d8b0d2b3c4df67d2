#pragma once

#include "controls/ModelessDialog.h"

#include <QStandardItemModel>

class QLabel;
class QLineEdit;
class QMainWindow;

namespace quillmere {

class ListView;

// All commands and keys in one list that can be filtered.
class frmShortcuts : public ModelessDialog
{
    Q_OBJECT

public:
    explicit frmShortcuts(QMainWindow &owner);

    // Gathers them anew and shows itself.
    void open() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void gather();
    void gatherKeys();
    void add(const QString &caption, const QString &keys, const QString &what);
    void filter();

    QMainWindow &m_window;
    QStandardItemModel m_rows{0, 3};
    QLineEdit *txtShortcuts;
    ListView *lvShortcuts;
    QLabel *lblShortcuts;
};

} // namespace quillmere
