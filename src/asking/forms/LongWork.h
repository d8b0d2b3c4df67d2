#pragma once

#include "files/Progress.h"

#include <QElapsedTimer>
#include <QObject>

class QProgressBar;
class QPushButton;
class QStatusBar;

namespace quillmere {

// Lives as long as work that may be long. Short work shows nothing but the wait cursor. Longer work has a
// progress bar and a button "Cancel" in the status bar, or below the dialog that is in front, and Esc cancels
// too; the window goes on being drawn, and all else that the person does meanwhile comes to nothing, so that
// no other work begins inside this one. Timers do run: what they do must not need the work to be done.
class LongWork : public QObject
{
    Q_OBJECT

public:
    LongWork(QStatusBar &bar, const QString &what);
    ~LongWork() override;

    // See Progress. `all` is 0 where nobody knows.
    void tell(qsizetype done, qsizetype all);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show();

    QStatusBar &m_bar;
    QString m_what;
    QElapsedTimer m_since, m_drawn;
    QWidget *m_panel = nullptr; // once it is shown
    QProgressBar *m_progress = nullptr;
    QPushButton *m_cancel = nullptr;
    bool m_cancelled = false;
};

} // namespace quillmere
