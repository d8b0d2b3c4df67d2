#pragma once

#include <QFile>
#include <QHash>
#include <QString>
#include <QUrl>

#include <memory>

namespace quillmere {

// The browser may not open files from a page of its own, so pictures come through a scheme of ours.
inline constexpr char kPictureScheme[] = "quillmere";

QUrl pictureUrl(const QString &path);
QString picturePath(const QUrl &url);

// The page with the path of every url('PATH') turned into a URL of our scheme, with the time of the file's
// last change as its query where there is such a file; empty ones stay.
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
    QHash<QString, QString> m_urls; // by path: large pages name the same few pictures again and again
};

// The picture a page may have: the canonical path of an existing picture file (by its name: png, jpg, jpeg,
// gif, bmp, webp, svg, ico) below `themeFolder` once symbolic links are followed; empty for anything else.
QString admittedPicture(const QUrl &url, const QString &themeFolder);

// Opens the picture at a path that admittedPicture() gave. Null when it is larger than 64 MB, cannot be read,
// or something else has come to its place since.
std::unique_ptr<QFile> openPicture(const QString &path);

} // namespace quillmere
