#include "gallery/forms/OverviewPictures.h"

#include "browser/forms/PageCamera.h"
#include "browser/forms/PictureSizes.h"
#include "files/Memory.h"
#include "gallery/forms/OverviewRows.h"
#include "gallery/forms/ThemePages.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr qint64 kRoom = 64'000'000; // bytes of all pictures together
constexpr int kAhead = 2;            // pages that the camera has at a time
constexpr int kSettling = 300;       // ms; programs write a file in several steps
constexpr int kRest = 30'000;        // ms until the browser goes when nobody looks any more
constexpr int kMostWatched = 300;    // files
constexpr qint64 kLarge = 300'000;   // bytes of a document; the browser is busy with it for a second or more
constexpr int kMostDrawn = 300;      // by one browser, which keeps some memory of every page it had
constexpr qsizetype kLastPage = 1'000'000; // units of a page that is the last one of its browser
constexpr int kTrimmed = 50;               // pages, between which what their pictures took is given back

} // namespace

OverviewPictures::OverviewPictures(OverviewRows &rows, const ThemeProject &theme, TextOf text,
                                   QObject *parent)
    : QObject(parent), m_rows(rows), m_theme(theme), m_text(std::move(text)), m_turns(1)
{
    m_worker.setMaxThreadCount(1);
    const auto once = [this](QTimer &timer, int milliseconds, auto slot) {
        timer.setSingleShot(true);
        timer.setInterval(milliseconds);
        connect(&timer, &QTimer::timeout, this, slot);
    };
    once(m_soon, 0, &OverviewPictures::pump);
    once(m_settling, kSettling, &OverviewPictures::changed);
    once(m_rest, kRest, [this] { m_camera.reset(); });
    const auto settle = [this] { m_settling.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, settle);
}

OverviewPictures::~OverviewPictures()
{
    m_worker.waitForDone();
}

