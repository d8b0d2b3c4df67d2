#include "catalogues/forms/PictureBox.h"

#include "browser/PictureFile.h"
#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QFileInfo>
#include <QImageReader>
#include <QLocale>
#include <QPainter>

namespace quillmere {

namespace {

constexpr int kSquare = 8; // pixels, of the chequered ground
const QColor kLightSquare(0xCC, 0xCC, 0xCC);
const QColor kDarkSquare(0x99, 0x99, 0x99);

bool isDrawing(const QString &path)
{
    const QString kind = QFileInfo(path).suffix().toLower();
    return kind == u"svg" || kind == u"svgz";
}

} // namespace

QString PictureBox::showFile(const QString &path)
{
    clear();
    const QString file = findFile(path);
    if (file.isEmpty())
        return tr("There is no such file.");
    QString reason;
    const std::unique_ptr<QFile> opened = openRegular(file, kLargestFile, reason);
    if (!opened)
        return tr("%1: %2.").arg(fileNameOf(path).toString(), reason);
    const QByteArray format = pixelFormat(*opened);
    if (format.isEmpty())
        return isDrawing(file) ? tr("Drawings are shown in the preview only.") : tr("This is no picture.");
    QImageReader reader(opened.get(), format);
    reader.setAutoDetectImageFormat(false);
    QSize size = reader.size();
    // Large pictures are scaled while they are read, where the format can.
    const QSize room = this->size() * devicePixelRatioF();
    if (size.isValid() && (size.width() > room.width() || size.height() > room.height()))
        reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
    m_picture = reader.read();
    if (m_picture.isNull())
        return tr("This is no picture.");
    if (!size.isValid())
        size = m_picture.size();
    update();
    return tr("%1 × %2 pixels\n%3 bytes")
        .arg(size.width())
        .arg(size.height())
        .arg(QLocale().toString(opened->size()));
}

void PictureBox::clear()
{
    m_picture = {};
    update();
}

void PictureBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    if (m_picture.isNull()) {
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        return;
    }
    QSizeF shown = QSizeF(m_picture.size()) / devicePixelRatioF();
    if (shown.width() > width() || shown.height() > height())
        shown.scale(size(), Qt::KeepAspectRatio);
    const QRectF place(QPointF(width() - shown.width(), height() - shown.height()) / 2, shown);
    for (int y = 0; y < height(); y += kSquare) {
        for (int x = 0; x < width(); x += kSquare)
            painter.fillRect(x, y, kSquare, kSquare, (x + y) / kSquare % 2 ? kDarkSquare : kLightSquare);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_picture);
}

} // namespace quillmere
