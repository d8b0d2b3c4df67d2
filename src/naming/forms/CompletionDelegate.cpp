#include "naming/forms/CompletionDelegate.h"

#include "catalogues/forms/ScaledPicture.h"
#include "naming/forms/CompletionModel.h"

#include <QApplication>
#include <QPainter>

namespace quillmere {

namespace {

constexpr int kMargin = 6;      // pixels
constexpr int kSquare = 4;      // pixels, of the ground of pictures
constexpr QSize kChip(22, 14);  // pixels
constexpr int kMostDetail = 60; // percent of the width
constexpr qreal kFaint = 0.65;  // of the letters of details

} // namespace

QSize CompletionDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int text = option.fontMetrics.height() + kMargin;
    const bool hasPicture = index.data(CompletionModel::HasPicture).toBool();
    return {0, hasPicture ? std::max(text, kPicture.height() + kMargin) : text};
}

void CompletionDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    item.state |= QStyle::State_Active; // the keyboard is in the source, and the list takes part
    const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    painter->save();
    painter->setClipRect(option.rect);
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    QRect rest = option.rect.adjusted(kMargin, 0, -kMargin, 0);
    rest.setLeft(rest.left() + drawLook(painter, rest, index, option.palette));
    const bool isSelected = item.state & QStyle::State_Selected;
    QColor letters = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    painter->setPen(letters);
    painter->setFont(option.font);
    const QFontMetrics &metrics = option.fontMetrics;
    const QString detail = index.data(CompletionModel::Detail).toString().simplified();
    const int room = rest.width() * kMostDetail / 100;
    const int detailWidth = detail.isEmpty() ? 0 : std::min(room, metrics.horizontalAdvance(detail) + 1);
    const QRect nameRect = rest.adjusted(0, 0, detailWidth > 0 ? -detailWidth - 2 * kMargin : 0, 0);
    const QString name = index.data().toString().simplified();
    painter->drawText(nameRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      metrics.elidedText(name, Qt::ElideRight, nameRect.width()));
    letters.setAlphaF(float(kFaint));
    painter->setPen(letters);
    painter->drawText(rest, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                      metrics.elidedText(detail, Qt::ElideRight, detailWidth));
    painter->restore();
}

// Draws the picture or the colour and tells how wide it is, with the room behind it.
int CompletionDelegate::drawLook(QPainter *painter, const QRect &place, const QModelIndex &index,
                                 const QPalette &palette) const
{
    const QColor colour = index.data(CompletionModel::Colour).value<QColor>();
    if (colour.isValid()) {
        const QRect chip(QPoint(place.left(), place.center().y() - kChip.height() / 2), kChip);
        painter->setPen(palette.color(QPalette::Dark));
        painter->setBrush(colour);
        painter->drawRect(chip.adjusted(0, 0, -1, -1));
        return kChip.width() + kMargin;
    }
    if (!index.data(CompletionModel::HasPicture).toBool())
        return 0;
    const QImage picture = index.data(CompletionModel::Picture).value<QImage>();
    if (!picture.isNull()) {
        QSizeF shown = QSizeF(picture.size()) / painter->device()->devicePixelRatioF();
        if (shown.width() > kPicture.width() || shown.height() > kPicture.height())
            shown.scale(kPicture, Qt::KeepAspectRatio);
        const QPointF corner(place.left() + (kPicture.width() - shown.width()) / 2,
                             place.center().y() - shown.height() / 2);
        const QRectF inside(corner, shown);
        drawChequers(*painter, inside.toAlignedRect(), kSquare);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(inside, picture);
    }
    return kPicture.width() + kMargin;
}

} // namespace quillmere
