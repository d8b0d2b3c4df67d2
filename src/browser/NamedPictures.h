#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace quillmere {

// The pictures that a text for the browser names plainly: by a URL of our scheme as the source of an <img> or
// as url('URL'). Asking the browser's library for a picture costs the window's thread a third of a
// millisecond, also for one that is not there; finding out on another thread costs it nothing.
class NamedPictures
{
public:
    // The URL of a picture whose file is there ends in a stamp (see withPictureUrls()); those count only if
    // they are asked for.
    explicit NamedPictures(const QString &text, bool isWithStamped = false);

    struct Picture
    {
        QString url;
        int times = 0; // that it is named
    };
    // Each once, in order. Only such as the browser hands on letter by letter.
    QList<Picture> pictures() const;
    // What is put for pictures that are missing, so that the browser asks once for all of them and shows each
    // as a missing picture.
    static QString noPicture();
    // The text with others in place of these URLs. The rest of the URLs and all else stay.
    QString with(const QHash<QString, QString> &others) const;

private:
    struct Place
    {
        qsizetype position, size;
    };

    QStringView urlAt(Place place) const { return QStringView(m_text).sliced(place.position, place.size); }

    QString m_text;
    QList<Place> m_places;
};

} // namespace quillmere
