#pragma once

#include <QStyledItemDelegate>

namespace quillmere {

// Draws an entry of a list of completions: what it looks like, its name, and what it stands for.
class CompletionDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Of the pictures, pixels.
    static constexpr QSize kPicture = QSize(48, 32);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    int drawLook(QPainter *painter, const QRect &place, const QModelIndex &index,
                 const QPalette &palette) const;
};

} // namespace quillmere
