#include "app/StartButton.h"

#include "controls/ReadableColours.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace quillmere {

namespace {

constexpr int kInset = 14; // pixels
constexpr int kIcon = 24;
constexpr int kAfterIcon = 10;
constexpr int kBelowCaption = 6;
constexpr int kRound = 6;
constexpr int kFocus = 2;
constexpr int kWidth = 240;

} // namespace

StartButton::StartButton(const QString &caption, const QString &sentence, QWidget *parent)
    : QPushButton(caption, parent), m_sentence(sentence)
{
    setAccessibleName(caption);
    setAccessibleDescription(sentence);
    setToolTip(sentence);
    setAutoDefault(true); // Enter presses it
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_LayoutUsesWidgetRect); // in one line with what stands above and below
    setCursor(Qt::PointingHandCursor);
}

QFont StartButton::captionFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

QRect StartButton::sentenceRect(int width) const
{
    const int top =
        kInset + std::max(QFontMetrics(captionFont()).height(), icon().isNull() ? 0 : kIcon) + kBelowCaption;
    const QRect room(kInset, top, width - 2 * kInset, 1000);
    return fontMetrics().boundingRect(room, Qt::AlignLeft | Qt::TextWordWrap, m_sentence);
}

int StartButton::heightForWidth(int width) const
{
    return sentenceRect(width).bottom() + 1 + kInset;
}

QSize StartButton::sizeHint() const
{
    return {kWidth, heightForWidth(kWidth)};
}

void StartButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette &colours = option.palette;
    const QColor text = colours.color(QPalette::Text), base = colours.color(QPalette::Base);
    const bool isOver = option.state & QStyle::State_MouseOver;
    const float share = isDown() ? 0.3F : isOver ? 0.15F : 0.F;
    const bool isFocused = option.state & QStyle::State_HasFocus;
    const double line = isFocused ? kFocus : 1;
    painter.setPen(QPen(isFocused ? text : mixed(text, base, 0.45F), line));
    painter.setBrush(mixed(colours.color(QPalette::Highlight), mixed(text, base, 0.03F), share));
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), kRound,
                            kRound);

    const QFontMetrics caption(captionFont());
    QRect row(kInset, kInset, width() - 2 * kInset, std::max(caption.height(), icon().isNull() ? 0 : kIcon));
    painter.setPen(colours.color(QPalette::PlaceholderText));
    painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter, m_keys);
    if (!icon().isNull()) {
        icon().paint(&painter, QRect(row.left(), row.center().y() - kIcon / 2 + 1, kIcon, kIcon));
        row.setLeft(row.left() + kIcon + kAfterIcon);
    }
    painter.setFont(captionFont());
    painter.setPen(text);
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, this->text());
    painter.setFont(font());
    painter.setPen(colours.color(QPalette::PlaceholderText));
    painter.drawText(sentenceRect(width()).adjusted(0, 0, 1, 1), Qt::AlignLeft | Qt::TextWordWrap,
                     m_sentence);
}

} // namespace quillmere
