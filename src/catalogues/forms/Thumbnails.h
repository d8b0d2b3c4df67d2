#pragma once

#include <QCache>
#include <QFileSystemWatcher>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>

namespace quillmere {

class PictureLookup;

// A picture file as lists show it.
struct Thumbnail
{
    QPixmap small, large; // null where there is nothing to see
    QSize size;           // of the picture itself, pixels; invalid where that is unknown
    QString reason;       // why there is nothing to see
};

// Thumbnails of the picture files that are in view, made beside the window's thread, a few at a time, and
// kept in memory as long as there is room and the file is the same. Only files below the theme are looked at,
// after all links are followed, and only pictures of pixels within the limits of the preview are read.
class Thumbnails : public QObject
{
    Q_OBJECT

public:
    // Pixels of the window; a picture keeps its shape in it and is never made larger.
    static constexpr QSize kSmall{32, 18}, kLarge{128, 80};

    explicit Thumbnails(QObject *parent = nullptr);
    ~Thumbnails() override; // waits for those in hand

    // Forgets those of another theme.
    void setThemeFolder(const QString &folder);
    // Who is asked, each time that one is to be made, for the paths in view, first those to be made first. So
    // what has scrolled away is not made.
    void setSeen(std::function<QStringList()> seen);
    // What is known of the file at a path, as the image list has it; null before it is made.
    const Thumbnail *of(const QString &path) const;
    // Others are in view.
    void look() { m_soon.start(); }
    // Files may have become others: those in view are looked at again.
    void changed();

signals:
    void made(const QString &path);

private:
    struct Known
    {
        QString file; // the canonical path
        qint64 bytes = 0, changed = 0;
        bool operator==(const Known &) const = default;
    };
    struct Entry
    {
        Thumbnail thumbnail;
        Known known;
        qint64 looked = 0; // m_now when it was
    };
    struct Look;

    static Look lookAt(const QString &path, PictureLookup &lookup, const Known &before, qreal scale);
    void pump();
    void start(const QString &path);
    void take(const QString &path, const Look &look);
    void watch();

    std::function<QStringList()> m_seen;
    QCache<QString, Entry> m_entries; // by path
    QSet<QString> m_inHand;
    QString m_folder;
    std::shared_ptr<PictureLookup> m_lookup; // of the worker; each has listed folders as they were
    QFileSystemWatcher m_watcher;
    QTimer m_soon, m_settling;
    QThreadPool m_worker;
    qint64 m_now = 1;
    int m_theme = 0; // counts them
};

} // namespace quillmere
