#pragma once

#include <QHash>
#include <QString>
#include <QUrl>

namespace quillmere {

// The browser may not open files from a page of its own, so pictures come through a scheme of ours.
inline constexpr char kPictureScheme[] = "quillmere";

QUrl pictureUrl(const QString &path);
QString picturePath(const QUrl &url);

// The page with the path of every url('PATH') turned into a URL of our scheme, with the time of the file's
// last change as its query where there is such a file below the theme's folder; empty ones stay.
QString withPictureUrls(const QString &page, const QString &themeFolder);

// The same for a long page, piece by piece: all pieces together are that text.
class PictureUrlPieces
{
public:
    PictureUrlPieces(const QString &page, const QString &themeFolder)
        : m_page(page), m_themeFolder(themeFolder)
    {
    }

    bool atEnd() const { return m_done >= m_page.size(); }
    // The next piece, made from about so many units of the page.
    QString next(qsizetype units);

private:
    QString m_page, m_themeFolder;
    qsizetype m_done = 0;
    QHash<QString, QString> m_urls; // by path: large pages name the same few pictures again and again
};

} // namespace quillmere
