#include "gallery/forms/Overview.h"

#include "asking/Talk.h"
#include "browser/forms/WebBrowser.h"
#include "controls/EmptyHint.h"
#include "controls/Named.h"
#include "gallery/forms/OverviewList.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/PreviewFrame.h"
#include "theme/ThemeProject.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace quillmere {

namespace {

constexpr int kMargin = 8;    // pixels
constexpr int kFilter = 240;  // at most
constexpr int kResting = 200; // ms

} // namespace

Overview::Overview(PreviewFrame &frame, const ThemeProject &theme, OverviewPictures::TextOf text, Talk &talk)
    : QWidget(&frame), pictures(rows, theme, std::move(text)), m_frame(frame), m_theme(theme), m_talk(talk),
      txtOverview(named(new QLineEdit, "txtOverview", tr("Filter windows"))),
      lblOverview(named(new QLabel, "lblOverview", tr("Windows shown"))),
      lvOverview(named(new OverviewList(rows, *txtOverview, this), "lvOverview", tr("All windows")))
{
    setObjectName(QStringLiteral("overview"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setFocusProxy(lvOverview);
    hide();
    txtOverview->setPlaceholderText(tr("Type to filter by name"));
    txtOverview->setClearButtonEnabled(true);
    txtOverview->setMaximumWidth(kFilter);
    txtOverview->installEventFilter(this);
    auto *line = new QHBoxLayout;
    line->setContentsMargins(kMargin, kMargin, kMargin, 2);
    line->setSpacing(kMargin);
    line->addWidget(txtOverview, 1);
    line->addWidget(lblOverview);
    line->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(line);
    column->addWidget(lvOverview, 1);

    m_look.setSingleShot(true);
    m_look.setInterval(0);
    connect(&m_look, &QTimer::timeout, this, &Overview::look);
    m_resized.setSingleShot(true);
    m_resized.setInterval(kResting);
    connect(&m_resized, &QTimer::timeout, this, &Overview::look);
    connect(txtOverview, &QLineEdit::textChanged, this, &Overview::filter);
    connect(lvOverview, &OverviewList::painted, &m_look, qOverload<>(&QTimer::start));
    connect(lvOverview, &QAbstractItemView::clicked, this, &Overview::sayCurrent);
    connect(lvOverview->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (!m_isResetting && isAncestorOf(QApplication::focusWidget()))
            sayCurrent();
    });
    connect(lvOverview, &OverviewList::opened, this,
            [this](const QModelIndex &index) { emit windowChosen(rows.window(rows.numberAt(index)).path); });
    m_frame.area().installEventFilter(this);
    setGeometry(m_frame.area().geometry());
}

void Overview::appear(Keyboard keyboard)
{
    if (isHidden()) {
        m_before = window()->focusWidget();
        setGeometry(m_frame.area().geometry());
        show();
        raise();
        txtOverview->selectAll(); // a letter begins a new filter
        emit shown(true);
    }
    if (keyboard == Keyboard::Stays)
        return;
    lvOverview->setFocus(Qt::OtherFocusReason);
    lvOverview->setCurrentIndex(lvOverview->currentIndex());
}

void Overview::leave()
{
    if (isHidden())
        return;
    if (isAncestorOf(window()->focusWidget())) {
        const bool takesIt = m_before && m_before->isVisible() && m_before->isEnabled();
        (takesIt ? m_before.data() : m_frame.wb)->setFocus(Qt::OtherFocusReason);
    }
    hide();
    emit shown(false);
}

void Overview::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_look.start();
}

void Overview::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_look.stop();
    m_seen.clear();
    pictures.stop();
}

void Overview::showWindows()
{
    const QScopedValueRollback resetting(m_isResetting, true);
    const QModelIndex current = lvOverview->currentIndex();
    const bool wasSelected = lvOverview->selectionModel()->isSelected(current);
    const int number = rows.numberAt(current);
    const QString path = number < 0 ? QString() : rows.window(number).path;
    const bool isOther = std::exchange(m_folder, m_theme.folder()) != m_folder;
    const int scrolled = isOther ? 0 : lvOverview->verticalScrollBar()->value();
    if (isOther)
        txtOverview->clear();
    pictures.setWindows();
    m_seen.clear();
    int now = rows.windows() > 0 ? 0 : -1;
    for (int each = 0; !path.isEmpty() && each < rows.windows(); ++each) {
        if (rows.window(each).path == path)
            now = each;
    }
    goTo(now, wasSelected && !isOther);
    lvOverview->doItemsLayout();
    lvOverview->verticalScrollBar()->setValue(scrolled);
    showCount();
}

void Overview::goTo(int number, bool isSelected)
{
    QModelIndex at = number < 0 ? QModelIndex() : rows.indexOf(number);
    if (!at.isValid())
        at = rows.index(0);
    // Nothing is selected before the person is here.
    const bool isHere = isSelected || isAncestorOf(window()->focusWidget());
    lvOverview->selectionModel()->setCurrentIndex(at, isHere ? QItemSelectionModel::ClearAndSelect
                                                             : QItemSelectionModel::NoUpdate);
}

void Overview::filter(const QString &part)
{
    {
        const QScopedValueRollback resetting(m_isResetting, true);
        const int number = rows.numberAt(lvOverview->currentIndex());
        const bool isSelected = lvOverview->selectionModel()->hasSelection();
        rows.setFilter(part.trimmed());
        m_seen.clear();
        goTo(number, isSelected);
    }
    lvOverview->scrollTo(lvOverview->currentIndex());
    showCount();
}

void Overview::showCount()
{
    const int all = rows.windows(), shown = rows.rowCount();
    setEmptyHint(*lvOverview, all == 0 ? tr("This theme has no windows. Widget > New Window makes one.")
                                       : tr("No window's name contains \"%1\".").arg(rows.filter()));
    lblOverview->setText(rows.filter().isEmpty() ? (all == 1 ? tr("1 window") : tr("%1 windows").arg(all))
                                                 : tr("%1 of %2 windows").arg(shown).arg(all));
}

// What is painted is what is seen. Nothing is drawn before the first time, when the main window has come up.
void Overview::look()
{
    if (!isVisible())
        return;
    if (!m_resized.isActive())
        pictures.setPictureSize(lvOverview->pictureSize() * devicePixelRatioF());
    const QList<int> seen = lvOverview->seen();
    if (seen == m_seen && !seen.isEmpty())
        return;
    m_seen = seen;
    pictures.setSeen(seen);
}

void Overview::sayCurrent()
{
    const int number = rows.numberAt(lvOverview->currentIndex());
    if (number >= 0)
        m_talk.say(tr("%1. Enter opens it.").arg(describe(rows.window(number))));
}

void Overview::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (txtOverview->text().isEmpty())
        leave();
    else
        txtOverview->clear();
}

bool Overview::eventFilter(QObject *object, QEvent *event)
{
    const bool isPlaced = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    if (object == &m_frame.area() && isPlaced) {
        setGeometry(m_frame.area().geometry());
        if (isVisible())
            m_resized.start();
    }
    if (object != txtOverview || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        lvOverview->move(key);
        return true;
    default:
        return false;
    }
}

} // namespace quillmere
