#include "app/RecentCards.h"

#include "app/ThemePictures.h"
#include "controls/ReadableColours.h"
#include "controls/Tiles.h"
#include "gallery/forms/OverviewDelegate.h"
#include "rows/ToolTip.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>

namespace quillmere {

namespace {

constexpr int kItem = 280;  // pixels of a card's width, more or less
constexpr int kInset = 10;  // of what is in a card
constexpr int kBetween = 4; // lines of text
constexpr int kFocus = 2;

enum Role { Folder = Qt::UserRole, Picture, IsGone };

class CardDelegate : public QStyledItemDelegate
{
public:
    explicit CardDelegate(RecentCards &cards) : QStyledItemDelegate(&cards), m_cards(cards) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return m_cards.itemSize();
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &at) const override;

private:
    void paintPicture(QPainter &painter, const QRect &place, const QPalette &palette,
                      const QModelIndex &at) const;

    const RecentCards &m_cards;
};

void CardDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &at) const
{
    const QPalette &palette = option.palette;
    const QColor text = palette.color(QPalette::Text), ground = palette.color(QPalette::Base);
    const bool hasFocus = option.state & QStyle::State_Selected && m_cards.hasFocus();
    const QRect card = option.rect.adjusted(0, 0, -RecentCards::kGap, -RecentCards::kGap);
    painter->save();
    if (hasFocus || option.state & QStyle::State_MouseOver)
        painter->fillRect(card, mixed(palette.color(QPalette::Highlight), ground, hasFocus ? 0.25F : 0.12F));
    const QSize size = OverviewDelegate::pictureOf(card.width());
    const QRect picture(card.topLeft() + QPoint((card.width() - size.width()) / 2, kInset), size);
    paintPicture(*painter, picture, palette, at);

    const QFontMetrics &font = option.fontMetrics;
    QRect line(picture.left(), picture.bottom() + kInset, picture.width(), font.height());
    painter->setPen(text);
    painter->drawText(line, Qt::AlignLeft | Qt::TextSingleLine,
                      font.elidedText(at.data().toString(), Qt::ElideMiddle, line.width()));
    line.translate(0, font.height() + kBetween);
    painter->setPen(hasFocus ? text : palette.color(QPalette::PlaceholderText));
    painter->drawText(line, Qt::AlignLeft | Qt::TextSingleLine,
                      font.elidedText(at.data(Folder).toString(), Qt::ElideMiddle, line.width()));
    painter->setPen(hasFocus ? QPen(text, kFocus) : QPen(mixed(text, ground, 0.25F)));
    painter->drawRect(hasFocus ? card.adjusted(1, 1, -1, -1) : card.adjusted(0, 0, -1, -1));
    painter->restore();
}

void CardDelegate::paintPicture(QPainter &painter, const QRect &place, const QPalette &palette,
                                const QModelIndex &at) const
{
    const QColor text = palette.color(QPalette::Text), ground = palette.color(QPalette::Base);
    const bool isGone = at.data(IsGone).toBool();
    const auto picture = at.data(Picture).value<QPixmap>();
    if (picture.isNull() || isGone) {
        painter.fillRect(place, mixed(text, ground, 0.08F));
        painter.setPen(text);
        if (isGone)
            painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap,
                             RecentCards::tr("No theme here any more"));
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(place, picture);
    }
    painter.setPen(mixed(text, ground, 0.45F));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
}

} // namespace

RecentCards::RecentCards(QWidget *parent) : QListView(parent)
{
    m_worker.setMaxThreadCount(1);
    setModel(&m_themes);
    setItemDelegate(new CardDelegate(*this));
    showAsTiles(*this);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &at) { emit chosen(at.data(Folder).toString()); });
}

RecentCards::~RecentCards()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void RecentCards::setThemes(const QStringList &folders)
{
    m_themes.clear();
    for (const QString &folder : folders) {
        auto *card = new QStandardItem(QFileInfo(QFileInfo(folder).path()).fileName());
        const QString path = QDir::toNativeSeparators(folder);
        card->setData(folder, Folder);
        card->setToolTip(plainToolTip(path));
        card->setData(QString(card->text() + QStringLiteral(", ") + path), Qt::AccessibleTextRole);
        m_themes.appendRow(card);
        look(folder);
    }
    setCurrentIndex(m_themes.index(0, 0));
}

// A folder may lie on a disk that takes its time.
void RecentCards::look(const QString &folder)
{
    m_worker.start([this, folder] {
        const auto show = [this, folder, found = closedTheme(folder)] {
            const QModelIndex at =
                m_themes.match(m_themes.index(0, 0), Folder, folder, 1, Qt::MatchExactly).value(0);
            if (!at.isValid())
                return;
            m_themes.setData(at, QPixmap::fromImage(found.picture), Picture);
            m_themes.setData(at, !found.isThere, IsGone);
            if (!found.isThere)
                m_themes.setData(at, tr("%1, no theme here any more").arg(folder), Qt::AccessibleTextRole);
        };
        QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
    });
}

void RecentCards::setRoom(int width)
{
    m_columns = std::max(1, (width + kItem / 2) / kItem);
    const int item = (width + kGap) / m_columns;
    const int lines = 2 * fontMetrics().height() + kBetween;
    m_item = {item, OverviewDelegate::pictureOf(item - kGap).height() + lines + 3 * kInset + kGap};
    setGridSize(m_item);
    const int rows = (m_themes.rowCount() + m_columns - 1) / m_columns;
    setFixedSize(width + kBeyond, std::max(rows, 1) * m_item.height());
    resize(minimumSize()); // at once, for the cards go by it
    doItemsLayout();
}

void RecentCards::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex at = currentIndex();
    if (!at.isValid()) {
        event->ignore();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        emit chosen(at.data(Folder).toString());
        return;
    case Qt::Key_Delete:
        emit removeWanted(at.data(Folder).toString());
        return;
    case Qt::Key_Up:
        if (at.row() < m_columns) {
            emit leftUpwards();
            return;
        }
        break;
    case Qt::Key_Left:
    case Qt::Key_Right: { // on to the next line, as one reads
        const int next = at.row() + (event->key() == Qt::Key_Left ? -1 : 1);
        if (next >= 0 && next < m_themes.rowCount())
            setCurrentIndex(m_themes.index(next, 0));
        return;
    }
    default:
        break;
    }
    QListView::keyPressEvent(event);
}

void RecentCards::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex at = isKey ? currentIndex() : indexAt(event->pos());
    if (!at.isValid())
        return;
    const QString folder = at.data(Folder).toString();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName(QStringLiteral("mnuRecent"));
    const auto add = [&](const QString &caption, const char *name, const QString &tip, auto signal) {
        QAction *item = menu->addAction(caption);
        item->setObjectName(QLatin1String(name));
        item->setToolTip(tip);
        connect(item, &QAction::triggered, this, [this, folder, signal] { emit(this->*signal)(folder); });
        return item;
    };
    menu->setDefaultAction(add(tr("&Open"), "mnuRecentOpen", tr("Opens this theme."), &RecentCards::chosen));
    add(tr("&Remove from List"), "mnuRecentRemove", tr("Removes this theme from the list. Its files stay."),
        &RecentCards::removeWanted)
        ->setShortcut(Qt::Key_Delete);
    menu->popup(isKey ? viewport()->mapToGlobal(visualRect(at).center()) : event->globalPos());
}

void RecentCards::focusInEvent(QFocusEvent *event)
{
    QListView::focusInEvent(event);
    if (currentIndex().isValid())
        selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

} // namespace quillmere
