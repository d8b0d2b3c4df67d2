#include "quick/forms/frmQuickOpen.h"

#include "controls/Named.h"
#include "quick/forms/QuickDelegate.h"
#include "rows/ToolTip.h"

#include <QBoxLayout>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMost = 100;    // rows
constexpr int kRows = 12;     // that are seen at a time
constexpr int kWidth = 720;   // pixels
constexpr int kBelowTop = 48; // pixels from the top of the owner
constexpr int kNumber = Qt::UserRole + 10;

QString wordFor(QuickEntry::Kind kind)
{
    switch (kind) {
    case QuickEntry::Kind::Window:
        return QObject::tr("window");
    case QuickEntry::Kind::Block:
        return QObject::tr("block");
    case QuickEntry::Kind::Image:
        return QObject::tr("image");
    case QuickEntry::Kind::Colour:
        return QObject::tr("colour");
    case QuickEntry::Kind::Font:
        return QObject::tr("font");
    case QuickEntry::Kind::String:
        return QObject::tr("text");
    case QuickEntry::Kind::Language:
        return QObject::tr("language");
    case QuickEntry::Kind::File:
        return QObject::tr("file");
    case QuickEntry::Kind::Theme:
        return QObject::tr("theme");
    case QuickEntry::Kind::Command:
        break;
    }
    return QObject::tr("command");
}

} // namespace

frmQuickOpen::frmQuickOpen(QWidget &owner)
    : QDialog(&owner, Qt::Dialog | Qt::FramelessWindowHint), m_owner(owner),
      txtQuickOpen(named(new QLineEdit, "txtQuickOpen", tr("What to go to"))),
      lvQuickOpen(named(new QListView, "lvQuickOpen", tr("Matches"))),
      lblQuickOpen(named(new QLabel, "lblQuickOpen", tr("Number of matches"))),
      m_rows(new QStandardItemModel(this))
{
    setObjectName(QStringLiteral("frmQuickOpen"));
    setWindowTitle(tr("Quick Open"));
    txtQuickOpen->setPlaceholderText(
        tr("Window, block, image, colour, font, text, file or theme; > for commands"));
    txtQuickOpen->setToolTip(tr("Type some letters of a name, in order; Enter goes to the selected row."));
    txtQuickOpen->installEventFilter(this);
    lvQuickOpen->setModel(m_rows);
    lvQuickOpen->setItemDelegate(new QuickDelegate(lvQuickOpen));
    lvQuickOpen->setUniformItemSizes(true);
    lvQuickOpen->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lvQuickOpen->setFocusPolicy(Qt::NoFocus);
    lvQuickOpen->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *frame = new QFrame; // the window has none
    frame->setFrameStyle(QFrame::Box | QFrame::Plain);
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(frame);
    auto *column = new QVBoxLayout(frame);
    column->addWidget(txtQuickOpen);
    column->addWidget(lvQuickOpen);
    column->addWidget(lblQuickOpen);
    connect(txtQuickOpen, &QLineEdit::textChanged, this, &frmQuickOpen::show);
    connect(lvQuickOpen, &QListView::clicked, this, &frmQuickOpen::choose);
}

void frmQuickOpen::present(const QList<QuickEntry> &entries, const QStringList &used, const QString &typed)
{
    m_list.setUsed(used);
    m_list.assign(entries);
    {
        const QSignalBlocker blocker(txtQuickOpen);
        txtQuickOpen->setText(typed);
    }
    show(typed);
    const int row = fontMetrics().height() + 8;
    lvQuickOpen->setFixedHeight(kRows * row + 2 * lvQuickOpen->frameWidth());
    const QSize room = m_owner.size();
    setFixedWidth(std::min(kWidth, room.width() - 2 * kBelowTop));
    adjustSize();
    move(m_owner.mapToGlobal(QPoint((room.width() - width()) / 2, kBelowTop)));
    QDialog::show();
    activateWindow();
    txtQuickOpen->setFocus();
}

// Of a large theme there are megabytes of them, and the next time they are gathered anew.
void frmQuickOpen::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous()) {
        m_list.assign({});
        m_rows->clear();
    }
    QDialog::hideEvent(event);
}

void frmQuickOpen::show(const QString &typed)
{
    int all = 0;
    const QList<int> numbers = m_list.matching(typed, kMost, &all);
    m_rows->clear();
    for (const int number : numbers) {
        const QuickEntry &entry = m_list.entries().at(number);
        auto *item = new QStandardItem(entry.text);
        item->setData(wordFor(entry.kind), QuickDelegate::Kind);
        item->setData(entry.detail, QuickDelegate::Detail);
        item->setData(QVariant::fromValue(m_list.placesIn(typed, number)), QuickDelegate::Places);
        item->setData(number, kNumber);
        item->setToolTip(plainToolTip(entry.detail));
        m_rows->appendRow(item);
    }
    lvQuickOpen->setCurrentIndex(m_rows->index(0, 0));
    lvQuickOpen->verticalScrollBar()->setValue(0);
    const bool areCommands =
        !numbers.isEmpty() && m_list.entries().at(numbers.first()).kind == QuickEntry::Kind::Command;
    lblQuickOpen->setText(all == 0 ? tr("No match.")
                          : all > kMost
                              ? tr("The best %1 of %2 matches. Type more letters.").arg(kMost).arg(all)
                          : areCommands ? (all == 1 ? tr("1 match. Enter runs it.")
                                                    : tr("%1 matches. Enter runs the selected one.").arg(all))
                          : all == 1    ? tr("1 match. Enter goes there.")
                                        : tr("%1 matches. Enter goes there.").arg(all));
}

void frmQuickOpen::choose(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const QuickEntry entry = m_list.entries().at(index.data(kNumber).toInt());
    hide();
    emit chosen(entry);
}

bool frmQuickOpen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != txtQuickOpen || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(lvQuickOpen->currentIndex());
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const int rows = m_rows->rowCount(), by = key->key() == Qt::Key_Down ? 1 : rows - 1;
        if (rows > 0) // round and round
            lvQuickOpen->setCurrentIndex(m_rows->index((lvQuickOpen->currentIndex().row() + by) % rows, 0));
        return true;
    }
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const int row = lvQuickOpen->currentIndex().row() + (key->key() == Qt::Key_PageDown ? kRows : -kRows);
        lvQuickOpen->setCurrentIndex(
            m_rows->index(std::clamp(row, 0, std::max(m_rows->rowCount() - 1, 0)), 0));
        return true;
    }
    default:
        return QDialog::eventFilter(watched, event);
    }
}

void frmQuickOpen::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible())
        hide();
}

} // namespace quillmere
