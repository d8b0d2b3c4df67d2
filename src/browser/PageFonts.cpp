#include "browser/PageFonts.h"

#include "browser/PictureFile.h"

#include <QFileInfo>

namespace quillmere {

namespace {

constexpr qint64 kMostBytes = 16 * 1024 * 1024; // of one

// How a font file begins: TrueType, OpenType. The browser looks at the rest.
bool isFont(const QByteArray &bytes)
{
    return bytes.startsWith(QByteArray("\0\1\0\0", 4)) || bytes.startsWith("OTTO") ||
           bytes.startsWith("true");
}

} // namespace

void PageFonts::forget()
{
    m_there.clear();
    m_room = kMostTogether;
}

QStringList PageFonts::scripts()
{
    QStringList scripts;
    for (const PageFont &font : std::as_const(m_fonts)) {
        if (m_there.contains(font.family))
            continue;
        m_there.insert(font.family);
        const QByteArray bytes = bytesOf(font.path);
        if (bytes.isEmpty() || bytes.size() > m_room)
            continue;
        m_room -= bytes.size();
        scripts.append(QStringLiteral("(function(){var s=atob('%1'),b=new Uint8Array(s.length);"
                                      "for(var i=0;i<b.length;++i)b[i]=s.charCodeAt(i);"
                                      "document.fonts.add(new FontFace('%2',b.buffer));})()")
                           .arg(QLatin1String(bytes.toBase64()), font.family));
    }
    return scripts;
}

QByteArray PageFonts::bytesOf(const QString &path) const
{
    const QString root = m_themeFolder.isEmpty() ? QString() : QFileInfo(m_themeFolder).canonicalFilePath();
    const QString real = QFileInfo(path).canonicalFilePath();
    if (root.isEmpty() || !real.startsWith(root + u'/'))
        return {};
    const std::unique_ptr<QFile> file = openPicture(real); // a regular file, and still the same one
    if (!file || file->size() > kMostBytes)
        return {};
    const QByteArray bytes = file->read(kMostBytes + 1); // it may have grown since
    return bytes.size() <= kMostBytes && isFont(bytes) ? bytes : QByteArray();
}

} // namespace quillmere
