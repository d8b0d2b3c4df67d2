#include "asking/forms/LongWork.h"

#include "controls/Named.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

namespace quillmere {

namespace {

constexpr int kShort = 300;       // ms that pass before anything is shown
constexpr int kBetweenLooks = 50; // ms
constexpr int kSteps = 1000;      // of the bar
constexpr int kBarWidth = 200;    // pixels

// What a person does with the window; drawing it, moving it and the like are not among this.
bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::NativeGesture:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

LongWork::LongWork(QStatusBar &bar, const QString &what) : m_bar(bar), m_what(what)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_since.start();
}

LongWork::~LongWork()
{
    if (m_panel) {
        QApplication::processEvents(); // the last that was done meanwhile
        qApp->removeEventFilter(this);
        delete m_panel;
    }
    QApplication::restoreOverrideCursor();
}

void LongWork::show()
{
    // A dialog that blocks the window blocks the window's status bar as well.
    QWidget *dialog = QApplication::activeModalWidget();
    auto *column = dialog ? qobject_cast<QBoxLayout *>(dialog->layout()) : nullptr;
    m_panel = new QWidget(column ? dialog : &m_bar);
    m_panel->setObjectName(QStringLiteral("frLongWork"));
    auto *line = new QHBoxLayout(m_panel);
    line->setContentsMargins(8, 0, 8, 0);
    m_progress = named(new QProgressBar, "barLongWork", m_what);
    m_progress->setFixedWidth(kBarWidth);
    m_cancel = named(new QPushButton(tr("Cancel")), "cmdCancelWork", tr("Cancel: %1").arg(m_what));
    m_cancel->setFocusPolicy(Qt::NoFocus);
    m_cancel->setToolTip(tr("Esc"));
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_cancelled = true; });
    line->addWidget(new QLabel(m_what));
    line->addWidget(m_progress);
    line->addWidget(m_cancel);
    if (column)
        column->addWidget(m_panel);
    else
        m_bar.insertPermanentWidget(0, m_panel);
    m_panel->show();
    QApplication::changeOverrideCursor(Qt::BusyCursor); // there is something to click on
    qApp->installEventFilter(this);
}

void LongWork::tell(qsizetype done, qsizetype all)
{
    if (m_since.elapsed() < kShort || (m_drawn.isValid() && m_drawn.elapsed() < kBetweenLooks))
        return;
    if (!m_panel)
        show();
    m_progress->setRange(0, all > 0 ? kSteps : 0);
    m_progress->setValue(all > 0 ? int(kSteps * double(done) / double(all)) : 0);
    QApplication::processEvents();
    m_drawn.start();
    if (m_cancelled)
        throw Cancelled();
}

bool LongWork::eventFilter(QObject *watched, QEvent *event)
{
    // Leaving means cancelling first; what was to be left is there to be left again.
    if (event->type() == QEvent::Close || event->type() == QEvent::Quit) {
        m_cancelled = true;
        event->ignore();
        return true;
    }
    if (!isInput(event->type()))
        return false;
    // Keys also come as questions whether somebody would rather have them.
    if ((event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
        m_cancelled = true;
    // The window system's own windows pass on to the widgets what they get.
    const bool passes = watched == m_cancel || watched->isWindowType();
    return !passes || event->type() == QEvent::Shortcut;
}

} // namespace quillmere
