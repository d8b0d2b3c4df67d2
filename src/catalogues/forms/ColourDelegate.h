#pragma once

#include <QStyledItemDelegate>

namespace quillmere {

// Shows a colour code with a chip of its colour before it. Codes that stand for no colour have no chip, and
// still stand in line with the others.
class ColourDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace quillmere
