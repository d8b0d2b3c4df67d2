#pragma once

#include <QStyledItemDelegate>

namespace quillmere {

// Draws an entry of quick open: its text with the letters that were typed in bold, what it is at the right,
// and details between them.
class QuickDelegate : public QStyledItemDelegate
{
public:
    // Roles of the model: a word for the kind, the details, and the places of letters, QList<int>.
    enum Role { Kind = Qt::UserRole, Detail, Places };

    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

} // namespace quillmere
