#include "app/WorkRoom.h"

#include "app/TabStrip.h"
#include "browser/forms/WebBrowser.h"
#include "controls/Commands.h"
#include "controls/DragLine.h"
#include "controls/TabFrame.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/StageBar.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QSettings>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

// Twips.
constexpr int kLeastWidth = 12000; // a smaller window keeps the layout it had
constexpr int kLeastHeight = 9000;
constexpr int kScrollBar = 24; // pixels, generously
constexpr int kFirstColumn = 7200;
constexpr int kLeastColumn = 5400;  // the narrowest in which all tabs can be used
constexpr int kLeastPreview = 4800; // beside it
constexpr int kAround = 1200;       // of the height that are not preview
constexpr int kStripLeft = 120, kStripTop = 120;
constexpr int kAroundStrip = 240; // of the column that are not strip
constexpr int kAroundFrame = 480; // and not frame

const QString kColumn = QStringLiteral("room/leftColumn");
const QString kWide = QStringLiteral("room/wideSource");
const QString kAlone = QStringLiteral("room/previewAlone");

} // namespace

WorkRoom::WorkRoom(QWidget &page, TabStrip &strip, const QList<TabFrame *> &frames, PreviewFrame &preview,
                   QWidget &window)
    : QObject(&window), m_page(page), m_strip(strip), m_frames(frames), m_preview(preview), m_window(window),
      m_line(new DragLine(Qt::Vertical, "columnLine",
                          tr("Drag to give the tabs or the preview more room; double-click to reset"),
                          &page)),
      m_column(QSettings().value(kColumn, kFirstColumn).toInt())
{
    connect(m_line, &DragLine::dragged, this, [this](int to) { setColumn(toTwips(to) + kStripLeft); });
    connect(m_line, &DragLine::dropped, this, [this] { QSettings().setValue(kColumn, m_column); });
    connect(m_line, &DragLine::doubleClicked, this, [this] {
        setColumn(kFirstColumn);
        QSettings().remove(kColumn);
    });
    const auto showTabs = [this] { setAlone(false); };
    connect(&strip, &TabStrip::currentChanged, this, showTabs);
    connect(&strip, &TabStrip::tabBarClicked, this, showTabs);
    window.installEventFilter(this);
}

void WorkRoom::addCommands(Commands &menu)
{
    const auto add = [&](const char *name, Qt::Key key, const Commands::Command &command) {
        QAction *item = menu.action(name);
        item->setShortcut(key);
        m_window.addAction(item); // its menu belongs to one tab
        menu.on(name, command);
        return item;
    };
    m_wideItem = add("mnuWideSource", Qt::Key_F9, [this] { mnuWideSource_Click(); });
    m_aloneItem = add("mnuPreviewAlone", Qt::Key_F11, [this] { setAlone(!m_isAlone); });
}

void WorkRoom::restore()
{
    m_isWide = QSettings().value(kWide).toBool();
    m_wideItem->setChecked(m_isWide);
    layOut();
    setAlone(QSettings().value(kAlone).toBool());
}

void WorkRoom::Form_Resize(int width, int height)
{
    m_inWindow = {width, height};
    const bool isSmall = width <= kLeastWidth || height <= kLeastHeight;
    if (isSmall && !m_isAlone)
        return;
    if (!isSmall) {
        m_width = width;
        m_height = height;
    }
    layOut();
}

void WorkRoom::beSmallest(const QSize &screen)
{
    const int least = kLeastWidth + kTwipsPerPixel, wide = toTwips(screen.width() - kScrollBar);
    const bool isLow = toTwips(screen.height()) <= kLeastHeight;
    Form_Resize(isLow ? std::max(least, wide) : least, kLeastHeight + kTwipsPerPixel);
}

int WorkRoom::column() const
{
    const int most = std::max(m_width - kLeastPreview, kLeastColumn);
    return std::clamp(m_isWide ? m_width / 2 : m_column, kLeastColumn, most);
}

void WorkRoom::setColumn(int twips)
{
    m_column = twips;
    if (std::exchange(m_isWide, false)) {
        QSettings().setValue(kWide, false);
        m_wideItem->setChecked(false);
    }
    m_column = column();
    layOut();
}

void WorkRoom::mnuWideSource_Click()
{
    m_isWide = !m_isWide;
    QSettings().setValue(kWide, m_isWide);
    setAlone(false);
    layOut();
    if (m_isWide)
        emit sourceWanted();
}

bool WorkRoom::endAlone()
{
    const bool wasAlone = m_isAlone;
    setAlone(false);
    return wasAlone;
}

void WorkRoom::setAlone(bool alone)
{
    if (m_isAlone == alone)
        return;
    m_isAlone = alone;
    QSettings().setValue(kAlone, alone);
    m_aloneItem->setChecked(alone);
    QWidget *const focused = QApplication::focusWidget();
    m_strip.setVisible(!alone);
    m_line->setVisible(!alone);
    TabFrame *const shown = m_frames.at(m_strip.currentIndex());
    shown->setVisible(!alone);
    layOut();
    if (alone && focused && (focused == &m_strip || shown->isAncestorOf(focused)))
        m_preview.wb->setFocus();
}

void WorkRoom::layOut()
{
    layOutTabs(column());
    layOutPreview(m_isAlone ? 2 * kStripLeft : column());
    m_page.setMinimumSize(m_preview.geometry().right() + 1,
                          std::max(m_isAlone ? 0 : m_strip.geometry().bottom(),
                                   m_preview.geometry().bottom() + StageBar::kHeight) +
                              1);
}

void WorkRoom::layOutTabs(int column)
{
    const int height = m_height - kAround;
    m_strip.setGeometry(toPixels(kStripLeft), toPixels(kStripTop), toPixels(column - kAroundStrip),
                        toPixels(height + 240));
    for (TabFrame *frame : m_frames)
        frame->setFrameSize(column - kAroundFrame, height - 360);
    m_line->setGeometry(toPixels(column - kStripLeft) - DragLine::kThick / 2, m_strip.y(), DragLine::kThick,
                        m_strip.height());
    m_line->raise();
}

// Alone it makes do with the window as it is, which may be smaller than what the tabs need.
void WorkRoom::layOutPreview(int column)
{
    const auto room = [this](int laidOut, int window) {
        return m_isAlone ? std::min(laidOut, std::max(window, kLeastPreview)) : laidOut;
    };
    m_preview.move(toPixels(column - kStripLeft), toPixels(kStripTop));
    m_preview.setFrameSize(room(m_width, m_inWindow.width()) - column,
                           room(m_height, m_inWindow.height()) - kAround);
}

bool WorkRoom::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_window && m_isAlone && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
        return endAlone();
    return QObject::eventFilter(watched, event);
}

} // namespace quillmere
