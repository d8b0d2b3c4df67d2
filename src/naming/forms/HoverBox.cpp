#include "naming/forms/HoverBox.h"

#include "catalogues/forms/ScaledPicture.h"
#include "controls/Named.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QToolTip>
#include <QVBoxLayout>

namespace quillmere {

namespace {

constexpr int kMargin = 8;              // pixels
constexpr int kSquare = 8;              // pixels, of the ground of pictures
constexpr QSize kSwatch(64, 32);        // pixels
constexpr int kGap = 2;                 // pixels, between the text and the box
constexpr int kWidest = 480;            // pixels
constexpr qsizetype kLongestLine = 300; // units
constexpr qsizetype kMostLines = 30;

QString shortened(const QString &line)
{
    const QString simple = line.simplified();
    return simple.size() > kLongestLine ? QString(QStringView(simple).first(kLongestLine) + u'…') : simple;
}

QPixmap pictureOf(const HoverContents &contents, qreal ratio, const QPalette &palette)
{
    if (contents.picture.isNull() && !contents.colour.isValid())
        return {};
    QSizeF shown = contents.picture.deviceIndependentSize();
    if (contents.isPicture)
        shown = QSizeF(contents.picture.size()) / ratio;
    if (contents.colour.isValid())
        shown = kSwatch;
    QPixmap picture((shown * ratio).toSize().expandedTo({1, 1}));
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QRectF place(QPointF(), shown);
    if (contents.colour.isValid()) {
        painter.setPen(palette.color(QPalette::Dark));
        painter.setBrush(contents.colour);
        painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
        return picture;
    }
    if (contents.isPicture)
        drawChequers(painter, place.toAlignedRect(), kSquare);
    painter.drawImage(place, contents.picture);
    return picture;
}

} // namespace

HoverBox::HoverBox(QWidget *parent)
    : QFrame(parent, Qt::ToolTip | Qt::WindowTransparentForInput),
      m_title(named(new QLabel, "lblHoverTitle", tr("Name"))),
      m_picture(named(new QLabel, "picHover", tr("What it looks like"))),
      m_text(named(new QLabel, "lblHoverText", tr("What it stands for")))
{
    setObjectName(QStringLiteral("frHover"));
    setFrameShape(QFrame::StyledPanel);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setPalette(QToolTip::palette());
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (QLabel *label : {m_title, m_picture, m_text}) {
        label->setTextFormat(Qt::PlainText);
        label->setForegroundRole(QPalette::ToolTipText);
        layout->addWidget(label);
    }
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
}

void HoverBox::showAt(const HoverContents &contents, const QRect &at)
{
    m_at = at;
    setPalette(QToolTip::palette()); // which may be others since
    say(contents);
    show();
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void HoverBox::say(const HoverContents &contents)
{
    QStringList lines;
    bool isWide = false;
    for (const QString &line : contents.lines.first(std::min(contents.lines.size(), kMostLines))) {
        lines.append(shortened(line));
        isWide = isWide || fontMetrics().horizontalAdvance(lines.last()) > kWidest;
    }
    m_title->setText(fontMetrics().elidedText(shortened(contents.title), Qt::ElideRight, kWidest));
    m_text->setText(lines.join(u'\n'));
    m_text->setVisible(!lines.isEmpty());
    m_text->setWordWrap(isWide);
    m_text->setMinimumWidth(isWide ? kWidest : 0);
    m_picture->setPixmap(pictureOf(contents, devicePixelRatioF(), palette()));
    m_picture->setVisible(!contents.picture.isNull() || contents.colour.isValid());
    setAccessibleName(contents.title);
    setAccessibleDescription(m_text->text());
    layout()->activate();
    placeAt(m_at);
}

void HoverBox::placeAt(const QRect &at)
{
    const QScreen *screen = QGuiApplication::screenAt(at.center());
    const QRect room = (screen ? screen : this->screen())->availableGeometry();
    const QSize size = sizeHint();
    int y = at.bottom() + kGap;
    if (y + size.height() > room.bottom())
        y = at.top() - kGap - size.height();
    const int x = std::min(at.left(), room.right() - size.width());
    move(std::max(x, room.left()), std::max(y, room.top()));
}

} // namespace quillmere
