#pragma once

#include "checks/forms/LiveCheck.h"
#include "checks/forms/ProblemRows.h"
#include "controls/TabFrame.h"

#include <array>

class QLabel;
class QLineEdit;
class QToolButton;

namespace quillmere {

class ListView;

// The Check tab: what is wrong with the open theme.
class CheckTab : public TabFrame
{
    Q_OBJECT

public:
    CheckTab(LiveCheck &check, QWidget *parent = nullptr);

    // "2 errors, 1 warning, 0 notes"; empty without a checked theme.
    QString summary() const;

signals:
    // Where the problem is: the file as it is meant, the range in it, and the row where it is a catalogue.
    void placeChosen(const QString &file, quillmere::Range range, qint32 row);
    void summaryChanged(const QString &summary);
    // The context menu of the list, or Alt+Enter: what can be done about the selected problem, if one is.
    void menuWanted(const QList<quillmere::Problem> &problems, const QPoint &at, QWidget *list);

protected:
    void layOut(int height) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void checked();
    void showChosen();
    void showDetail();
    void open(int row);
    void askForMenu(const QPoint &at);

    LiveCheck &m_check;
    ProblemRows m_rows;
    QLineEdit *txtCheckFilter;
    std::array<QToolButton *, 3> m_toggles; // by severity
    ListView *lvCheck;
    QLabel *m_detail;
    std::optional<Problem> m_current; // stays selected when the rows become others
    bool m_isShowing = false;
};

} // namespace quillmere
