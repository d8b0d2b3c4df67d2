#include "browser/forms/PictureHandler.h"

#include "browser/PictureFile.h"
#include "browser/PictureLookup.h"
#include "browser/PictureUrls.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImageReader>
#include <QMimeDatabase>

#include <iterator>

namespace quillmere {

namespace {

constexpr int kMostInARow = 5;           // ms of giving answers between other events
constexpr qint64 kLargestInlined = 4096; // bytes of a file, counted as often as the page names it

// A file of some kilobytes can stand for gigabytes of pixels. Formats that say nothing of their size in a
// header, like drawings, are not asked.
bool fitsInMemory(QFile &picture)
{
    const QByteArray format = pixelFormat(picture);
    if (format.isEmpty())
        return true;
    const QSize size = QImageReader(&picture, format).size();
    return picture.seek(0) && qint64(size.width()) * size.height() <= kMostPixels;
}

// The URL that is the picture itself, where its file has no more bytes than these; empty for others.
QString inlined(const QString &path, qint64 mostBytes)
{
    const std::unique_ptr<QFile> file = openPicture(path);
    if (!file || file->size() > mostBytes)
        return {};
    const QByteArray format = pixelFormat(*file);
    if (format.isEmpty() || !fitsInMemory(*file))
        return {};
    const QByteArray bytes = file->read(mostBytes + 1);
    return bytes.size() > mostBytes
               ? QString()
               : QString::fromLatin1("data:image/" + format + ";base64," + bytes.toBase64());
}

} // namespace

PictureHandler::PictureHandler()
{
    m_worker.setMaxThreadCount(1);
    lookAnew();
}

PictureHandler::~PictureHandler()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void PictureHandler::setThemeFolder(const QString &folder)
{
    m_themeFolder = folder;
    lookAnew();
}

// Who else asks for this path, with another number, asks for a file outside of every theme.
QUrl PictureHandler::backdropUrl() const
{
    return QUrl(QLatin1String(kPictureScheme) + u":/:backdrop?" + QString::number(m_backdrops));
}

QString PictureHandler::setBackdrop(const QByteArray &png)
{
    m_backdrop = png;
    ++m_backdrops;
    return QString::fromLatin1(backdropUrl().toEncoded());
}

void PictureHandler::lookAnew()
{
    m_lookup = std::make_shared<PictureLookup>(m_themeFolder);
}

void PictureHandler::lookUp(const QList<NamedPictures::Picture> &pictures, qsizetype room,
                            const std::function<void(const QHash<QString, QString> &)> &tell)
{
    m_worker.start([this, pictures, room, tell, newest = std::weak_ptr(m_lookup)] {
        QHash<QString, QString> others;
        qsizetype left = room;
        for (const auto &[url, times] : pictures) {
            const auto lookup = newest.lock();
            if (!lookup)
                break; // another page is on its way, and waits for this thread
            const QString path = lookup->admitted(QUrl(url, QUrl::StrictMode));
            if (path.isEmpty()) {
                others.insert(url, NamedPictures::noPicture());
                continue;
            }
            const QString own = left > 0 ? inlined(path, kLargestInlined / times) : QString();
            left -= own.size() * times;
            if (!own.isEmpty())
                others.insert(url, own);
        }
        QMetaObject::invokeMethod(
            this, [tell, others] { tell(others); }, Qt::QueuedConnection);
    });
}

void PictureHandler::requestStarted(QWebEngineUrlRequestJob *job)
{
    if (!m_backdrop.isEmpty() && job->requestUrl() == backdropUrl()) {
        auto *bytes = new QBuffer(job);
        bytes->setData(m_backdrop);
        job->reply("image/png", bytes);
        return;
    }
    const quint64 request = ++m_requests;
    m_jobs.insert(request, job);
    m_worker.start([this, request, url = job->requestUrl(), lookup = m_lookup] {
        Answer found = find(*lookup, request, url);
        const QMutexLocker lock(&m_mutex);
        m_answers.push_back(std::move(found));
        if (m_answers.size() == 1)
            QMetaObject::invokeMethod(this, &PictureHandler::answer, Qt::QueuedConnection);
    });
}

PictureHandler::Answer PictureHandler::find(PictureLookup &lookup, quint64 request, const QUrl &url) const
{
    Answer found{request, {}, {}};
    const QString path = lookup.admitted(url);
    std::unique_ptr<QFile> file = path.isEmpty() ? nullptr : openPicture(path);
    if (!file || !fitsInMemory(*file))
        return found;
    found.type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name().toLatin1();
    file->moveToThread(thread());
    found.file = std::move(file);
    return found;
}

void PictureHandler::answer()
{
    QElapsedTimer clock;
    clock.start();
    std::vector<Answer> answers;
    {
        const QMutexLocker lock(&m_mutex);
        answers.swap(m_answers);
    }
    auto next = answers.begin();
    for (; next != answers.end() && clock.elapsed() < kMostInARow; ++next)
        reply(std::move(*next));
    if (next == answers.end())
        return;
    const QMutexLocker lock(&m_mutex);
    m_answers.insert(m_answers.begin(), std::make_move_iterator(next),
                     std::make_move_iterator(answers.end()));
    QMetaObject::invokeMethod(this, &PictureHandler::answer, Qt::QueuedConnection);
}

void PictureHandler::reply(Answer answer)
{
    QWebEngineUrlRequestJob *job = m_jobs.take(answer.request);
    if (!job)
        return; // the page has gone
    if (!answer.file) {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    answer.file->setParent(job);
    job->reply(answer.type, answer.file.release());
}

} // namespace quillmere
