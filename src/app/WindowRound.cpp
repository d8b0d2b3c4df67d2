#include "app/WindowRound.h"

#include "app/OpenDocument.h"
#include "asking/Talk.h"
#include "controls/Named.h"
#include "files/Paths.h"
#include "rows/ToolTip.h"
#include "theme/ThemeProject.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QShortcut>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kMost = 20;   // windows
constexpr int kWidth = 420; // pixels
constexpr int kInset = 10;
constexpr int kRowGap = 6; // of a row beyond its letters

} // namespace

WindowRound::WindowRound(const OpenDocument &document, const ThemeProject &theme, Open open, Talk &talk,
                         QWidget &window)
    : QObject(&window), m_document(document), m_theme(theme), m_open(std::move(open)), m_talk(talk),
      m_window(window)
{
    for (const int by : {1, -1}) {
        const QKeySequence keys(by > 0 ? Qt::CTRL | Qt::Key_Tab : Qt::CTRL | Qt::SHIFT | Qt::Key_Tab);
        auto *go = new QShortcut(keys, &window);
        connect(go, &QShortcut::activated, this, [this, by] { step(by); });
    }
    connect(&document, &OpenDocument::opened, this, &WindowRound::remember);
}

void WindowRound::remember()
{
    const Place now{m_document.path(), m_document.theme()};
    m_places.removeAll(now);
    m_places.prepend(now);
    m_places.resize(std::min<qsizetype>(m_places.size(), kMost));
}

void WindowRound::step(int by)
{
    if (!m_frame) {
        // A missing one would be opened as an empty text.
        const QString theme = m_theme.folder();
        m_places.removeIf([&](const Place &place) {
            return (place.theme != theme && place.path != m_document.path()) ||
                   findFile(place.path).isEmpty();
        });
        if (m_places.isEmpty()) {
            m_talk.say(tr("No window was opened yet."));
            return;
        }
        show();
    }
    const int rows = m_list->count();
    m_list->setCurrentRow((m_list->currentRow() + by + rows) % rows);
}

void WindowRound::show()
{
    m_frame = named(new QFrame(&m_window), "frameWindowRound", tr("Windows opened last"));
    m_frame->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    m_frame->setAutoFillBackground(true);
    m_list = named(new QListWidget, "lvWindowRound", tr("Windows opened last"));
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setToolTip(tr("Release Ctrl to open the selected window; Esc stays where you are."));
    auto *column = new QVBoxLayout(m_frame);
    column->setContentsMargins(kInset, kInset, kInset, kInset);
    column->addWidget(new QLabel(tr("Release Ctrl to open")));
    column->addWidget(m_list);
    fill();
    connect(m_list, &QListWidget::itemClicked, this, [this] { end(true); });

    const int high = m_list->count() * (m_list->fontMetrics().height() + kRowGap) + 2;
    m_list->setFixedHeight(std::min(high, m_window.height() / 2));
    m_frame->setFixedWidth(std::min(kWidth, m_window.width() - 2 * kInset));
    m_frame->adjustSize();
    m_frame->move((m_window.width() - m_frame->width()) / 2, (m_window.height() - m_frame->height()) / 3);
    m_frame->show();
    m_frame->raise();
    qApp->installEventFilter(this);
}

// By the names of the catalogue; a document that it does not name by its file's.
void WindowRound::fill()
{
    for (const Place &place : std::as_const(m_places)) {
        QString name = QFileInfo(place.path).fileName();
        for (const ListRows::Row &row : m_theme.widgets.LvWidget.rows()) {
            if (row.text == place.path)
                name = row.sub(1);
        }
        auto *item = new QListWidgetItem(name, m_list);
        item->setSizeHint({0, m_list->fontMetrics().height() + kRowGap});
        item->setToolTip(plainToolTip(place.path));
    }
    // Where another kind of text is in the source box, the first is to be gone to, too.
    m_list->setCurrentRow(m_places.first().path == m_document.path() ? 0 : -1);
}

void WindowRound::end(bool goes)
{
    qApp->removeEventFilter(this);
    const int row = m_list->currentRow();
    m_frame->deleteLater();
    m_frame->hide();
    m_frame = nullptr;
    m_list = nullptr;
    const Place place = m_places.value(row);
    if (goes && !place.path.isEmpty() && place.path != m_document.path())
        m_talk.run([&] { m_open(place.path, place.theme); });
}

bool WindowRound::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent *>(event)->key() != Qt::Key_Control || !watched->isWidgetType())
            break;
        end(true);
        return true;
    case QEvent::ShortcutOverride: // what is pressed now is for the list
        event->accept();
        return true;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (!watched->isWidgetType() || key == Qt::Key_Control || key == Qt::Key_Shift)
            break;
        if (key == Qt::Key_Tab || key == Qt::Key_Down)
            step(1);
        else if (key == Qt::Key_Backtab || key == Qt::Key_Up)
            step(-1);
        else
            end(key == Qt::Key_Return || key == Qt::Key_Enter);
        return true;
    }
    case QEvent::WindowDeactivate:
        if (watched == &m_window)
            end(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillmere
