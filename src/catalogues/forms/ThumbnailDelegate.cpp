#include "catalogues/forms/ThumbnailDelegate.h"

#include "catalogues/forms/ScaledPicture.h"
#include "catalogues/forms/Thumbnails.h"
#include "controls/ListView.h"
#include "rows/ToolTip.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kSquare = 4;         // pixels, of the chequered ground
constexpr int kAir = 2;            // pixels of a row's height that a thumbnail leaves
constexpr int kBeforePath = 6;     // pixels, more or less: the style's
constexpr double kFaint = 0.08;    // of the text's colour
constexpr double kOutline = 0.25;  // the same
constexpr double kNothing = 0.45;  // of the mark where there is nothing to see
constexpr int kMostMark = 22;      // pixels, of that mark
constexpr double kMarkShare = 0.6; // of the height

QColor faded(const QPalette &palette, double strength)
{
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(float(strength));
    return colour;
}

// A frame with a stroke through it.
void drawNothing(QPainter &painter, const QRect &place, const QPalette &palette)
{
    const int height = std::min(int(place.height() * kMarkShare), kMostMark);
    QRectF frame(0, 0, height * 4 / 3, height);
    frame.moveCenter(place.toRectF().center());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(faded(palette, kNothing), 1));
    painter.drawRoundedRect(frame, 2, 2);
    painter.drawLine(frame.bottomLeft() + QPointF(-2, 2), frame.topRight() + QPointF(2, -2));
}

// The same for a selected row, or the style would put the colour of the selection over the picture. An icon
// of pixmaps would keep each of them in the cache of the whole program.
class PixmapEngine : public QIconEngine
{
public:
    explicit PixmapEngine(const QPixmap &drawn) : m_drawn(drawn) {}
    void paint(QPainter *painter, const QRect &place, QIcon::Mode, QIcon::State) override
    {
        painter->drawPixmap(place, m_drawn);
    }
    QIconEngine *clone() const override { return new PixmapEngine(*this); }

private:
    QPixmap m_drawn;
};

} // namespace

void drawThumbnail(QPainter &painter, const QRect &place, const Thumbnail *thumbnail,
                   const QPixmap Thumbnail::*size, const QPalette &palette)
{
    painter.save();
    const QPixmap picture = thumbnail ? thumbnail->*size : QPixmap();
    if (!thumbnail) {
        painter.fillRect(place, faded(palette, kFaint));
    } else if (picture.isNull()) {
        painter.fillRect(place, faded(palette, kFaint));
        drawNothing(painter, place, palette);
    } else {
        QSizeF shown = picture.deviceIndependentSize();
        if (shown.width() > place.width() || shown.height() > place.height())
            shown.scale(place.size(), Qt::KeepAspectRatio);
        const QPointF corner = place.toRectF().center() - QPointF(shown.width(), shown.height()) / 2;
        const QRect at(corner.toPoint(), shown.toSize().expandedTo({1, 1}));
        if (picture.hasAlphaChannel())
            drawChequers(painter, at, kSquare);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(at, picture);
        painter.setPen(faded(palette, kOutline));
        painter.drawRect(at.adjusted(0, 0, -1, -1));
    }
    painter.restore();
}

QString thumbnailToolTip(const QString &path, const Thumbnail *thumbnail)
{
    if (!thumbnail)
        return plainToolTip(path);
    const QString size = Thumbnails::tr("%1 × %2 pixels");
    return plainToolTip(path + u'\n' +
                        (!thumbnail->reason.isEmpty()
                             ? thumbnail->reason
                             : size.arg(thumbnail->size.width()).arg(thumbnail->size.height())));
}

ThumbnailDelegate::ThumbnailDelegate(ListView &list, Thumbnails &thumbnails)
    : QAbstractItemDelegate(&list), m_rest(*list.itemDelegate()), m_thumbnails(thumbnails)
{
}

void ThumbnailDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    const QSize size(Thumbnails::kSmall.width(),
                     std::min(Thumbnails::kSmall.height(), option.rect.height() - kAir));
    const qreal scale = painter->device()->devicePixelRatioF();
    QPixmap drawn(size * scale);
    drawn.setDevicePixelRatio(scale);
    drawn.fill(Qt::transparent);
    {
        const Thumbnail *thumbnail = m_thumbnails.of(index.data().toString());
        if (!thumbnail)
            m_thumbnails.look();
        QPainter onto(&drawn);
        drawThumbnail(onto, QRect({}, size), thumbnail, &Thumbnail::small, option.palette);
    }
    QStyleOptionViewItem with = option;
    with.features |= QStyleOptionViewItem::HasDecoration;
    with.decorationSize = size;
    with.icon = QIcon(new PixmapEngine(drawn));
    m_rest.paint(painter, with, index);
}

QSize ThumbnailDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return m_rest.sizeHint(option, index) + QSize(Thumbnails::kSmall.width() + kBeforePath, 0);
}

bool ThumbnailDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                    const QStyleOptionViewItem &option, const QModelIndex &index)
{
    return m_rest.editorEvent(event, model, option, index);
}

bool ThumbnailDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                  const QStyleOptionViewItem &option, const QModelIndex &index)
{
    return m_rest.helpEvent(event, view, option, index);
}

} // namespace quillmere
