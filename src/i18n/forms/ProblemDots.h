#pragma once

#include "i18n/forms/StringFilters.h"

#include <QStyledItemDelegate>

namespace quillmere {

class ListView;

// Draws a dot at the end of the cell of a string that the checks have something to say of, in the colour of
// the worst; over the dot a tooltip says what. The text of the cell has what room is left.
class ProblemDots : public QStyledItemDelegate
{
    Q_OBJECT

public:
    ProblemDots(ListView &list, const StringFilters &filters);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    ListView &m_list;
    const StringFilters &m_filters;
};

} // namespace quillmere
