#pragma once

#include <QString>
#include <QUrl>

namespace quillmere {

// The browser may not open files from a page of its own, so pictures come through a scheme of ours.
inline constexpr char kPictureScheme[] = "quillmere";

QUrl pictureUrl(const QString &path);
QString picturePath(const QUrl &url);

// The page with the path of every url('PATH') turned into a URL of our scheme; empty ones stay.
QString withPictureUrls(const QString &page);

// The same for a long page, piece by piece: all pieces together are that text.
class PictureUrlPieces
{
public:
    explicit PictureUrlPieces(const QString &page) : m_page(page) {}

    bool atEnd() const { return m_done >= m_page.size(); }
    // The next piece, made from about so many units of the page.
    QString next(qsizetype units);

private:
    QString m_page;
    qsizetype m_done = 0;
};

// The picture a page may have: the canonical path of an existing picture file (by its name: png, jpg, jpeg,
// gif, bmp, webp, svg, ico) below `themeFolder` once symbolic links are followed; empty for anything else.
QString admittedPicture(const QUrl &url, const QString &themeFolder);

} // namespace quillmere
