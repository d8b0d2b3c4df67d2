#pragma once

#include <QCache>
#include <QDateTime>
#include <QImage>
#include <QObject>
#include <QStringList>
#include <QThreadPool>

namespace quillmere {

struct ShownPicture
{
    QImage image; // null where there is nothing to see
    QSize size;   // of the picture itself, pixels; invalid where that is unknown
    qint64 bytes = 0;
    QString why;          // there is nothing to see
    bool isKnown = false; // false as long as nobody has looked
};

// Pictures of the theme as they are shown small, read one after the other beside the window's thread: a
// picture that somebody else has made may take its time. Nothing from outside of the theme's folder is read.
class Pictures : public QObject
{
    Q_OBJECT

public:
    // No picture is shown larger than `room`.
    explicit Pictures(QSize room, QObject *parent = nullptr);
    ~Pictures() override; // waits for the one that is being read

    // What comes from another theme is forgotten.
    void setThemeFolder(const QString &folder);
    // What is known of the file; where that is nothing, or may be outdated, it is read, and arrived() tells.
    // Of many that wait, the last ones asked for come first, and the oldest are forgotten.
    ShownPicture find(const QString &path);
    // From now on files may be others than before.
    void lookAgain() { ++m_look; }

signals:
    void arrived(const QString &path);

private:
    struct Known
    {
        ShownPicture picture;
        QDateTime time;
        int look = 0;
    };
    static Known read(const QString &path, const QString &folder, QSize room, const Known &before);
    void readNext();
    void take(const QString &path, const Known &known);

    QSize m_room;
    QString m_folder;
    QCache<QString, Known> m_known;
    QStringList m_wanted;
    int m_look = 0;
    bool m_reading = false;
    QThreadPool m_worker;
};

} // namespace quillmere
