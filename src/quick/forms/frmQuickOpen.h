#pragma once

#include "quick/QuickList.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QListView;
class QStandardItemModel;

namespace quillmere {

// One line over everything one can go to. It goes as soon as the keyboard goes elsewhere.
class frmQuickOpen : public QDialog
{
    Q_OBJECT

public:
    explicit frmQuickOpen(QWidget &owner);

    // Shows itself at the top of its owner, with these entries, and takes the keyboard. `used`: see
    // QuickList.
    void present(const QList<QuickEntry> &entries, const QStringList &used, const QString &typed = {});

signals:
    void chosen(const QuickEntry &entry);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void show(const QString &typed);
    void choose(const QModelIndex &index);

    QWidget &m_owner;
    QuickList m_list;
    QLineEdit *txtQuickOpen;
    QListView *lvQuickOpen;
    QLabel *lblQuickOpen;
    QStandardItemModel *m_rows;
};

} // namespace quillmere
