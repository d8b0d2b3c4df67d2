#include "browser/NamedPictures.h"

#include "browser/PictureUrls.h"

#include <algorithm>

namespace quillmere {

namespace {

// A folder is no picture.
constexpr QStringView kNoPicture = u"quillmere:/";

bool isPlain(QChar unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9') || QStringView(u"/._-~%").contains(unit);
}

// Whether the browser gives the path to us as it stands here. It has views of its own about dots, and what
// it makes of a "%" that no digits follow is its business.
bool isLiteral(QStringView path)
{
    if (!path.startsWith(u'/') || path.startsWith(u"//") || !std::ranges::all_of(path, isPlain) ||
        path.contains(u"/.") || path.contains(u"%2e", Qt::CaseInsensitive))
        return false;
    const auto isDigit = [path](qsizetype at) {
        return at < path.size() && QStringView(u"0123456789ABCDEFabcdef").contains(path[at]);
    };
    for (qsizetype at = path.indexOf(u'%'); at >= 0; at = path.indexOf(u'%', at + 1)) {
        if (!isDigit(at + 1) || !isDigit(at + 2))
            return false;
    }
    return true;
}

// Whether what stands before ends in the opening of a rule's picture, or in that of an image's source.
bool announcesPicture(QStringView before)
{
    if (before.endsWith(u"url('"))
        return true;
    return before.chopped(1).endsWith(u"<img src=", Qt::CaseInsensitive);
}

} // namespace

NamedPictures::NamedPictures(const QString &text, bool isWithStamped) : m_text(text)
{
    static const QString scheme = QString(QLatin1String(kPictureScheme) + u':');
    for (qsizetype at = m_text.indexOf(scheme); at >= 0; at = m_text.indexOf(scheme, at + 1)) {
        const QChar quote = at > 0 ? m_text[at - 1] : QChar();
        const QStringView before = QStringView(m_text).first(at);
        if ((quote != u'\'' && quote != u'"') || !announcesPicture(before))
            continue;
        const qsizetype from = at + scheme.size();
        qsizetype end = from;
        while (end < m_text.size() && isPlain(m_text[end]))
            ++end;
        const qsizetype pathEnd = end;
        if (isWithStamped && end < m_text.size() && m_text[end] == u'?') {
            do
                ++end;
            while (end < m_text.size() && m_text[end].isDigit());
        }
        const bool ends = end < m_text.size() && m_text[end] == quote;
        if (ends && isLiteral(QStringView(m_text).sliced(from, pathEnd - from)))
            m_places.append({at, end - at});
    }
}

QList<NamedPictures::Picture> NamedPictures::pictures() const
{
    QList<Picture> all;
    QHash<QStringView, qsizetype> known;
    for (const Place place : m_places) {
        const qsizetype number = known.value(urlAt(place), all.size());
        if (number == all.size()) {
            known.insert(urlAt(place), number);
            all.append({urlAt(place).toString(), 0});
        }
        ++all[number].times;
    }
    return all;
}

QString NamedPictures::noPicture()
{
    return kNoPicture.toString();
}

QString NamedPictures::with(const QHash<QString, QString> &others) const
{
    QString out;
    out.reserve(m_text.size());
    qsizetype done = 0;
    for (const Place place : m_places) {
        const auto other = others.find(urlAt(place).toString());
        if (other == others.end())
            continue;
        out += QStringView(m_text).sliced(done, place.position - done);
        out += *other;
        done = place.position + place.size;
    }
    return out += QStringView(m_text).sliced(done);
}

} // namespace quillmere
