#pragma once

#include "i18n/Dictionary.h"

#include <QStyledItemDelegate>

#include <functional>
#include <optional>

namespace quillmere {

class ListView;

// Draws at the end of a cell how much of a language is translated; the text of the cell has what room is
// left. A tooltip has the numbers.
class ShareDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // `counts` gives nothing for a row without a share.
    ShareDelegate(ListView &list, std::function<std::optional<StringCounts>(int row)> counts);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    ListView &m_list;
    std::function<std::optional<StringCounts>(int row)> m_counts;
};

} // namespace quillmere
