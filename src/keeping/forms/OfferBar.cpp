#include "keeping/forms/OfferBar.h"

#include "controls/EnterClicks.h"
#include "controls/PathLabel.h"
#include "controls/Scheme.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace quillmere {

OfferBar::OfferBar(QWidget *parent)
    : QFrame(parent), m_line(new QHBoxLayout(this)),
      m_text(new PathLabel(QStringLiteral("lblOffer"), tr("Offer"), this))
{
    setObjectName(QStringLiteral("frOffer"));
    setAutoFillBackground(true);
    takeColours();
    m_line->setContentsMargins(8, 0, 8, 0);
    m_line->setSpacing(4);
    m_text->setMinimumWidth(1); // a long file name gives way, the buttons do not
    m_line->addWidget(m_text);
    hide();
}

void OfferBar::takeColours()
{
    const QPalette notice = noticeColours(QApplication::palette());
    if (palette().color(QPalette::Window) != notice.color(QPalette::Window))
        setPalette(notice);
}

void OfferBar::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        takeColours();
}

void OfferBar::offer(const QString &key, const QString &text, const QList<Choice> &choices)
{
    m_offers.removeIf([&](const Offer &other) { return other.key == key; });
    m_offers.append({key, text, choices});
    m_isUnseen = true;
    showLast();
}

void OfferBar::withdraw(const QString &key)
{
    if (m_offers.removeIf([&](const Offer &other) { return other.key == key; }) > 0)
        showLast();
}

void OfferBar::choose(int index)
{
    const Choice chosen = m_offers.takeLast().choices.at(index);
    m_isUnseen = true; // the one before it
    showLast();
    chosen.act();
}

bool OfferBar::goOn()
{
    m_isUnseen = false;
    if (m_buttons.isEmpty())
        return false;
    if (!m_buttons.contains(window()->focusWidget()))
        m_shown = 1;
    else if (m_shown++ < m_offers.size())
        turn();
    else
        return false;
    m_buttons.first()->setFocus(Qt::ShortcutFocusReason);
    return true;
}

// The one shown goes behind all others.
void OfferBar::turn()
{
    m_offers.prepend(m_offers.takeLast());
    showLast();
}

void OfferBar::add(QWidget *widget)
{
    m_line->addWidget(widget);
    m_buttons.append(widget);
}

QToolButton *OfferBar::addButton(const QString &name, const QString &caption, const QString &accessibleName)
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setAccessibleName(accessibleName);
    button->setText(caption);
    button->setToolTip(tr("Press F6 to focus"));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    QFont underlined = button->font();
    underlined.setUnderline(true);
    button->setFont(underlined);
    clickOnEnter(*button);
    add(button);
    return button;
}

void OfferBar::showLast()
{
    for (QWidget *old : std::as_const(m_buttons)) {
        old->hide();
        old->setObjectName({});
        old->deleteLater(); // it may be the one that has just been pressed
    }
    m_buttons.clear();
    setVisible(!m_offers.isEmpty());
    if (m_offers.isEmpty())
        return;
    const Offer &last = m_offers.last();
    m_text->setText(last.text);
    for (int index = 0; index < last.choices.size(); ++index) {
        if (index > 0) {
            auto *slash = new QLabel(QStringLiteral("/"), this);
            add(slash);
        }
        const QString caption = last.choices[index].caption;
        auto *button = addButton(QStringLiteral("cmdOffer(%1)").arg(index), caption, caption);
        connect(button, &QToolButton::clicked, this, [this, index] { choose(index); });
    }
    if (m_offers.size() > 1) {
        auto *next = addButton(QStringLiteral("cmdOfferNext"), tr("%1 more").arg(m_offers.size() - 1),
                               tr("Next offer"));
        next->setToolTip(tr("Show the next offer (F6)"));
        connect(next, &QToolButton::clicked, this, [this] {
            turn();
            m_buttons.last()->setFocus();
        });
    }
}

} // namespace quillmere
