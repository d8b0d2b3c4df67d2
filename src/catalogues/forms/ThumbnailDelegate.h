#pragma once

#include <QAbstractItemDelegate>

namespace quillmere {

class ListView;
struct Thumbnail;
class Thumbnails;

// Draws a thumbnail in the middle of a place on a chequered ground, or a plain mark where there is nothing to
// see. Null where it is still to be made.
void drawThumbnail(QPainter &painter, const QRect &place, const Thumbnail *thumbnail,
                   const QPixmap Thumbnail::*size, const QPalette &palette);

// The tooltip of a picture's path: its size, or why there is nothing to see.
QString thumbnailToolTip(const QString &path, const Thumbnail *thumbnail);

// Draws a column of paths in a list as the list's own delegate does, with the thumbnail of the file before
// each. The rows say nothing of it and keep their height.
class ThumbnailDelegate : public QAbstractItemDelegate
{
public:
    ThumbnailDelegate(ListView &list, Thumbnails &thumbnails);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    QAbstractItemDelegate &m_rest;
    Thumbnails &m_thumbnails;
};

} // namespace quillmere
