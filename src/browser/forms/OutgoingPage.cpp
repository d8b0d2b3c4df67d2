#include "browser/forms/OutgoingPage.h"

#include "browser/NamedPictures.h"
#include "browser/forms/PictureHandler.h"

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kPiece = 1 << 16;       // units; a millisecond's work or two
constexpr qsizetype kFewPictures = 20;      // may be asked for, or be missing, at the price of a request each
constexpr qsizetype kMostInlined = 1 << 22; // units of all pictures that travel with a page

} // namespace

OutgoingPage::OutgoingPage(PictureHandler &pictures) : m_pictures(pictures)
{
    m_nextPiece.setInterval(0);
    QObject::connect(&m_nextPiece, &QTimer::timeout, &m_nextPiece, [this] { sendPiece(); });
}

void OutgoingPage::begin(const QString &page, bool inlines)
{
    m_page = page;
    m_room = inlines ? kMostInlined : 0;
    m_otherUrls.clear();
    m_pictures.lookAnew();
}

void OutgoingPage::sendWhole(const Send &send)
{
    lookUp(withPictureUrls(m_page, m_pictures.themeFolder()), send);
}

// Hands the text on at once, or, where it names many pictures, when it is known what they are.
void OutgoingPage::lookUp(const QString &text, const Send &send)
{
    const NamedPictures named(text, m_room > 0);
    const QList<NamedPictures::Picture> pictures = named.pictures();
    if (pictures.size() <= kFewPictures) {
        send(text);
        return;
    }
    m_looksUp = true;
    const auto tell = [this, named, send, length = text.size(),
                       number = ++m_lookups](const QHash<QString, QString> &others) {
        if (number != m_lookups)
            return;
        m_looksUp = false;
        m_otherUrls.insert(others);
        const QString whole = named.with(others);
        m_room -= std::max<qsizetype>(0, whole.size() - length);
        send(whole);
    };
    m_pictures.lookUp(pictures, m_room, tell);
}

void OutgoingPage::sendPieces(const Send &send, const std::function<void()> &end)
{
    m_send = send;
    m_end = end;
    m_pieces.emplace(m_page, m_pictures.themeFolder());
    m_nextPiece.start();
}

void OutgoingPage::sendPiece()
{
    m_nextPiece.stop();
    if (m_pieces->atEnd()) {
        const auto end = std::exchange(m_end, {});
        stop();
        end();
        return;
    }
    lookUp(m_pieces->next(kPiece), [this](const QString &piece) {
        m_send(piece);
        m_nextPiece.start();
    });
}

void OutgoingPage::stop()
{
    ++m_lookups;
    m_looksUp = false;
    m_nextPiece.stop();
    m_pieces.reset();
    m_page.clear();
    m_send = {};
    m_end = {};
}

QString OutgoingPage::textLike(const QString &page) const
{
    return NamedPictures(withPictureUrls(page, m_pictures.themeFolder())).with(m_otherUrls);
}

} // namespace quillmere
