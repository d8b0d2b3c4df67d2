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

constexpr int kMostInARow = 5; // ms of giving answers between other events

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

void PictureHandler::findMissing(const QStringList &urls,
                                 const std::function<void(const QSet<QString> &)> &tell)
{
    m_worker.start([this, urls, tell, newest = std::weak_ptr(m_lookup)] {
        QSet<QString> missing;
        for (const QString &url : urls) {
            const auto lookup = newest.lock();
            if (!lookup)
                break; // another page is on its way, and waits for this thread
            if (lookup->admitted(QUrl(url, QUrl::StrictMode)).isEmpty())
                missing.insert(url);
        }
        QMetaObject::invokeMethod(
            this, [tell, missing] { tell(missing); }, Qt::QueuedConnection);
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
