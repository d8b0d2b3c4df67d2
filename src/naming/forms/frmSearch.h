#pragma once

#include "controls/ModelessDialog.h"
#include "controls/RowsHistory.h"
#include "naming/TextSearch.h"

#include <QThreadPool>

#include <functional>
#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace quillmere {

class ListView;
class LiveIndex;
class Talk;

// Looks for a text in all windows or in the open one, beside the window's own thread, and replaces it in the
// places that are ticked. What is listed is kept up to date with what is edited.
class frmSearch : public ModelessDialog
{
    Q_OBJECT

public:
    // `change` makes an edit; false where it was not made.
    frmSearch(LiveIndex &index, std::function<bool(const ThemeEdit &)> change, Talk &talk, QWidget &owner);
    ~frmSearch() override; // stops what is under way

    // Shows the dialog with this text to look for; one that is empty leaves the text before.
    void openFor(const QString &text);
    // What was found is of no use any more.
    void forget();

signals:
    // A place of `search`; see Destination.
    void placeChosen(const FoundPlaces &found, int number, const TextSearch &search);

private:
    void giveTips();
    QLayout *makeQuestion();
    QLayout *makeProgress();
    QLayout *makeReplacement();
    TextSearch asked() const;
    void cmdSearch_Click();
    void cmdSearchStop_Click();
    // `isFirst` is false where the places are those of a list that is shown.
    void start(bool isFirst);
    void finish(std::optional<FoundPlaces> found);
    void stop();
    void lookAgain();
    void renew(const std::optional<FoundPlaces> &found);
    void showFound();
    void say();
    void showTicked();
    void tickAll(bool ticked);
    void cmdSearchReplace_Click();
    // Finds the places again in windows that were opened or closed since, and so are other texts.
    bool renewPlaces();

    LiveIndex &m_index;
    std::function<bool(const ThemeEdit &)> m_change;
    Talk &m_talk;
    TextSearch m_search; // that found these
    QString m_openThen;  // the window in the source box at that time
    FoundPlaces m_found;
    ListRows m_rows; // see PlaceRows.h
    RowsHistory m_history{m_rows, RowsHistory::Of::Ticks};
    QLineEdit *txtSearch;
    QCheckBox *chkSearchCase;
    QComboBox *cbSearchIn;
    QPushButton *cmdSearch;
    QProgressBar *barSearch;
    QPushButton *cmdSearchStop;
    QLabel *lblSearch;
    ListView *lvUses;
    QLineEdit *txtSearchReplace;
    QPushButton *cmdSearchAll, *cmdSearchNone, *cmdSearchReplace;
    std::stop_source m_stop;
    int m_run = 0; // what an older one finds comes too late
    bool m_isSearching = false, m_again = false;
    bool m_isListed = false; // something was searched for, and what was found is still shown
    QThreadPool m_worker;
};

} // namespace quillmere
