#pragma once

#include <QStyledItemDelegate>

namespace quillmere {

class ListView;

// Rows with a little air, so that long lists stay readable; each text runs in its own direction, and what is
// marked in it is bold and stays in sight.
class RowDelegate : public QStyledItemDelegate
{
public:
    explicit RowDelegate(ListView *list);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    const ListView *m_list;
};

} // namespace quillmere
