#include "widgets/forms/ColourCombo.h"

#include "rows/ListRows.h"

#include <QAction>
#include <QCompleter>
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

} // namespace

void takeOwnValues(QComboBox *combo)
{
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    combo->completer()->setCompletionMode(QCompleter::PopupCompletion);
    combo->completer()->setFilterMode(Qt::MatchContains);
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
