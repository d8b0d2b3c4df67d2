#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace quillmere {

// The pictures that a text for the browser names plainly: by a URL of our scheme as the source of an <img> or
// as url('URL'). Asking the browser's library for a picture costs the window's thread a third of a
// millisecond, also for one that is not there; finding out on another thread costs it nothing.
class NamedPictures
{
public:
    explicit NamedPictures(const QString &text);

    // Each once, in order. Only such as the browser hands on letter by letter.
    QStringList urls() const;
    // The text with one URL in place of all that are missing, so that the browser asks once for all of them
    // and shows each as a missing picture. The other URLs and all else stay.
    QString withoutMissing(const QSet<QString> &missing) const;

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
