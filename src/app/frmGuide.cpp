#include "app/frmGuide.h"

#include "app/GuideText.h"
#include "controls/Named.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeWidget>

namespace quillmere {

namespace {

constexpr int kWidth = 1060, kHeight = 720; // pixels
constexpr int kContents = 260;              // of the width
constexpr int kFind = 220;

} // namespace

frmGuide::frmGuide(const QString &folder, QWidget &owner)
    : ModelessDialog(QStringLiteral("frmGuide"), owner),
      txtGuide(named(new GuideText(folder), "txtGuide", tr("User guide"))),
      tvGuide(named(new QTreeWidget, "tvGuide", tr("Contents"))),
      txtGuideFind(named(new QLineEdit, "txtGuideFind", tr("Find in the guide"))),
      lblGuideFind(named(new QLabel, "lblGuideFind", tr("Result of the search"))),
      cmdGuideBack(button("cmdGuideBack", tr("Back"), tr("Back to where you were. (Alt+Left)"))),
      cmdGuideForward(button("cmdGuideForward", tr("Forward"), tr("Forward again. (Alt+Right)")))
{
    setWindowTitle(tr("User Guide"));
    txtGuide->setToolTip(tr("The text of the guide. Click a link to go there."));
    tvGuide->setHeaderHidden(true);
    tvGuide->setToolTip(tr("The chapters of the guide. Click one to go there."));
    txtGuideFind->setPlaceholderText(tr("Find in the guide"));
    txtGuideFind->setToolTip(tr("Type words and press Enter to find the next place. (Ctrl+F)"));
    txtGuideFind->setClearButtonEnabled(true);
    txtGuideFind->setMaximumWidth(kFind);
    txtGuideFind->installEventFilter(this);
    auto *line = new QHBoxLayout;
    line->addWidget(cmdGuideBack);
    line->addWidget(cmdGuideForward);
    line->addStretch();
    line->addWidget(lblGuideFind);
    line->addWidget(txtGuideFind, 1);
    auto *parts = new QSplitter;
    parts->addWidget(tvGuide);
    parts->addWidget(txtGuide);
    parts->setStretchFactor(1, 1);
    parts->setSizes({kContents, kWidth - kContents});
    auto *column = new QVBoxLayout(this);
    column->addLayout(line);
    column->addWidget(parts, 1);
    resize(QSize(kWidth, kHeight).boundedTo(owner.size()));
    setTabOrder(tvGuide, txtGuide);
    setTabOrder(txtGuide, cmdGuideBack);
    setTabOrder(cmdGuideBack, cmdGuideForward);
    setTabOrder(cmdGuideForward, txtGuideFind);

    connect(cmdGuideBack, &QToolButton::clicked, txtGuide, &GuideText::goBack);
    connect(cmdGuideForward, &QToolButton::clicked, txtGuide, &GuideText::goForward);
    connect(txtGuide, &GuideText::headingsChanged, this, &frmGuide::showContents);
    connect(txtGuide, &GuideText::moved, this, [this] {
        cmdGuideBack->setEnabled(txtGuide->canGoBack());
        cmdGuideForward->setEnabled(txtGuide->canGoForward());
    });
    connect(txtGuide->verticalScrollBar(), &QScrollBar::valueChanged, this, &frmGuide::markHeading);
    connect(tvGuide, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem *item) {
        if (item)
            txtGuide->goTo(item->data(0, Qt::UserRole).toInt());
    });
    connect(txtGuideFind, &QLineEdit::textChanged, lblGuideFind, &QLabel::clear);
    showContents();
    emit txtGuide->moved();
}

QToolButton *frmGuide::button(const char *name, const QString &caption, const QString &tip)
{
    auto *made = named(new QToolButton, name, caption);
    made->setText(caption);
    made->setToolTip(tip);
    made->setAutoRaise(true);
    made->setFocusPolicy(Qt::StrongFocus);
    return made;
}

void frmGuide::open(const QStringList &words)
{
    if (!isVisible()) {
        present(Keyboard::Takes);
        txtGuide->showPlace(txtGuide->placeOf(words));
    }
    present(Keyboard::Takes);
    txtGuide->setFocus();
}

void frmGuide::showContents()
{
    const QSignalBlocker blocker(tvGuide);
    tvGuide->clear();
    QTreeWidgetItem *above = nullptr;
    for (const GuideText::Heading &heading : txtGuide->headings()) {
        const QStringList text(heading.text);
        auto *item = above && heading.level > 2 ? new QTreeWidgetItem(above, text)
                                                : new QTreeWidgetItem(tvGuide, text);
        item->setData(0, Qt::UserRole, heading.position);
        if (heading.level <= 2)
            above = item;
    }
    tvGuide->expandAll();
}

// The heading of what stands at the top.
void frmGuide::markHeading()
{
    const int position = txtGuide->cursorForPosition(QPoint(20, 40)).position();
    QTreeWidgetItem *now = nullptr;
    for (QTreeWidgetItemIterator it(tvGuide); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toInt() <= position)
            now = *it;
    }
    const QSignalBlocker blocker(tvGuide);
    tvGuide->setCurrentItem(now);
}

// Begins again at the other end.
void frmGuide::find(bool backwards)
{
    const QString words = txtGuideFind->text();
    if (words.isEmpty())
        return;
    const auto flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor before = txtGuide->textCursor();
    bool isFound = txtGuide->find(words, flags);
    if (!isFound) {
        txtGuide->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
        isFound = txtGuide->find(words, flags);
        if (!isFound)
            txtGuide->setTextCursor(before);
    }
    lblGuideFind->setText(isFound ? QString() : tr("Not found"));
}

bool frmGuide::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtGuideFind && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            find(key->modifiers() & Qt::ShiftModifier);
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            txtGuide->setFocus();
            return true;
        }
    }
    return ModelessDialog::eventFilter(watched, event);
}

void frmGuide::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Find)) {
        txtGuideFind->setFocus();
        txtGuideFind->selectAll();
    } else if (event->key() == Qt::Key_F3) {
        find(event->modifiers() & Qt::ShiftModifier);
    } else {
        ModelessDialog::keyPressEvent(event);
    }
}

} // namespace quillmere
