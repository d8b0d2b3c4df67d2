#include "stage/forms/ReceiverBar.h"

#include "controls/Named.h"
#include "preview/forms/PreviewFrame.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

namespace quillmere {

namespace {

constexpr int kHeight = 22;  // pixels; it reaches from the menu bar to the picture
constexpr int kGap = 4;      // pixels
constexpr int kInset = 8;    // as the browser has in the frame
constexpr int kWide = 800;   // pixels; above a narrower picture the choices do not stand in a line
constexpr int kLongest = 16; // letters of the longest language's name that are seen

} // namespace

ReceiverBar::ReceiverBar(PreviewFrame &frame, QAction &toggle)
    : QWidget(frame.parentWidget()), m_frame(frame), m_switch(new QToolButton(this)),
      m_button(named(new QToolButton(this), "cmdReceiverChoices", tr("State, language and backdrop"))),
      m_popup(new QFrame(this, Qt::Popup)), m_choices(new QWidget(this)),
      m_line(new QBoxLayout(QBoxLayout::LeftToRight, m_choices)),
      cboState(named(new QComboBox, "cboState", tr("State"))),
      cboLanguage(named(new QComboBox, "cboLanguage", tr("Language"))),
      cboBackdrop(named(new QComboBox, "cboBackdrop", tr("Backdrop")))
{
    setObjectName(QStringLiteral("receiverBar"));
    setAutoFillBackground(true);
    named(m_switch, "cmdReceiver", toggle.iconText());
    m_switch->setDefaultAction(&toggle);
    m_switch->setAutoRaise(true);
    m_switch->setFocusPolicy(Qt::NoFocus); // the picture keeps the keyboard
    m_button->setText(tr("Shown As"));
    m_button->setArrowType(Qt::DownArrow);
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setAutoRaise(true);
    m_popup->setFrameShape(QFrame::StyledPanel);
    (new QVBoxLayout(m_popup))->setContentsMargins(2 * kGap, 2 * kGap, 2 * kGap, 2 * kGap);

    m_line->setContentsMargins(0, 0, 0, 0);
    m_line->setSpacing(kGap);
    cboState->addItems({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    cboState->setToolTip(
        tr("Which entry of a list of colours counts. In the second state a block has the focus."));
    cboLanguage->addItem(tr("As written"));
    cboLanguage->setToolTip(tr("The language in which texts are shown."));
    cboLanguage->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboLanguage->setMinimumContentsLength(kLongest);
    cboBackdrop->addItems({tr("Black"), tr("Chequers"), tr("Test Picture"), tr("Picture...")});
    cboBackdrop->setToolTip(tr("What stands in place of the television picture."));
    addChoice(tr("State"), cboState);
    addChoice(tr("Language"), cboLanguage);
    addChoice(tr("Backdrop"), cboBackdrop);

    connect(cboState, &QComboBox::currentIndexChanged, this, &ReceiverBar::stateChosen);
    connect(cboLanguage, &QComboBox::currentIndexChanged, this, &ReceiverBar::languageChosen);
    connect(cboBackdrop, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index != int(Backdrop::Picture))
            emit backdropChosen();
    });
    connect(cboBackdrop, &QComboBox::activated, this, [this](int index) {
        if (index == int(Backdrop::Picture))
            emit backdropChosen();
    });
    connect(m_button, &QToolButton::clicked, this, [this] {
        m_popup->adjustSize();
        m_popup->move(
            m_button->mapToGlobal(QPoint(m_button->width() - m_popup->width(), m_button->height())));
        m_popup->show();
        cboState->setFocus();
    });
    frame.installEventFilter(this);
    layOut();
}

void ReceiverBar::addChoice(const QString &caption, QComboBox *box)
{
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    m_line->addWidget(label);
    m_line->addWidget(box);
}

void ReceiverBar::showChoices(bool shown)
{
    m_shown = shown;
    layOut();
}

void ReceiverBar::setLanguages(const QStringList &names)
{
    const QString chosen = language();
    {
        const QSignalBlocker blocker(cboLanguage);
        while (cboLanguage->count() > 1)
            cboLanguage->removeItem(1);
        cboLanguage->addItems(names);
    }
    if (!chooseLanguage(chosen)) {
        cboLanguage->setCurrentIndex(0);
        emit languageChosen();
    }
}

int ReceiverBar::state() const
{
    return cboState->currentIndex() + 1;
}

QString ReceiverBar::language() const
{
    return cboLanguage->currentIndex() > 0 ? cboLanguage->currentText() : QString();
}

bool ReceiverBar::chooseLanguage(const QString &name)
{
    for (int i = name.isEmpty() ? 0 : 1; i < cboLanguage->count(); ++i) {
        if (name.isEmpty() || cboLanguage->itemText(i) == name) {
            cboLanguage->setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

Backdrop ReceiverBar::backdrop() const
{
    return Backdrop(cboBackdrop->currentIndex());
}

void ReceiverBar::setBackdrop(Backdrop backdrop)
{
    const QSignalBlocker blocker(cboBackdrop);
    cboBackdrop->setCurrentIndex(int(backdrop));
}

void ReceiverBar::fold(bool folded)
{
    if (m_folded == folded)
        return;
    m_folded = folded;
    m_popup->hide();
    m_line->setDirection(folded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    if (folded)
        m_popup->layout()->addWidget(m_choices);
    else
        m_choices->setParent(this);
    m_choices->show();
}

// Over the upper line of the frame, at its end.
void ReceiverBar::layOut()
{
    fold(m_frame.width() - 2 * kInset < kWide); // the room in it follows the frame
    m_button->setVisible(m_shown && m_folded);
    if (!m_folded)
        m_choices->setVisible(m_shown);
    int width = kGap;
    const auto put = [&](QWidget *part) {
        const int wide = part->sizeHint().width();
        part->setGeometry(width, 0, wide, kHeight);
        width += wide + kGap;
    };
    put(m_switch);
    if (m_shown && m_folded)
        put(m_button);
    else if (m_shown)
        put(m_choices);
    const QRect frame = m_frame.geometry();
    setGeometry(frame.right() - kInset - width, frame.top() + 17 - kHeight, width, kHeight);
    m_frame.setCaptionEnd(width + kInset);
    raise();
}

bool ReceiverBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move ||
        event->type() == QEvent::StyleChange)
        layOut();
    return QWidget::eventFilter(watched, event);
}

} // namespace quillmere
