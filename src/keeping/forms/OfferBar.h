#pragma once

#include <QFrame>
#include <QList>
#include <QString>

#include <functional>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace quillmere {

// A line that offers something and waits as long as it takes: a text and buttons, "Unsaved text of 12:03.
// Restore / Discard". One offer is shown, the last made; when it has been answered, the one before it. A
// button turns to the next where there are several.
class OfferBar : public QFrame
{
    Q_OBJECT

public:
    struct Choice
    {
        QString caption;
        std::function<void()> act; // the offer is gone when it is called
    };

    explicit OfferBar(QWidget *parent = nullptr);

    // Takes the place of an offer with the same key.
    void offer(const QString &key, const QString &text, const QList<Choice> &choices);
    void withdraw(const QString &key);
    // Whether there is an offer to which the keyboard has not been taken yet.
    bool isUnseen() const { return m_isUnseen && !m_offers.isEmpty(); }
    // Takes the keyboard to the first button, and from there to the next offer. False where there is no
    // further one.
    bool goOn();

protected:
    void changeEvent(QEvent *event) override;

private:
    void takeColours();
    struct Offer
    {
        QString key;
        QString text;
        QList<Choice> choices;
    };

    void showLast();
    void choose(int index);
    void turn();
    void add(QWidget *widget);
    QToolButton *addButton(const QString &name, const QString &caption, const QString &accessibleName);

    QList<Offer> m_offers;
    bool m_isUnseen = false;
    int m_shown = 0; // offers that goOn() has led to
    QHBoxLayout *m_line;
    QLabel *m_text;
    QList<QWidget *> m_buttons; // and what stands between them
};

} // namespace quillmere
