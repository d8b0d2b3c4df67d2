#include "app/PaneRound.h"

#include "keeping/forms/OfferBar.h"

#include <QShortcut>
#include <QWidget>

#include <algorithm>

namespace quillmere {

namespace {

bool isInside(const QWidget *pane, const QWidget *widget)
{
    return pane && widget && (pane == widget || pane->isAncestorOf(widget));
}

// The first control of a frame that Tab would come to.
QWidget *firstControl(QWidget *frame)
{
    for (QWidget *next = frame->nextInFocusChain(); next != frame; next = next->nextInFocusChain()) {
        if (frame->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
            next->focusPolicy() & Qt::TabFocus)
            return next;
    }
    return nullptr;
}

} // namespace

PaneRound::PaneRound(QWidget &window, OfferBar &offers, std::function<QWidget *()> tab)
    : QObject(&window), m_window(window), m_offers(offers), m_tab(std::move(tab))
{
    for (const int way : {1, -1}) {
        const QKeySequence keys(way > 0 ? QKeySequence(Qt::Key_F6) : QKeySequence(Qt::SHIFT | Qt::Key_F6));
        auto *go = new QShortcut(keys, &window);
        connect(go, &QShortcut::activated, this, [this, way] { this->go(way); });
    }
}

QList<QWidget *> PaneRound::panes() const
{
    QWidget *frame = m_tab();
    auto *blocks = frame->findChild<QWidget *>(QStringLiteral("lvBlock"));
    auto *source = frame->findChild<QWidget *>(QStringLiteral("txtSnippet"));
    auto *picture = m_window.findChild<QWidget *>(QStringLiteral("overview")); // where it covers the picture
    if (!picture || !picture->isVisible())
        picture = m_window.findChild<QWidget *>(QStringLiteral("startPage"));
    if (!picture || !picture->isVisible())
        picture = m_window.findChild<QWidget *>(QStringLiteral("wb"));
    auto *zoom = m_window.findChild<QWidget *>(QStringLiteral("cboZoom"));
    QList<QWidget *> found = {m_window.findChild<QWidget *>(QStringLiteral("TabStrip4")),
                              blocks ? blocks : firstControl(frame), source, picture, zoom};
    found.removeIf([](const QWidget *pane) { return !pane || !pane->isVisible() || !pane->isEnabled(); });
    return found;
}

void PaneRound::go(int way)
{
    const QWidget *now = m_window.focusWidget();
    const bool isInOffer = m_offers.isAncestorOf(now);
    const QList<QWidget *> all = panes();
    const auto at = std::ranges::find_if(all, [now](const QWidget *pane) { return isInside(pane, now); });
    // A control beside the first of its frame is in that frame.
    qsizetype from = at != all.end()          ? at - all.begin()
                     : isInside(m_tab(), now) ? std::min<qsizetype>(1, all.size() - 1)
                                              : -1;
    if (isInOffer)
        from = all.indexOf(m_from);
    const bool wraps = way > 0 ? from + 1 >= all.size() : from <= 0;
    if (way > 0 ? isInOffer || wraps || m_offers.isUnseen() : !isInOffer && wraps) {
        if (!isInOffer)
            m_from = wraps ? (way > 0 ? nullptr : all.first()) : all.value(from);
        if (m_offers.goOn())
            return;
    }
    if (all.isEmpty())
        return;
    const qsizetype next = wraps ? (way > 0 ? 0 : all.size() - 1) : from + way;
    all[next]->setFocus(way > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

} // namespace quillmere
