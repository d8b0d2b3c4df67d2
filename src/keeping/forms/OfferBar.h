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
// button turns to the next where there are several. F6 goes to the first button, and from there to the next
// offer.
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

private:
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
    QHBoxLayout *m_line;
    QLabel *m_text;
    QList<QWidget *> m_buttons; // and what stands between them
};

} // namespace quillmere