template <typename Work, typename Use>
void OverviewPictures::beside(Work work, Use use)
{
    m_worker.start([this, work = std::move(work), use = std::move(use), generation = m_generation] {
        auto result = work();
        const auto hand = [this, use, generation, result = std::move(result)] {
            if (generation == m_generation)
                use(result);
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

PageCamera &OverviewPictures::camera()
{
    if (!m_camera) {
        m_camera =
            std::make_unique<PageCamera>(m_theme.folder(), screenPixels(m_theme), PageCamera::Mark::Below);
        m_camera->setFonts(m_parts.fonts);
        m_camera->setLeastWidth(m_size.width());
    }
    return *m_camera;
}

// What is under way is not wanted any more.
void OverviewPictures::startAnew()
{
    ++m_generation;
    m_turns.nothingInHand();
    m_isMaking = false;
    m_drawing = 0;
    m_marks.clear();
    if (m_camera)
        m_camera->forget();
}

void OverviewPictures::setWindows()
{
    startAnew();
    m_turns.renumber(m_rows.setWindows(m_theme.widgets.LvWidget));
    m_seen.clear();
    m_files.clear();
    if (std::exchange(m_folder, m_theme.folder()) != m_folder || !m_sizes)
        m_sizes = std::make_shared<PictureSizes>(m_folder);
    if (m_camera) {
        m_camera->setThemeFolder(m_folder);
        m_camera->setSize(screenPixels(m_theme));
    }
    changed();
}

void OverviewPictures::setPictureSize(QSize size)
{
    if (m_size == size)
        return;
    m_size = size;
    m_turns.setRoom(int(std::max<qint64>(kRoom / (4LL * size.width() * size.height() + 1), 1)));
    if (m_camera)
        m_camera->setLeastWidth(size.width());
    changed();
}

void OverviewPictures::setSeen(const QList<int> &numbers)
{
    m_isOn = true;
    m_rest.stop();
    m_seen = numbers;
    const auto isSmall = [this](int number) {
        return QFileInfo(m_rows.window(number).path).size() <= kLarge; // of a file that is missing, too
    };
    std::stable_partition(m_seen.begin(), m_seen.end(), isSmall);
    m_turns.setSeen(m_seen);
    m_soon.start();
}

void OverviewPictures::stop()
{
    m_isOn = false;
    startAnew();
    m_seen.clear();
    m_files.clear();
    watch();
    m_rest.start();
}

void OverviewPictures::changed()
{
    m_isStale = true;
    m_turns.allChanged();
    if (m_isOn)
        m_soon.start();
}

// One page at a time is made, and so that the camera always has the next one.
void OverviewPictures::pump()
{
    if (!m_isOn || m_isMaking || m_drawing >= kAhead || m_size.isEmpty())
        return;
    if (m_drawn >= kMostDrawn) {
        if (m_drawing > 0)
            return;
        m_camera.reset();
        m_drawn = 0;
    }
    const int number = m_turns.next();
    if (number >= 0)
        make(number);
    else if (m_drawing == 0)
        watch();
}

void OverviewPictures::make(int number)
{
    if (std::exchange(m_isStale, false)) {
        m_parts = receiverParts(m_theme);
        m_parts.theme.sizeOf = [sizes = m_sizes](const QString &path) { return sizes->of(path); };
        if (m_camera)
            m_camera->setFonts(m_parts.fonts);
    }
    m_isMaking = true;
    const QString path = m_rows.window(number).path;
    beside([source = WindowSource{path, m_text(path), m_theme.rule}, theme = m_parts.theme,
            folder = m_folder] { return windowPage(source, theme, folder); },
           [this, number](const WindowPage &made) { take(number, made); });
}

void OverviewPictures::take(int number, const WindowPage &made)
{
    m_isMaking = false;
    m_files.insert(number, made.files.mid(0, kMostWatched));
    OverviewRows::Window window = m_rows.window(number);
    window.place = made.place;
    window.isHidden = made.isHidden;
    window.reason = made.reason;
    const QByteArray mark = made.mark + QByteArray::number(m_size.width());
    const bool hasPage = !made.page.isEmpty();
    const bool isSame = hasPage && window.mark == mark && window.look != OverviewRows::Look::Waiting;
    if (!hasPage) {
        window.look = made.hasDocument ? OverviewRows::Look::NotDrawn : OverviewRows::Look::NoDocument;
        window.picture = {};
        window.mark.clear();
    }
    m_rows.setWindow(number, window);
    if (hasPage && !isSame) {
        m_marks.insert(number, mark);
        draw(number, made.page);
    } else {
        done(number);
    }
    m_soon.start();
}

void OverviewPictures::draw(int number, const QString &page)
{
    ++m_drawing;
    m_drawn = page.size() > kLastPage ? kMostDrawn : m_drawn + 1;
    if (m_drawn % kTrimmed == 0)
        m_worker.start(giveMemoryBack);
    camera().take(page, [this, number](const QImage &picture) {
        --m_drawing;
        m_soon.start();
        beside(
            [picture, size = m_size] {
                return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .convertToFormat(QImage::Format_RGB32);
            },
            [this, number](const QImage &small) { show(number, small); });
    });
}

void OverviewPictures::show(int number, const QImage &picture)
{
    OverviewRows::Window window = m_rows.window(number);
    window.mark = m_marks.take(number);
    window.picture = QPixmap::fromImage(picture);
    window.look = picture.isNull() ? OverviewRows::Look::NotDrawn : OverviewRows::Look::Drawn;
    if (picture.isNull())
        window.reason = tr("the browser did not draw it");
    m_rows.setWindow(number, window);
    done(number);
    m_soon.start();
}

void OverviewPictures::done(int number)
{
    for (const int gone : m_turns.done(number))
        m_rows.dropPicture(gone);
}

// The files that the windows in view are made from, as many as a watcher copes with. What is replaced by
// another file of its name is no longer watched, and is added again when its window has been looked at.
void OverviewPictures::watch()
{
    QStringList wanted;
    QHash<int, QStringList> files;
    for (const int number : std::as_const(m_seen)) {
        const QStringList here = m_files.value(number);
        files.insert(number, here);
        if (wanted.size() < kMostWatched)
            wanted += here;
    }
    m_files.swap(files);
    const QStringList now = m_watcher.files();
    const QSet<QString> before(now.begin(), now.end()), after(wanted.begin(), wanted.end());
    const QStringList gone = (before - after).values(), come = (after - before).values();
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    if (!come.isEmpty())
        m_watcher.addPaths(come.mid(0, kMostWatched));
}

} // namespace quillmere
