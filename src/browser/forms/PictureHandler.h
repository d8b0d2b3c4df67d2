#pragma once

#include "browser/NamedPictures.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QPointer>
#include <QThreadPool>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlSchemeHandler>

#include <functional>
#include <memory>
#include <vector>

namespace quillmere {

class PictureLookup;

// Hands the pictures of the theme to the page. They are looked up and opened on a thread of their own: a page
// may name more of them, and a folder hold more, than a keystroke can wait for.
class PictureHandler : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    PictureHandler();
    ~PictureHandler() override;

    QString themeFolder() const { return m_themeFolder; }
    void setThemeFolder(const QString &folder);
    // Gives out a PNG that is no file, and says under which URL.
    QString setBackdrop(const QByteArray &png);
    // From now on files are found that have come since.
    void lookAnew();
    // Tells, by the event loop, what is to stand for these pictures in a page, by URL: for those that are
    // missing, and for those so small that a request costs more, as far as they fit into `room`, in units.
    void lookUp(const QList<NamedPictures::Picture> &pictures, qsizetype room,
                const std::function<void(const QHash<QString, QString> &)> &tell);

    void requestStarted(QWebEngineUrlRequestJob *job) override;

private:
    struct Answer
    {
        quint64 request = 0;
        std::unique_ptr<QFile> file; // null: there is no such picture
        QByteArray type;
    };

    Answer find(PictureLookup &lookup, quint64 request, const QUrl &url) const; // on the thread
    void answer();
    void reply(Answer answer);
    QUrl backdropUrl() const;

    QString m_themeFolder;
    QByteArray m_backdrop;
    int m_backdrops = 0;                     // the browser keeps pictures by their URL
    std::shared_ptr<PictureLookup> m_lookup; // used on the thread only
    quint64 m_requests = 0;
    QHash<quint64, QPointer<QWebEngineUrlRequestJob>> m_jobs;
    QMutex m_mutex;
    std::vector<Answer> m_answers; // guarded by the mutex
    QThreadPool m_worker;
};

} // namespace quillmere
