#pragma once

#include "gallery/forms/OverviewPictures.h"
#include "gallery/forms/OverviewRows.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace quillmere {

class OverviewList;
class PreviewFrame;
class Talk;

// All windows of a theme as the receiver shows them, in the place of the picture: it lies over the browser,
// which goes on below as ever.
class Overview : public QWidget
{
    Q_OBJECT

public:
    Overview(PreviewFrame &frame, const ThemeProject &theme, OverviewPictures::TextOf text, Talk &talk);

    // Takes the place of the picture, where one was; with the keyboard, unless that is to stay.
    enum class Keyboard { Stays, Comes };
    void appear(Keyboard keyboard);
    // Gives the place back, and the keyboard to where it was.
    void leave();

    // The catalogue of the theme has other windows, or the theme is another one.
    void showWindows();

    OverviewRows rows;
    OverviewPictures pictures;

signals:
    // A double click on a window, or Enter.
    void windowChosen(const QString &path);
    // It is there, or has gone.
    void shown(bool isShown);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void filter(const QString &part);
    void look();
    void sayCurrent();
    void showCount();
    void goTo(int number, bool isSelected);

    PreviewFrame &m_frame;
    const ThemeProject &m_theme;
    Talk &m_talk;
    QString m_folder;
    QLineEdit *txtOverview;
    QLabel *lblOverview;
    OverviewList *lvOverview;
    QList<int> m_seen;
    QPointer<QWidget> m_before; // had the keyboard
    QTimer m_look;
    QTimer m_resized; // until the size has come to rest
    bool m_isResetting = false;
};

} // namespace quillmere
