#include "browser/PagePlace.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillmere {

QList<PagePlace> placesOf(const QString &answer)
{
    constexpr qsizetype kNumbers = 8; // of one place
    const QJsonArray parts = QJsonDocument::fromJson(answer.toUtf8()).array();
    const QJsonArray ids = parts.at(0).toArray(), numbers = parts.at(1).toArray();
    if (numbers.size() != ids.size() * kNumbers)
        return {};
    const auto boxAt = [&](qsizetype first) {
        const auto number = [&](int at) { return numbers[first + at].toDouble(); };
        return number(2) < 0 ? QRectF() : QRectF(number(0), number(1), number(2), number(3));
    };
    QList<PagePlace> places;
    places.reserve(ids.size());
    for (qsizetype i = 0; i < ids.size(); ++i)
        places.append({ids[i].toString(), boxAt(i * kNumbers), boxAt(i * kNumbers + kNumbers / 2)});
    return places;
}

} // namespace quillmere
