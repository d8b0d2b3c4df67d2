#include "browser/forms/PageCamera.h"

#include "browser/PageTree.h"
#include "browser/TextScripts.h"

#include <QEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWebEngineScript>

#include <utility>

namespace quillmere {

namespace {

constexpr int kPatience = 20000;   // ms for one page
constexpr int kDoubt = 200;        // ms without a mark before the page is asked about it
constexpr int kMostDoubt = 10000;  // ms until the page is taken without
constexpr int kMostLoading = 5000; // ms for pictures before the page is taken as it is
constexpr int kFrame = 40;         // ms between two looks at a page without a mark
constexpr int kSameLooks = 2;      // that find nothing new
constexpr int kMostLooks = 50;
constexpr int kRest = 500; // ms without an order

bool shows(const QImage &strip, const PageMark &mark)
{
    const auto isThere = [&](int square, quint32 colour) {
        const QPointF middle(mark.x() + (square + 0.5) * PageMark::kSquare, 0.5 * PageMark::kSquare);
        const QPoint place = (middle * strip.devicePixelRatio()).toPoint();
        return strip.valid(place) && (strip.pixel(place) & RGB_MASK) == colour;
    };
    return isThere(0, mark.left) && isThere(1, mark.right);
}

// How often a page can be halved until it is too narrow or its pixels do not come out even, as a divisor.
int shrinkOf(QSize page, double leastWidth)
{
    int shrink = 1;
    const auto fits = [&](int by) {
        return page.width() % by == 0 && page.height() % by == 0 && page.width() >= leastWidth * by;
    };
    while (leastWidth > 0 && fits(2 * shrink))
        shrink *= 2;
    return shrink;
}

// Whether the next page can be written over this one, which saves a document and its fonts.
bool leavesNothing(const QString &page)
{
    return !page.contains(u"scroll", Qt::CaseInsensitive) && PageTree::read(page);
}

} // namespace

PageCamera::PageCamera(const QString &themeFolder, QSize size, Mark mark, QObject *parent)
    : QObject(parent), m_mark(mark)
{
    m_wb.setInlining(true);
    m_wb.setAttribute(Qt::WA_DontShowOnScreen);
    m_wb.setAttribute(Qt::WA_ShowWithoutActivating);
    m_wb.setAttribute(Qt::WA_QuitOnClose, false);
    m_wb.setFocusPolicy(Qt::NoFocus);
    setSize(size);
    setThemeFolder(themeFolder);
    m_wb.show();

    const auto once = [this](QTimer &timer, int milliseconds, auto slot) {
        timer.setSingleShot(true);
        timer.setInterval(milliseconds);
        connect(&timer, &QTimer::timeout, this, slot);
    };
    once(m_look, 0, &PageCamera::look);
    once(m_doubt, kDoubt, &PageCamera::onDoubt);
    once(m_watch, kFrame, &PageCamera::watch);
    once(m_patience, kPatience, [this] { finish({}); });
    once(m_fail, 0, [this] { finish({}); });
    once(m_rest, kRest, &PageCamera::rest);
    connect(&m_wb, &WebBrowser::written, this, &PageCamera::onWritten);
    connect(&m_wb, &WebBrowser::failed, this, [this] { m_fail.start(); }); // maybe from within write()
}

PageCamera::~PageCamera()
{
    forget();
}

void PageCamera::setThemeFolder(const QString &folder)
{
    m_wb.setThemeFolder(folder);
}

void PageCamera::setFonts(const QList<PageFont> &fonts)
{
    m_wb.setFonts(fonts);
}

void PageCamera::setSize(QSize size)
{
    if (m_size == size)
        return;
    m_size = size;
    fitBrowser();
}

void PageCamera::setLeastWidth(int pixels)
{
    if (m_leastWidth == pixels)
        return;
    m_leastWidth = pixels;
    fitBrowser();
}

void PageCamera::fitBrowser()
{
    m_shrink = shrinkOf(m_size, m_leastWidth / m_wb.devicePixelRatioF());
    m_wb.setView({1.0 / m_shrink, {}, m_size});
    m_wb.resize(pageRect().size() + QSize(0, m_mark == Mark::Below ? PageMark::kSquare : 0));
    if (m_stage != Stage::Idle)
        start();
}

void PageCamera::take(const QString &page, const std::function<void(const QImage &)> &use)
{
    m_orders.push_back({page, use});
    if (m_stage == Stage::Idle)
        start();
}

void PageCamera::askFamilies(const std::function<void(const QStringList &families)> &use)
{
    m_wb.page()->runJavaScript(
        familiesScript(), QWebEngineScript::ApplicationWorld,
        [use](const QVariant &answer) { use(answer.toString().split(u'\n', Qt::SkipEmptyParts)); });
}

void PageCamera::forget()
{
    m_orders.clear();
    m_stage = Stage::Idle;
    for (QTimer *timer : {&m_look, &m_doubt, &m_watch, &m_fail, &m_patience})
        timer->stop();
    m_rest.start();
}

void PageCamera::start()
{
    for (QTimer *timer : {&m_look, &m_doubt, &m_watch, &m_fail, &m_rest})
        timer->stop();
    m_stage = Stage::Writing;
    m_patience.start();
    for (int place = 0; place < PageMark::kPlaces; ++place)
        m_marks[place] = PageMark::at(place, m_mark == Mark::Below ? m_size.height() : 0, m_shrink);
    m_wb.setBehind(markingWhenLoadedScript(m_marks[0]));
    const QString &page = m_orders.front().page;
    if (std::exchange(m_isTouched, !leavesNothing(page)))
        m_wb.beginDocument();
    m_wb.write(page);
}

// Once more, where the renderer has died since.
void PageCamera::onWritten()
{
    if (m_stage == Stage::Idle)
        return;
    m_watch.stop();
    // Another one comes with another renderer.
    if (m_painted != m_wb.focusProxy()) {
        m_painted = m_wb.focusProxy();
        if (m_painted)
            m_painted->installEventFilter(this);
    }
    m_stage = Stage::Marked;
    m_sinceWritten.start();
    m_doubt.start();
    m_look.start(); // it may be painted already
}

bool PageCamera::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_painted && event->type() == QEvent::Paint && !m_isGrabbing &&
        (m_stage == Stage::Marked || m_stage == Stage::Moved))
        m_look.start(); // not from within
    return QObject::eventFilter(object, event);
}

