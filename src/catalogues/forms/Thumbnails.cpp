#include "catalogues/forms/Thumbnails.h"

#include "browser/PictureFile.h"
#include "browser/PictureLookup.h"
#include "browser/PictureUrls.h"
#include "catalogues/forms/ScaledPicture.h"
#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kRoom = 32'000'000; // bytes of all thumbnails together
constexpr int kAhead = 2;         // in hand, so that the worker has the next one
constexpr int kSettling = 300;    // ms; programs write a file in several steps
constexpr int kMostWatched = 200; // files and folders

QImage scaledInto(const QImage &image, QSize room)
{
    if (image.width() <= room.width() && image.height() <= room.height())
        return image;
    const QSize size = image.size().scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QPixmap pixmapOf(const QImage &image, qreal scale)
{
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace

// What a look at a file gives.
struct Thumbnails::Look
{
    Known known;
    bool isSame = false; // as before, and nothing was read
    QImage small, large;
    QSize size;
    QString reason;
};

Thumbnails::Thumbnails(QObject *parent) : QObject(parent), m_entries(kRoom)
{
    m_worker.setMaxThreadCount(1);
    const auto once = [this](QTimer &timer, int milliseconds, auto slot) {
        timer.setSingleShot(true);
        timer.setInterval(milliseconds);
        connect(&timer, &QTimer::timeout, this, slot);
    };
    once(m_soon, 0, &Thumbnails::pump);
    once(m_settling, kSettling, &Thumbnails::changed);
    const auto settle = [this] { m_settling.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, settle);
}

Thumbnails::~Thumbnails()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void Thumbnails::setThemeFolder(const QString &folder)
{
    if (m_folder != folder) {
        m_folder = folder;
        m_entries.clear();
        m_inHand.clear();
        ++m_theme;
    }
    changed();
}

void Thumbnails::setSeen(std::function<QStringList()> seen)
{
    m_seen = std::move(seen);
    look();
}

const Thumbnail *Thumbnails::of(const QString &path) const
{
    const Entry *entry = m_entries.object(path);
    return entry ? &entry->thumbnail : nullptr;
}

void Thumbnails::changed()
{
    ++m_now;
    m_lookup = std::make_shared<PictureLookup>(m_folder);
    look();
}

void Thumbnails::pump()
{
    if (!m_seen || !m_lookup || m_inHand.size() >= kAhead)
        return;
    for (const QString &path : m_seen()) {
        const Entry *entry = m_entries.object(path);
        if ((entry && entry->looked == m_now) || m_inHand.contains(path))
            continue;
        start(path);
        if (m_inHand.size() >= kAhead)
            return;
    }
    if (m_inHand.isEmpty())
        watch();
}

void Thumbnails::start(const QString &path)
{
    m_inHand.insert(path);
    const Entry *entry = m_entries.object(path);
    m_worker.start([this, path, lookup = m_lookup, before = entry ? entry->known : Known(), now = m_now,
                    theme = m_theme, scale = qGuiApp->devicePixelRatio()] {
        const Look look = lookAt(path, *lookup, before, scale);
        const auto hand = [this, path, look, now, theme] {
            if (theme != m_theme)
                return;
            take(path, look);
            if (Entry *taken = m_entries.object(path))
                taken->looked = now;
        };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

Thumbnails::Look Thumbnails::lookAt(const QString &path, PictureLookup &lookup, const Known &before,
                                    qreal scale)
{
    Look look;
    look.known.file = lookup.admitted(pictureUrl(path));
    if (look.known.file.isEmpty()) {
        look.reason = tr("The theme has no such picture.");
        return look;
    }
    const FileState state = stateOf(look.known.file);
    look.known.bytes = state.bytes;
    look.known.changed = state.changed;
    look.isSame = look.known == before;
    if (look.isSame)
        return look;
    if (look.known.file.endsWith(u".svg", Qt::CaseInsensitive)) {
        look.reason = tr("Drawings are shown in the preview only.");
        return look;
    }
    const std::unique_ptr<QFile> file = openPicture(look.known.file);
    if (!file) {
        look.reason = tr("The file cannot be read, or is larger than 64 MB.");
        return look;
    }
    const ScaledPicture picture = readScaled(*file, kLarge * scale);
    look.size = picture.size;
    if (picture.image.isNull())
        look.reason = picture.size.isValid() ? tr("The picture is damaged, or too large to be shown.")
                                             : tr("This is not a picture.");
    look.large = scaledInto(picture.image, kLarge * scale);
    look.small = scaledInto(look.large, kSmall * scale);
    return look;
}

void Thumbnails::take(const QString &path, const Look &look)
{
    m_inHand.remove(path);
    m_soon.start();
    if (look.isSame && m_entries.contains(path))
        return;
    const qreal scale = qGuiApp->devicePixelRatio();
    auto *entry = new Entry;
    entry->thumbnail = {pixmapOf(look.small, scale), pixmapOf(look.large, scale), look.size, look.reason};
    entry->known = look.known;
    const qsizetype bytes = look.small.sizeInBytes() + look.large.sizeInBytes();
    m_entries.insert(path, entry, int(bytes) + int(sizeof(Entry)) + int(2 * path.size()));
    emit made(path);
}

// The files in view and their folders, as many as a watcher copes with.
void Thumbnails::watch()
{
    QSet<QString> wanted;
    for (const QString &path : m_seen()) {
        const Entry *entry = m_entries.object(path);
        if (wanted.size() < kMostWatched && entry && !entry->known.file.isEmpty())
            wanted += {entry->known.file, folderOf(entry->known.file).chopped(1).toString()};
    }
    const QStringList now = m_watcher.files() + m_watcher.directories();
    const QSet<QString> before(now.begin(), now.end());
    const QStringList gone = (before - wanted).values(), come = (wanted - before).values();
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    if (!come.isEmpty())
        m_watcher.addPaths(come);
}

} // namespace quillmere
