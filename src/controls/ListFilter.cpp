#include "controls/ListFilter.h"

#include "controls/EmptyHint.h"
#include "controls/ListView.h"
#include "controls/Named.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace quillmere {

namespace {

constexpr int kHeight = 24;    // pixels
constexpr int kMostShown = 60; // letters of what is typed
constexpr int kGap = 4;        // pixels
constexpr int kAtOnce = 3000;  // rows that are hidden or shown in one go; the view takes its time for each

enum Ticks { All, Ticked, NotTicked };

// The texts of all columns, in one case; what is looked for has no line break.
QString foldedRow(const QAbstractItemModel &rows, int row)
{
    QString texts;
    for (int column = 0; column < rows.columnCount(); ++column)
        texts += QString(rows.index(row, column).data().toString() + u'\n');
    return texts.toCaseFolded();
}

} // namespace

ListFilter::ListFilter(ListView &list)
    : QWidget(list.parentWidget()), m_list(list), txtFilter(new QLineEdit), cboTicks(new QComboBox),
      lblFound(new QLabel)
{
    const QString name = list.objectName();
    setObjectName(u"filter" + name);
    named(txtFilter, "", tr("Filter of %1").arg(list.accessibleName()))->setObjectName(u"txtFilter" + name);
    named(cboTicks, "", tr("Ticks"))->setObjectName(u"cboTicks" + name);
    named(lblFound, "", tr("Number of rows"))->setObjectName(u"lblFound" + name);
    txtFilter->setPlaceholderText(tr("Filter"));
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setToolTip(tr("Shows only the rows that contain this text. Esc ends it."));
    cboTicks->setToolTip(tr("Shows all rows, or only those with or without a tick."));
    lblFound->setToolTip(tr("How many rows are shown, and how many there are."));
    cboTicks->addItems({tr("All"), tr("Ticked"), tr("Not ticked")});
    cboTicks->setVisible(false);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kGap);
    line->addWidget(txtFilter, 1);
    line->addWidget(cboTicks);
    line->addWidget(lblFound);
    hide();

    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &ListFilter::apply);
    connect(txtFilter, &QLineEdit::textChanged, this, &ListFilter::apply);
    connect(cboTicks, &QComboBox::currentIndexChanged, this, &ListFilter::apply);
    m_further.setInterval(0);
    connect(&m_further, &QTimer::timeout, this, &ListFilter::hideFurther);
    const auto soon = [this] {
        m_folded.clear();
        m_further.stop();
        if (m_isShown || isVisibleTo(parentWidget()))
            m_soon.start();
    };
    const QAbstractItemModel *rows = list.model();
    connect(rows, &QAbstractItemModel::modelReset, this, soon);
    connect(rows, &QAbstractItemModel::rowsInserted, this, soon);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, soon);
    connect(rows, &QAbstractItemModel::dataChanged, this, soon);
    list.installEventFilter(this);
    setTabOrder(txtFilter, cboTicks);
    setTabOrder(cboTicks, &list);
}

void ListFilter::open()
{
    const QModelIndex first = m_list.model()->index(0, 0);
    cboTicks->setVisible(first.isValid() && first.flags().testFlag(Qt::ItemIsUserCheckable));
    if (isHidden()) {
        m_whole = m_list.geometry();
        show();
        makeRoom();
        apply();
        QTimer::singleShot(0, this, &ListFilter::fold); // before the first key
    }
    txtFilter->setFocus();
    txtFilter->selectAll();
}

void ListFilter::limitTo(std::function<bool(int row)> isShown)
{
    m_isShown = std::move(isShown);
    m_soon.start();
}

void ListFilter::close()
{
    txtFilter->clear();
    cboTicks->setCurrentIndex(All);
    apply();
    m_folded.clear();
    hide();
    m_list.setGeometry(m_whole);
    m_list.setFocus();
    m_list.scrollTo(m_list.currentIndex());
}

void ListFilter::makeRoom()
{
    m_room = m_whole.adjusted(0, kHeight + kGap, 0, 0);
    setGeometry(m_whole.left(), m_whole.top(), m_whole.width(), kHeight);
    m_list.setGeometry(m_room);
    raise();
}

void ListFilter::apply()
{
    const QAbstractItemModel &rows = *m_list.model();
    const QString text = txtFilter->text().toCaseFolded();
    const int ticks = cboTicks->currentIndex();
    if (!text.isEmpty())
        fold();
    int found = 0;
    const QModelIndex current = m_list.currentIndex();
    m_isInView =
        m_isInView || (current.isValid() && m_list.visualRect(current).intersects(m_list.viewport()->rect()));
    m_isHidden.resize(rows.rowCount());
    for (int row = 0; row < rows.rowCount(); ++row) {
        bool isFound = (!m_isShown || m_isShown(row)) && (text.isEmpty() || m_folded.at(row).contains(text));
        if (isFound && ticks != All)
            isFound =
                (rows.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked) == (ticks == Ticked);
        found += isFound;
        m_isHidden[row] = !isFound;
    }
    m_next = 0;
    hideFurther();
    lblFound->setText(tr("%1 of %2").arg(found).arg(rows.rowCount()));
    setFilterHint(m_list, found > 0 ? QString()
                          : txtFilter->text().isEmpty()
                              ? tr("The filter hides all rows.")
                              : tr("No row contains \"%1\".").arg(txtFilter->text().left(kMostShown)));
}

void ListFilter::fold()
{
    const QAbstractItemModel &rows = *m_list.model();
    if (!m_folded.isEmpty())
        return;
    m_folded.reserve(rows.rowCount());
    for (int row = 0; row < rows.rowCount(); ++row)
        m_folded.append(foldedRow(rows, row));
}

void ListFilter::hideFurther()
{
    int left = kAtOnce;
    for (; m_next < m_isHidden.size() && left > 0; ++m_next) {
        const bool hidden = m_isHidden.at(m_next);
        if (m_list.isRowHidden(m_next, {}) == hidden)
            continue;
        m_list.setRowHidden(m_next, {}, hidden);
        --left;
    }
    if (m_next < m_isHidden.size())
        m_further.start();
    else {
        m_further.stop();
        if (std::exchange(m_isInView, false))
            QTimer::singleShot(0, this,
                               &ListFilter::keepInView); // it lays the rows out, and a key may come first
    }
}

// What one looks at is still to be seen when others go from above it.
void ListFilter::keepInView()
{
    const QModelIndex current = m_list.currentIndex();
    if (m_next >= m_isHidden.size() && current.isValid() && !m_list.isRowHidden(current.row(), {}))
        m_list.scrollTo(current);
}

bool ListFilter::eventFilter(QObject *watched, QEvent *event)
{
    // Whoever lays the list out does so for all of its room, and two events may tell of it.
    const bool isPlaced = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    if (isPlaced && !isHidden() && m_list.geometry() != m_room) {
        m_whole = m_list.geometry();
        makeRoom();
    }
    return QWidget::eventFilter(watched, event);
}

void ListFilter::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        m_list.setFocus();
    else
        QWidget::keyPressEvent(event);
}

} // namespace quillmere
