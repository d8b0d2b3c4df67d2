#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

namespace quillmere {

class OfferBar;

// F6 and Shift+F6 take the keyboard round the panes of the window, also out of those in which Tab means
// something else. An offer that has not been seen comes first.
class PaneRound : public QObject
{
    Q_OBJECT

public:
    // `tab` gives the frame of the tab that is shown.
    PaneRound(QWidget &window, OfferBar &offers, std::function<QWidget *()> tab);

private:
    QList<QWidget *> panes() const;
    void go(int way);

    QWidget &m_window;
    OfferBar &m_offers;
    std::function<QWidget *()> m_tab;
    QPointer<QWidget> m_from; // the pane before the offers
};

} // namespace quillmere