// What the browser paints comes from another process, some time after the page is told to have it. Where the
// first mark is, the page is all there but for what the mark covers; that is what the second one is for.
void PageCamera::look()
{
    const QImage strip = grab(edge());
    const bool wasMoved = m_stage == Stage::Moved;
    if (!shows(strip, m_marks[wasMoved ? 1 : 0]))
        return;
    m_doubt.start();
    if (!wasMoved && m_mark == Mark::InPage) {
        m_strip = strip;
        m_stage = Stage::Moved;
        m_wb.page()->runJavaScript(movingMarkScript(m_marks[1]), QWebEngineScript::ApplicationWorld);
        return;
    }
    QImage picture = grab(pageRect());
    if (wasMoved)
        cover(picture);
    finish(picture);
}

QRect PageCamera::pageRect() const
{
    return {0, 0, m_size.width() / m_shrink, m_size.height() / m_shrink};
}

QRect PageCamera::edge() const
{
    return {0, m_mark == Mark::Below ? pageRect().height() : 0, PageMark::kPlaces * 2 * PageMark::kSquare,
            PageMark::kSquare};
}

// Puts what was there before over the second mark.
void PageCamera::cover(QImage &picture) const
{
    const qreal ratio = picture.devicePixelRatio();
    QImage strip = m_strip;
    strip.setDevicePixelRatio(1);
    picture.setDevicePixelRatio(1);
    const int from = int(m_marks[1].x() * ratio);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPoint(from, 0), strip, QRect(from, 0, strip.width() - from, strip.height()));
    painter.end();
    picture.setDevicePixelRatio(ratio);
}

// A grab paints, too.
QImage PageCamera::grab(const QRect &part)
{
    const QScopedValueRollback grabbing(m_isGrabbing, true);
    return m_wb.grab(part & m_wb.rect()).toImage();
}

// Either pictures or frames take long, or something about the page keeps the mark from being seen.
void PageCamera::onDoubt()
{
    askState([this](PageMark::State state) {
        const bool isLoading = state == PageMark::State::Awaited;
        if (state != PageMark::State::Hidden &&
            !m_sinceWritten.hasExpired(isLoading ? kMostLoading : kMostDoubt)) {
            m_doubt.start();
            return;
        }
        m_stage = Stage::Watching;
        m_last = {};
        m_same = m_looks = 0;
        m_wb.page()->runJavaScript(removingMarkScript(), QWebEngineScript::ApplicationWorld);
        m_watch.start();
    });
}

// No answer where something else has come meanwhile.
void PageCamera::askState(const std::function<void(PageMark::State)> &use)
{
    const auto tell = [self = QPointer(this), use, stage = m_stage,
                       mark = m_marks[0].left](const QVariant &answer) {
        if (self && self->m_stage == stage && self->m_marks[0].left == mark)
            use(PageMark::stateOf(answer.toString()));
    };
    m_wb.page()->runJavaScript(markStateScript(), QWebEngineScript::ApplicationWorld, tell);
}

// Until the picture stops changing, once it can be that of the page.
void PageCamera::watch()
{
    askState([this](PageMark::State state) {
        m_watch.start();
        if (state != PageMark::State::Removed)
            return;
        const QImage now = grab(pageRect());
        m_same = now == m_last ? m_same + 1 : 0;
        m_last = now;
        if (m_same < kSameLooks && ++m_looks < kMostLooks)
            return;
        ++m_unmarked;
        finish(std::exchange(m_last, {}));
    });
}

// The browser goes on while the picture is used.
void PageCamera::finish(const QImage &picture)
{
    if (m_stage == Stage::Idle)
        return;
    const auto use = std::move(m_orders.front().use);
    m_orders.pop_front();
    m_strip = {};
    if (m_orders.empty())
        forget();
    else
        start();
    use(picture);
}

// A page that moves of itself, or one that the browser cannot cope with, is not kept at it.
void PageCamera::rest()
{
    m_isTouched = false;
    m_wb.setBehind({});
    m_wb.beginDocument();
    m_wb.write({});
}

} // namespace quillmere
