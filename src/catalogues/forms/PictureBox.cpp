#include "catalogues/forms/PictureBox.h"

#include "catalogues/forms/ScaledPicture.h"
#include "files/Paths.h"
#include "files/RegularFile.h"

#include <QFileInfo>
#include <QLocale>
#include <QPainter>

namespace quillmere {

namespace {

constexpr int kSquare = 8; // pixels, of the chequered ground

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
    const ScaledPicture read = readScaled(*opened, size() * devicePixelRatioF());
    if (read.image.isNull())
        return isDrawing(file) ? tr("Drawings are shown in the preview only.") : tr("This is not a picture.");
    m_picture = read.image;
    update();
    return tr("%1 × %2 pixels\n%3 bytes")
        .arg(read.size.width())
        .arg(read.size.height())
        .arg(QLocale().toString(read.bytes));
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
    drawChequers(painter, rect(), kSquare);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_picture);
}

} // namespace quillmere
