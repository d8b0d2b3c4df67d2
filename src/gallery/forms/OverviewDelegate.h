#pragma once

#include <QStyledItemDelegate>

namespace quillmere {

class OverviewRows;

// Draws a window of the overview: its picture in a thin frame, its name below, and in a corner of the picture
// what is wrong with it.
class OverviewDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    OverviewDelegate(const OverviewRows &rows, QObject *parent);

    // What a picture gets of its item's width, and how large the item then is; pixels.
    static QSize pictureOf(int itemWidth);
    static QSize itemOf(int itemWidth, const QFontMetrics &font);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    int itemWidth = 0; // pixels

private:
    void paintPicture(QPainter &painter, const QRect &place, const QStyleOptionViewItem &option,
                      int number) const;
    void paintMark(QPainter &painter, const QRect &picture, int number) const;

    const OverviewRows &m_rows;
};

} // namespace quillmere
