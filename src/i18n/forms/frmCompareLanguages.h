#pragma once

#include "controls/ModelessDialog.h"
#include "i18n/forms/CompareModel.h"
#include "i18n/forms/Speller.h"
#include "rows/ListRows.h"

#include <QTimer>

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace quillmere {

class ListView;

// Languages side by side: every source with what each of them says, to be filtered and typed into. What is
// typed goes where the owner puts it, and what was done here can be taken back here.
class frmCompareLanguages : public ModelessDialog
{
    Q_OBJECT

public:
    explicit frmCompareLanguages(QWidget &owner);

    // Shows languages as they are now; the place in the table stays.
    void showLanguages(const QList<ComparedLanguage> &languages);
    // Whether there is something to take back, and to do again.
    void setSteps(bool canUndo, bool canRedo);

    CompareModel model;

signals:
    // The dialog is seen, and wants to be told of changes.
    void shown();
    void undoWanted();
    void redoWanted();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void makeTable();
    void makeSteps();
    QLayout *makeFilter();
    void chooseColumns();
    void filter();
    QList<int> chosenLanguages() const;

    LanguageTable m_table;
    Speller m_speller; // of the cell that is typed into
    ListRows m_languages;
    ListView *lvCompareLanguages;
    QTableView *tblCompare;
    QLineEdit *txtCompareFilter;
    QCheckBox *chkCompareMissing;
    QLabel *lblCompareFound;
    QAction *m_undo, *m_redo;
    QTimer m_soon; // ticks change many at a time
};

} // namespace quillmere
