#pragma once

#include "browser/PictureUrls.h"

#include <QHash>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

namespace quillmere {

class PictureHandler;

// A page on its way into the browser: its text with URLs for the paths of pictures and, where it names many,
// with the small ones themselves, in place of a request each, and one URL for all that are missing.
class OutgoingPage
{
public:
    using Send = std::function<void(const QString &text)>;

    explicit OutgoingPage(PictureHandler &pictures);

    // From now on it is this page, with the files that are there now; small pictures stand in it themselves
    // if it `inlines`.
    void begin(const QString &page, bool inlines);
    // Hands the text on, at once where no pictures are to be looked up for it.
    void sendWhole(const Send &send);
    // Hands it on bit by bit between the other events. `end` comes when all of it has been.
    void sendPieces(const Send &send, const std::function<void()> &end);
    // Not all of it has been handed on yet.
    bool isUnderWay() const { return m_looksUp || m_pieces.has_value(); }
    // Hands nothing on any more.
    void stop();
    // The text of another page with the pictures that stand in this one.
    QString textLike(const QString &page) const;

private:
    void lookUp(const QString &text, const Send &send);
    void sendPiece();

    PictureHandler &m_pictures;
    QString m_page;
    qsizetype m_room = 0;                // units that pictures may take yet
    QHash<QString, QString> m_otherUrls; // for pictures, as far as they were looked up
    bool m_looksUp = false;
    int m_lookups = 0;
    std::optional<PictureUrlPieces> m_pieces; // what of a long page has not been handed on yet
    Send m_send;
    std::function<void()> m_end;
    QTimer m_nextPiece;
};

} // namespace quillmere
