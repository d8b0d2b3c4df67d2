#include "naming/forms/FontSample.h"

#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QFileInfo>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

constexpr qint64 kLargestFont = 32 * 1024 * 1024; // bytes
constexpr int kLargestSize = 60;                  // pixels; what is larger is drawn smaller
constexpr int kWidest = 480;                      // pixels
const QString kLine = QStringLiteral("Quick brown fox 0123 ÄÖÜ");

QImage drawLine(const QByteArray &bytes, const FontSample::Wanted &wanted)
{
    const QRawFont font(bytes, std::clamp(wanted.size, 1, kLargestSize) * wanted.ratio,
                        QFont::PreferDefaultHinting);
    if (!font.isValid())
        return {};
    QList<quint32> glyphs = font.glyphIndexesForString(kLine);
    glyphs.removeAll(0); // letters that the font lacks
    const QList<QPointF> advances = font.advancesForGlyphIndexes(glyphs);
    QList<QPointF> places;
    qreal width = 0;
    for (const QPointF &advance : advances) {
        places.append({width, 0});
        width += advance.x();
    }
    const qreal height = font.ascent() + font.descent();
    if (!(width >= 1 && height >= 1 && height < 10 * kLargestSize * wanted.ratio))
        return {};
    const QSize size(int(std::ceil(std::min(width, kWidest * wanted.ratio))), int(std::ceil(height)));
    QImage line(size, QImage::Format_ARGB32_Premultiplied);
    line.fill(Qt::transparent);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    QPainter painter(&line);
    painter.setPen(wanted.colour);
    painter.drawGlyphRun({0, font.ascent()}, run);
    painter.end();
    line.setDevicePixelRatio(wanted.ratio);
    return line;
}

} // namespace

FontSample::FontSample(QObject *parent) : QObject(parent)
{
    m_worker.setMaxThreadCount(1);
}

FontSample::~FontSample()
{
    m_worker.clear();
    m_worker.waitForDone();
}

FontSample::Drawn FontSample::read(const Wanted &wanted)
{
    const QString found = findFile(wanted.path);
    if (found.isEmpty())
        return {{}, tr("There is no such file.")};
    if (wanted.folder.isEmpty() || !liesBelow(found, wanted.folder))
        return {{}, tr("This file is outside the theme.")};
    QString reason;
    const QByteArray bytes = readRegular(QFileInfo(found).canonicalFilePath(), kLargestFont, reason);
    const QImage line = bytes.isEmpty() ? QImage() : drawLine(bytes, wanted);
    return {line, line.isNull() ? tr("This is not a font that can be shown.") : QString()};
}

FontSample::Drawn FontSample::draw(const Wanted &wanted)
{
    if (wanted == m_wanted)
        return m_drawn;
    m_wanted = wanted;
    m_drawn = {};
    m_worker.clear();
    m_worker.start([this, wanted] {
        const auto take = [this, wanted, drawn = read(wanted)] {
            if (wanted != m_wanted)
                return;
            m_drawn = drawn;
            emit arrived();
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    });
    return m_drawn;
}

} // namespace quillmere
