#include "catalogues/forms/FontView.h"

#include "browser/FontFamily.h"
#include "browser/forms/PageCamera.h"
#include "controls/Named.h"
#include "files/Paths.h"

#include <QLabel>
#include <QResizeEvent>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kSoon = 60;      // ms; keys run through the list
constexpr int kRest = 20'000;  // ms until the browser goes when nobody looks at another font
constexpr int kHighest = 1200; // pixels of a sample

// Without the empty lines at its end.
QImage cropped(const QImage &picture)
{
    const QImage plain = picture.convertToFormat(QImage::Format_RGB32);
    const auto ground = plain.pixel(plain.width() - 1, plain.height() - 1);
    int end = plain.height();
    const auto isEmpty = [&](int y) {
        const auto *line = reinterpret_cast<const QRgb *>(plain.constScanLine(y));
        return std::all_of(line, line + plain.width(), [ground](QRgb pixel) { return pixel == ground; });
    };
    while (end > 1 && isEmpty(end - 1))
        --end;
    return plain.copy(0, 0, plain.width(), end);
}

} // namespace

FontView::FontView() : lblFontSample(named(new QLabel, "lblFontSample", tr("Sample of the font")))
{
    named(this, "areaFontSample", tr("Sample of the font"));
    setWidget(lblFontSample);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the width does not depend on the sample, then
    setFocusPolicy(Qt::StrongFocus);
    lblFontSample->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblFontSample->setTextFormat(Qt::PlainText);
    lblFontSample->setWordWrap(true);
    lblFontSample->setMargin(2);
    lblFontSample->setBackgroundRole(QPalette::Base);
    lblFontSample->setAutoFillBackground(true);
    const auto once = [this](QTimer &timer, int milliseconds, auto slot) {
        timer.setSingleShot(true);
        timer.setInterval(milliseconds);
        connect(&timer, &QTimer::timeout, this, slot);
    };
    once(m_soon, kSoon, &FontView::draw);
    once(m_rest, kRest, [this] { m_camera.reset(); });
}

FontView::~FontView()
{
    ++m_asked; // the browser may answer as it goes
}

void FontView::setTheme(const QString &folder, const QString &fontFolder)
{
    m_folder = folder;
    m_fontFolder = fontFolder;
    m_camera.reset();
    clear();
}

void FontView::setLetters(const QStringList &lines)
{
    if (m_letters == lines)
        return;
    m_letters = lines;
    if (m_hasFont)
        m_soon.start();
}

void FontView::showFont(const SampledFont &font)
{
    m_font = font;
    m_hasFont = true;
    m_soon.start();
    emit wantsLetters();
}

void FontView::clear()
{
    m_hasFont = false;
    m_soon.stop();
    ++m_asked;
    lblFontSample->clear();
}

QString FontView::reason() const
{
    return lblFontSample->text();
}

PageCamera &FontView::camera()
{
    if (!m_camera)
        m_camera = std::make_unique<PageCamera>(m_folder, QSize(viewport()->width(), kHighest));
    m_rest.start();
    return *m_camera;
}

void FontView::draw()
{
    const int asked = ++m_asked;
    const QString path =
        m_font.file.isEmpty() ? QString() : QString(m_fontFolder + withOwnSeparators(m_font.file));
    if (const QString why = whyNoFont(path, m_folder); !why.isEmpty()) {
        say(why);
        return;
    }
    const QString file = findFile(path), family = fontFamilyOf(file);
    const SampleLook look = {family, palette().color(QPalette::Base).name(),
                             palette().color(QPalette::Text).name()};
    PageCamera &camera = this->camera();
    camera.forget();
    camera.setSize({viewport()->width(), kHighest});
    camera.setFonts({{family, file}});
    camera.take(fontSamplePage(m_font, look, m_letters), [this, asked, family](const QImage &picture) {
        if (asked == m_asked && m_camera)
            m_camera->askFamilies([this, asked, family, picture](const QStringList &families) {
                if (asked == m_asked)
                    take(picture, families.contains(family) ? family : QString());
            });
    });
}

void FontView::take(const QImage &picture, const QString &family)
{
    if (family.isEmpty()) {
        say(tr("The font file \"%1\" cannot be read: it is damaged, or of a kind that receivers do not take.")
                .arg(m_font.file));
    } else if (picture.isNull()) {
        say(tr("The browser did not draw the font."));
    } else {
        lblFontSample->setPixmap(QPixmap::fromImage(cropped(picture)));
        lblFontSample->setAccessibleDescription(tr("Letters in the font \"%1\"").arg(m_font.file));
    }
}

void FontView::say(const QString &text)
{
    lblFontSample->setText(text);
    lblFontSample->setAccessibleDescription(text);
}

void FontView::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    if (m_hasFont && event->size().width() != event->oldSize().width())
        m_soon.start();
}

void FontView::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_hasFont)
        m_soon.start();
}

} // namespace quillmere
