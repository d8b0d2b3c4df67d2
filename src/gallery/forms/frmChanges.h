#pragma once

#include "controls/ModelessDialog.h"
#include "controls/RowsHistory.h"
#include "rows/ListRows.h"
#include "theme/ReceiverParts.h"

#include <QImage>

#include <functional>

class QButtonGroup;
class QLabel;
class QPushButton;
class QSlider;

namespace quillmere {

class ListView;
class PageCamera;

// A window that a command has changed: its text before and after.
struct ChangedWindow
{
    QString name;
    QString path;
    QString before, after;
};

// What both sides are drawn from.
struct ChangesTheme
{
    QString folder;
    QSize screen; // pixels
    ReceiverParts before, after;
};

class ChangesPicture;

// Shows windows as the receiver does before and after a change: side by side, one over the other with a
// slider between them, and where they differ.
class frmChanges : public ModelessDialog
{
    Q_OBJECT

public:
    // `takeBack` gets the windows whose ticks are gone; without one there are no ticks.
    frmChanges(const QList<ChangedWindow> &windows, const ChangesTheme &theme,
               std::function<void(const QList<ChangedWindow> &)> takeBack, QWidget &owner);
    ~frmChanges() override;

private:
    QLayout *makeList();
    QLayout *makePicture();
    QLayout *makeButtons();
    void showRow();
    void drawNext();
    void drawn(int row, const QImage &before, const QImage &after);
    void enable();
    void cmdTakeBack_Click();

    QList<ChangedWindow> m_windows;
    ChangesTheme m_theme;
    std::function<void(const QList<ChangedWindow> &)> m_takeBack;
    ListRows m_rows;
    RowsHistory m_history{m_rows, RowsHistory::Of::Ticks};
    ListView *lvChanges;
    ChangesPicture *m_picture;
    QButtonGroup *m_view;
    QSlider *sldBlend;
    QLabel *lblChanges;
    QPushButton *cmdTakeBack;
    int m_shown = -1, m_drawing = -1; // rows
    bool m_isShownDrawn = false;
    QList<bool> m_isCounted;
    std::unique_ptr<PageCamera> m_camera;
};

} // namespace quillmere
