#include "gallery/forms/SheetWriter.h"

#include "files/RunTimeError.h"
#include "gallery/SheetLayout.h"
#include "gallery/SheetText.h"
#include "gallery/forms/Png.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

#include <cstring>

namespace quillmere {

namespace {

const QColor kGround(0x20, 0x24, 0x28), kMissing(0xe0, 0x60, 0x60);

// The cell of a window: its picture, and its name below.
void drawCell(QPainter &painter, const QRect &cell, int caption, const QString &name, const QImage &picture,
              const QString &reason)
{
    const QRect place = cell.adjusted(0, 0, 0, -caption);
    if (!picture.isNull()) {
        painter.drawImage(place, picture);
    } else {
        const QPen pen = painter.pen();
        painter.setPen(QPen(kMissing, std::max(1, caption / 12), Qt::DashLine));
        painter.drawRect(place.adjusted(1, 1, -1, -1));
        painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, reason);
        painter.setPen(pen);
    }
    const QString line = painter.fontMetrics().elidedText(name, Qt::ElideMiddle, cell.width());
    painter.drawText(QRect(place.left(), place.bottom() + 1, place.width(), caption),
                     Qt::AlignCenter | Qt::TextSingleLine, line);
}

// Each cell is drawn apart and copied: a painter reaches no farther than 32,767 pixels.
class PictureSheet : public SheetWriter
{
public:
    PictureSheet(const SheetLayout &layout, QIODevice &out)
        : m_layout(layout), m_out(out), m_whole(layout.whole, QImage::Format_RGB32)
    {
        if (m_whole.isNull())
            throw RunTimeError(QStringLiteral("there is not enough memory for the picture"));
        m_whole.fill(kGround);
    }
    QSize pictureSize() const override { return m_layout.picture; }
    void add(const QString &name, const QImage &picture, const QString &reason) override
    {
        QImage cell(m_layout.cell(), QImage::Format_RGB32);
        cell.fill(kGround);
        QPainter painter(&cell);
        painter.setPen(Qt::white);
        QFont font = painter.font();
        font.setPixelSize(13);
        painter.setFont(font);
        drawCell(painter, cell.rect(), SheetLayout::kCaption, name, picture, reason);
        painter.end();
        const QPoint place = m_layout.placeOf(m_added++);
        for (int row = 0; row < cell.height(); ++row)
            std::memcpy(m_whole.scanLine(place.y() + row) + qsizetype(place.x()) * 4, cell.constScanLine(row),
                        size_t(cell.width()) * 4);
    }
    bool finish() override { return writePng(m_whole, m_out); }

private:
    SheetLayout m_layout;
    QIODevice &m_out;
    QImage m_whole;
    qsizetype m_added = 0;
};

class PageSheet : public SheetWriter
{
public:
    PageSheet(const Plan &plan, QIODevice &out) : m_out(out)
    {
        constexpr int kWidth = 320;
        m_size = plan.screen.scaled(kWidth, kWidth, Qt::KeepAspectRatio);
        m_out.write(sheetBegin(plan.title, plan.columns));
    }
    QSize pictureSize() const override { return m_size; }
    void add(const QString &name, const QImage &picture, const QString &reason) override
    {
        m_out.write(sheetCell(name, picture.isNull() ? QByteArray() : pngOf(picture), reason));
    }
    bool finish() override { return m_out.write(sheetEnd()) > 0; }

private:
    QIODevice &m_out;
    QSize m_size;
};

class PrintSheet : public SheetWriter
{
public:
    PrintSheet(const Plan &plan, QIODevice &out) : m_pdf(&out), m_columns(plan.columns)
    {
        constexpr int kDotsPerInch = 150, kMargin = 10; // mm
        m_pdf.setResolution(kDotsPerInch);
        m_pdf.setTitle(plan.title);
        m_pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                        QMarginsF(kMargin, kMargin, kMargin, kMargin),
                                        QPageLayout::Millimeter));
        if (!m_painter.begin(&m_pdf))
            throw RunTimeError(QStringLiteral("no pages can be made"));
        const QSize page(m_pdf.width(), m_pdf.height());
        const int width = (page.width() - (m_columns - 1) * SheetLayout::kGap) / m_columns;
        if (width < 1)
            throw RunTimeError(QStringLiteral("so many columns do not fit on a page"));
        m_size = plan.screen.scaled(width, page.height() - kCaption, Qt::KeepAspectRatio);
        m_size = m_size.expandedTo({1, 1});
        m_rows = std::max(1, (page.height() + SheetLayout::kGap) /
                                 (m_size.height() + kCaption + SheetLayout::kGap));
        QFont font = m_painter.font();
        font.setPixelSize(kCaption * 6 / 10);
        m_painter.setFont(font);
    }
    QSize pictureSize() const override { return m_size; }
    void add(const QString &name, const QImage &picture, const QString &reason) override
    {
        const int number = int(m_added++ % (qsizetype(m_columns) * m_rows));
        if (number == 0 && m_added > 1)
            m_pdf.newPage();
        const QSize cell = m_size + QSize(0, kCaption);
        const QPoint place(number % m_columns * (cell.width() + SheetLayout::kGap),
                           number / m_columns * (cell.height() + SheetLayout::kGap));
        drawCell(m_painter, {place, cell}, kCaption, name, picture, reason);
    }
    bool finish() override { return m_painter.end(); }

private:
    static constexpr int kCaption = 40;

    QPdfWriter m_pdf;
    QPainter m_painter;
    QSize m_size;
    int m_columns, m_rows = 1;
    qsizetype m_added = 0;
};

} // namespace

std::unique_ptr<SheetWriter> SheetWriter::make(Form form, const Plan &plan, QIODevice &out)
{
    if (form == Form::Page)
        return std::make_unique<PageSheet>(plan, out);
    if (form == Form::Print)
        return std::make_unique<PrintSheet>(plan, out);
    const auto layout = SheetLayout::of(plan.windows, plan.columns, plan.screen);
    if (!layout)
        throw RunTimeError(QStringLiteral("%1 windows in %2 columns are too many for one picture")
                               .arg(plan.windows)
                               .arg(plan.columns));
    return std::make_unique<PictureSheet>(*layout, out);
}

} // namespace quillmere
