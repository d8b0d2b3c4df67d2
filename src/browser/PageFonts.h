#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace quillmere {

// A font file of the theme, and what pages call it.
struct PageFont
{
    QString family;
    QString path; // full
};

// The fonts of a page. The cell loads none by address; they are put into the document as bytes, by us, so
// that nothing a page says can ask for a file. Only fonts that lie below the theme's folder, once links are
// followed, go in, and no more of them than a page can need.
class PageFonts
{
public:
    void setThemeFolder(const QString &folder) { m_themeFolder = folder; }
    void set(const QList<PageFont> &fonts) { m_fonts = fonts; }
    // A document has begun that has none.
    void forget();
    // Scripts that put those into the document that it lacks. Files are read here, at most once a document.
    QStringList scripts();

private:
    QByteArray bytesOf(const QString &path) const;

    QString m_themeFolder;
    QList<PageFont> m_fonts;
    QSet<QString> m_there; // families that the document has, or cannot have
    qint64 m_room = kMostTogether;

    static constexpr qint64 kMostTogether = 64 * 1024 * 1024; // bytes of all fonts of a document
};

} // namespace quillmere
