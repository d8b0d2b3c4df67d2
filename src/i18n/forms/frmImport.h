#pragma once

#include "controls/RowsHistory.h"
#include "i18n/LanguageImport.h"
#include "rows/ListRows.h"

#include <QDialog>

#include <functional>

class QLabel;
class QPushButton;

namespace quillmere {

class ListView;

// Shows what a file would change in the open language, and takes what is ticked.
class frmImport : public QDialog
{
    Q_OBJECT

public:
    // `take` is given the changes that are ticked.
    frmImport(const QString &file, const QString &language, const ImportPlan &plan,
              std::function<void(const QList<ImportChange> &)> take, QWidget *parent);

private:
    QLayout *makeButtons();
    void makeLeftOut(const ImportPlan &plan, QLayout &column);
    void lvImport_Check(int row);
    void tickAll(bool on);
    void showCount();
    void cmdImport_Click();

    QList<ImportChange> m_changes; // by row
    qsizetype m_choices;           // from which on several may be meant for one string
    int m_absent;                  // strings that the file lacks
    std::function<void(const QList<ImportChange> &)> m_take;
    ListRows m_rows; // text = source, sub-item 1 = translation now, 2 = the new one, 3 = what that is
    RowsHistory m_history{m_rows, RowsHistory::Of::Ticks};
    ListView *lvImport;
    QLabel *lblImportNone; // in its place
    QLabel *lblImportCount;
    QPushButton *cmdImport, *cmdImportCancel;
};

} // namespace quillmere
