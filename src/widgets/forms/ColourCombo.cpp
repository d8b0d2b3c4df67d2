#include "widgets/forms/ColourCombo.h"

#include "rows/ListRows.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>

#include <limits>

namespace quillmere {

namespace {

constexpr int kCodeRole = Qt::UserRole;
constexpr QSize kChip{16, 16}; // pixels

// A text that is no colour gets an empty chip.
QIcon chipOf(const QString &code, const QWidget *on)
{
    QPixmap chip(kChip * on->devicePixelRatio());
    chip.setDevicePixelRatio(on->devicePixelRatio());
    chip.fill(Qt::transparent);
    const QColor colour(code);
    QPainter painter(&chip);
    painter.setPen(
        QPen(on->palette().color(QPalette::Mid), 1, colour.isValid() ? Qt::SolidLine : Qt::DotLine));
    painter.setBrush(colour.isValid() ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawRect(QRect({1, 1}, kChip - QSize(3, 3)));
    return chip;
}

// Draws the chips of the entries. As decorations they would stand in the box as well, where typing leaves
// them behind.
class ChipDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = kChip;
        option->icon = chipOf(index.data(kCodeRole).toString(), option->widget);
    }
};

// The list of suggestions takes the key and the click that close it. What was meant for the box or for a
// button beside it goes on to there.
class PassingOn : public QObject
{
public:
    explicit PassingOn(QComboBox *combo)
        : QObject(combo->completer()->popup()), m_combo(combo), m_popup(combo->completer()->popup())
    {
        m_popup->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            return passKey(static_cast<QKeyEvent *>(event));
        if (event->type() == QEvent::MouseButtonPress)
            return passClick(static_cast<QMouseEvent *>(event));
        if (event->type() == QEvent::FocusIn)
            return true; // or the first suggestion would be the current one, though nobody chose it
        return QObject::eventFilter(watched, event);
    }

private:
    void close()
    {
        const QModelIndex chosen = m_popup->selectionModel()->selectedIndexes().value(0);
        m_popup->hide();
        if (chosen.isValid())
            m_combo->setEditText(chosen.data().toString());
    }

    bool passKey(QKeyEvent *event)
    {
        if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
            return false;
        close();
        QKeyEvent again(event->type(), event->key(), event->modifiers(), event->text());
        QCoreApplication::sendEvent(m_combo, &again);
        return true;
    }

    bool passClick(QMouseEvent *event)
    {
        const QPoint place = event->globalPosition().toPoint();
        if (m_popup->rect().contains(m_popup->mapFromGlobal(place)))
            return false;
        close();
        QWidget *under = QApplication::widgetAt(place);
        if (!under || under->window() != m_combo->window())
            return true;
        // The release goes to where the press was, so it has to be given as well.
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons down = type == QEvent::MouseButtonPress ? event->buttons() : Qt::NoButton;
            QMouseEvent again(type, under->mapFromGlobal(event->globalPosition()), event->globalPosition(),
                              event->button(), down, event->modifiers());
            QCoreApplication::sendEvent(under, &again);
        }
        return true;
    }

    QComboBox *m_combo;
    QAbstractItemView *m_popup;
};

} // namespace

void takeOwnValues(QComboBox *combo)
{
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    combo->completer()->setCompletionMode(QCompleter::PopupCompletion);
    combo->completer()->setFilterMode(Qt::MatchContains);
    new PassingOn(combo);
    // A box that is left would take up the entry that differs in letter case alone.
    QObject::disconnect(combo->lineEdit(), &QLineEdit::editingFinished, combo, nullptr);
}

ColourCombo::ColourCombo(QWidget *parent) : QComboBox(parent)
{
    takeOwnValues(this);
    setItemDelegate(new ChipDelegate(this));
    m_chip = lineEdit()->addAction(chipOf(QString(), this), QLineEdit::LeadingPosition);
    connect(this, &QComboBox::editTextChanged, this, &ColourCombo::showChip);
}

void ColourCombo::setColours(const ListRows &colours)
{
    clear();
    for (const ListRows::Row &row : colours.rows())
        addItem(row.sub(1), row.sub(2));
}

void ColourCombo::showChip(const QString &text)
{
    const int entry = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    // A name that the theme does not define may still be one that the browser knows.
    m_chip->setIcon(chipOf(entry >= 0 ? itemData(entry, kCodeRole).toString() : text, this));
}

} // namespace quillmere
