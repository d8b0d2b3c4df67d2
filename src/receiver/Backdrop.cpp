#include "receiver/Backdrop.h"

#include <QStringBuilder>

namespace quillmere {

namespace {

QString atOf(int top, QSize size)
{
    return u" 0 " % QString::number(top) % u"px/" % QString::number(size.width()) % u"px " %
           QString::number(size.height()) % u"px no-repeat";
}

// Bars of full colours, as on a test card, over a ramp from black to white. Neither has one of the key
// colours, so that what shows them is seen.
QString testPicture(QSize screen)
{
    const int bars = screen.height() * 3 / 4;
    return u"linear-gradient(90deg,#c0c0c0 0 12.5%,#c0c000 0 25%,#00c0c0 0 37.5%,#00c000 0 50%,#c000c0 0 "
           u"62.5%,"
           u"#c00000 0 75%,#0000c0 0 87.5%,#101010 0)" %
           atOf(0, {screen.width(), bars}) % u",linear-gradient(90deg,#000,#fff)" %
           atOf(bars, {screen.width(), screen.height() - bars}) % u",#000";
}

} // namespace

QString groundOf(Backdrop backdrop, QSize screen, const QString &pictureUrl)
{
    switch (backdrop) {
    case Backdrop::Chequers:
        return QStringLiteral("repeating-conic-gradient(#808080 0 25%,#a8a8a8 0 50%) 0 0/16px 16px");
    case Backdrop::TestPicture:
        return testPicture(screen);
    case Backdrop::Picture:
        if (!pictureUrl.isEmpty())
            return u"url(\"" % pictureUrl % u"\")" % atOf(0, screen) % u",#000";
        break;
    case Backdrop::Black:
        break;
    }
    return QStringLiteral("#000");
}

} // namespace quillmere
