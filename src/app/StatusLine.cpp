#include "app/StatusLine.h"

#include "keeping/forms/OfferBar.h"

#include "browser/forms/WebBrowser.h"
#include "controls/EnterClicks.h"
#include "controls/Named.h"
#include "rows/ToolTip.h"
#include "source/forms/SourceBox.h"
#include "widgets/forms/SourceTab.h"

#include <QActionGroup>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolButton>
#include <QToolTip>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMessageLeft = 6; // pixels, as Qt has it

// Its menu needs no arrow. A style sheet would take that away as well, and keep the colours of its time.
class PlainMenuButton : public QToolButton
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QStylePainter painter(this);
        QStyleOptionToolButton option;
        initStyleOption(&option);
        option.features &= ~QStyleOptionToolButton::HasMenu;
        painter.drawComplexControl(QStyle::CC_ToolButton, option);
    }
};

} // namespace

StatusLine::StatusLine(QStatusBar &bar)
    : QObject(&bar), offers(new OfferBar),
      changes(named(new QToolButton, "cmdShowChanges", tr("Show what the last command changed"))), m_bar(bar),
      m_behind(named(new QLabel, "lblPreview", tr("State of the preview"))),
      m_caret(named(new QLabel, "lblCaret", tr("Caret"))),
      m_blocks(named(new QLabel, "lblBlocks", tr("Number of blocks"))),
      m_problems(named(new QToolButton, "cmdProblems", tr("Problems of the theme"))),
      m_page(named(new PlainMenuButton, "cmdCodePage", tr("Code page")))
{
    changes->setText(tr("Show Changes"));
    changes->setToolTip(tr("Show the windows that were changed, before and after"));
    changes->setAutoRaise(true);
    changes->hide();
    m_problems->setAutoRaise(true);
    m_problems->setToolTip(tr("Show the Check tab"));
    m_problems->hide();
    connect(m_problems, &QToolButton::clicked, this, &StatusLine::problemsChosen);
    m_page->setAutoRaise(true);
    m_page->setPopupMode(QToolButton::InstantPopup);
    m_page->setToolTip(tr("How the bytes of files become text"));
    auto *rules = new QMenu(m_page);
    auto *group = new QActionGroup(rules);
    const auto add = [&](const char *name, const QString &caption, const QString &tip, CodePageRule rule) {
        QAction *item = rules->addAction(caption);
        item->setObjectName(QLatin1String(name));
        item->setToolTip(tip);
        item->setCheckable(true);
        m_rules.insert(rule, item);
        group->addAction(item);
        connect(item, &QAction::triggered, this, [this, rule] { emit ruleChosen(rule); });
    };
    add("mnuCodePageAutomatic", tr("Automatic"),
        tr("UTF-8 if the file is valid UTF-8, otherwise Windows-1252"), CodePageRule::Automatic);
    add("mnuCodePage1252", tr("Windows-1252"), tr("One byte a character, in every file"),
        CodePageRule::Windows1252);
    rules->setToolTipsVisible(true);
    m_page->setMenu(rules);

    for (QToolButton *button : {changes, m_problems, m_page})
        clickOnEnter(*button);
    m_bar.addPermanentWidget(offers);
    m_bar.addPermanentWidget(changes);
    for (QWidget *part :
         {static_cast<QWidget *>(m_behind), static_cast<QWidget *>(m_caret), static_cast<QWidget *>(m_blocks),
          static_cast<QWidget *>(m_problems), static_cast<QWidget *>(m_page)})
        m_bar.addPermanentWidget(part);
    for (QLabel *label : {m_behind, m_caret, m_blocks}) {
        label->setContentsMargins(8, 0, 8, 0);
        label->setMinimumWidth(1); // in a small window they give way
    }
    m_bar.setMinimumWidth(1); // which would not get so small otherwise
    m_bar.installEventFilter(this);
    showCaret(1, 1);
    showBlocks(0);
    showCodePage(CodePage::Ascii);
    showRule(CodePageRule::Automatic);
}

// As far as the first of the parts at the right.
QRect StatusLine::messageRoom() const
{
    int right = m_bar.width() - kMessageLeft;
    for (const QWidget *part : m_bar.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (part->isVisible())
            right = std::min(right, part->x() - 2);
    }
    return {QPoint(kMessageLeft, 0), QPoint(right, m_bar.height() - 1)};
}

bool StatusLine::isCut() const
{
    return m_bar.fontMetrics().horizontalAdvance(m_bar.currentMessage()) > messageRoom().width();
}

void StatusLine::drawCut() const
{
    QStylePainter painter(&m_bar);
    QStyleOption option;
    option.initFrom(&m_bar);
    painter.drawPrimitive(QStyle::PE_PanelStatusBar, option);
    const QRect room = messageRoom();
    painter.setPen(m_bar.palette().color(QPalette::WindowText));
    painter.drawText(room, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(m_bar.currentMessage(), Qt::ElideRight, room.width()));
}

// Qt cuts a long message off without a sign of it.
bool StatusLine::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && isCut()) {
        drawCut();
        return true;
    }
    if (event->type() == QEvent::ToolTip && isCut()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           plainToolTip(m_bar.currentMessage()), &m_bar);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void StatusLine::showCaret(int line, int column)
{
    m_caret->setText(tr("Line %1, column %2").arg(line).arg(column));
}

void StatusLine::showBlocks(int count)
{
    m_blocks->setText(count == 1 ? tr("1 block") : tr("%1 blocks").arg(count));
}

void StatusLine::watchSource(const SourceTab &source, const WebBrowser &browser)
{
    const SourceBox *text = source.txtSnippet;
    connect(text, &SourceBox::cursorPositionChanged, this,
            [this, text] { showCaret(text->textCursor().blockNumber() + 1, int(text->caretColumn())); });
    connect(&source, &SourceTab::blocksListed, this, [this, &source] { showBlocks(source.blocks.count()); });
    connect(&source, &SourceTab::fellBehind, m_behind,
            [this] { m_behind->setText(tr("Preview is behind")); });
    const auto caughtUp = [this, &source, &browser] {
        if (!source.isBehind() && !browser.isBusy())
            m_behind->clear();
    };
    connect(&source, &SourceTab::caughtUp, m_behind, caughtUp);
    connect(&browser, &WebBrowser::written, m_behind, caughtUp);
    connect(&browser, &WebBrowser::failed, m_behind, caughtUp);
}

void StatusLine::showCodePage(CodePage page)
{
    m_page->setText(codePageName(page));
}

void StatusLine::showProblems(const QString &summary)
{
    m_problems->setText(summary);
    m_problems->setVisible(!summary.isEmpty());
}

void StatusLine::showRule(CodePageRule rule)
{
    m_rules[rule]->setChecked(true);
}

} // namespace quillmere
