#include "gallery/forms/OverviewList.h"

#include "controls/Tiles.h"
#include "gallery/forms/OverviewDelegate.h"
#include "gallery/forms/OverviewRows.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>

#include <algorithm>
#include <ranges>

namespace quillmere {

namespace {

constexpr int kItem = 262; // pixels of an item's width, more or less: so many columns that it comes close
constexpr int kStep = 60;  // pixels that one step of the wheel or an arrow of the scroll bar scrolls

// Whether the key is for the filter: letters, and what takes them back.
bool isTyped(const QKeyEvent &event, bool isFiltered)
{
    const Qt::KeyboardModifiers others = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool isAltGr =
        others == (Qt::ControlModifier | Qt::AltModifier) || others == Qt::GroupSwitchModifier;
    if (others != Qt::NoModifier && !isAltGr)
        return false;
    if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Space)
        return isFiltered;
    return !event.text().isEmpty() && event.text().at(0).isPrint();
}

} // namespace

OverviewList::OverviewList(OverviewRows &rows, QLineEdit &filter, QWidget *parent)
    : QListView(parent), m_rows(rows), m_filter(filter), m_delegate(new OverviewDelegate(rows, this))
{
    setModel(&rows);
    setItemDelegate(m_delegate);
    showAsTiles(*this);
    setVerticalScrollMode(ScrollPerPixel);
    verticalScrollBar()->setSingleStep(kStep);
    setAttribute(Qt::WA_InputMethodEnabled);
    connect(this, &QAbstractItemView::doubleClicked, this, &OverviewList::opened);
}

// Columns do not depend on whether there is a scroll bar, which depends on them. A column that ends with the
// room counts as one too many to Qt, so a pixel is left.
void OverviewList::layOut()
{
    const int bar = verticalScrollBar()->sizeHint().width();
    const int width = std::max(maximumViewportSize().width() - bar - 1, 40);
    const int columns = std::max(1, (width + kItem / 2) / kItem);
    m_delegate->itemWidth = width / columns;
    const QSize item = OverviewDelegate::itemOf(m_delegate->itemWidth, fontMetrics());
    if (item != gridSize())
        setGridSize(item);
}

QSize OverviewList::pictureSize() const
{
    return OverviewDelegate::pictureOf(m_delegate->itemWidth);
}

QList<int> OverviewList::seen() const
{
    const int count = m_rows.rowCount();
    const auto rows = std::views::iota(0, count);
    const auto place = [this](int row) { return visualRect(m_rows.index(row)); };
    const auto isAbove = [&](int row) { return place(row).bottom() < 0; };
    const int first = *std::ranges::partition_point(rows, isAbove);
    const int end =
        *std::ranges::partition_point(rows, [&](int row) { return place(row).top() < viewport()->height(); });
    QList<int> numbers;
    const auto add = [&](int from, int to) {
        for (int row = std::max(from, 0); row < std::min(to, count); ++row)
            numbers.append(m_rows.numberAt(m_rows.index(row)));
    };
    const int screen = end - first;
    add(first, end);
    add(end, end + screen);
    add(first - screen, first);
    return numbers;
}

void OverviewList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (currentIndex().isValid())
            emit opened(currentIndex());
        return;
    }
    if (isTyped(*event, !m_filter.text().isEmpty())) {
        QCoreApplication::sendEvent(&m_filter, event);
        return;
    }
    QListView::keyPressEvent(event);
}

void OverviewList::inputMethodEvent(QInputMethodEvent *event)
{
    if (!event->commitString().isEmpty())
        m_filter.insert(event->commitString());
    event->accept();
}

void OverviewList::resizeEvent(QResizeEvent *event)
{
    layOut();
    QListView::resizeEvent(event);
}

void OverviewList::changeEvent(QEvent *event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

void OverviewList::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    emit painted();
}

} // namespace quillmere
