#pragma once

#include <QScrollArea>

class QBoxLayout;
class QLabel;
class QVBoxLayout;

namespace quillmere {

class RecentCards;
class StartButton;

// What is to be seen at the right before a theme is open: the ways to one.
class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    // Lies over `place`, and moves and grows with it. `example` is the folder that a copy of the example goes
    // to, or is in; empty where there is none.
    StartPage(QWidget &place, const QString &example);

    void setRecent(const QStringList &folders);
    // Shows itself with the keyboard.
    void appear();

    StartButton *cmdOpenTheme, *cmdNewTheme, *cmdOpenExample;
    RecentCards *lvRecent;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    bool goOn(QObject *from, int key);
    QList<StartButton *> buttons() const;

    QWidget &m_place;
    const bool m_hasExample;
    QLabel *lblWelcome, *lblRecent, *lblNoRecent;
    QWidget *m_body;
    QBoxLayout *m_row;
    QVBoxLayout *m_column;
};

} // namespace quillmere
