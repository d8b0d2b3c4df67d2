#include "catalogues/ColorTab.h"

#include "platform/ListView.h"
#include "platform/Named.h"

namespace quillmere {

namespace {

constexpr int kMargin = 8;        // pixels
constexpr int kTop = 18;          // pixels, below the caption of the frame
constexpr int kSwatchHeight = 48; // pixels
constexpr int kAround = 900;      // twips of the frame's height that neither list nor swatch takes

} // namespace

ColorTab::ColorTab(QWidget *parent)
    : TabFrame(QStringLiteral("frYt(3)"), parent),
      m_colours({QString(), QStringLiteral("Nama"), QStringLiteral("Code")}, ListRows::Checks::Yes),
      frColor(new CaptionBox(QStringLiteral("frColor"), this)),
      lvColor(new ListView(QStringLiteral("lvColor"), tr("Colours"), m_colours, frColor)),
      Picture2(named(new QFrame(frColor), "Picture2", tr("Selected colour")))
{
    lvColor->setColumnShares({1, 8, 5});
    Picture2->setFrameShape(QFrame::StyledPanel);
    Picture2->setAutoFillBackground(true);
}

void ColorTab::layOut(int height)
{
    place(frColor, 0, 0, width(), this->height());
    const int inner = width() - 2 * kMargin;
    const int listHeight = toPixels(height - kAround) - kSwatchHeight;
    place(lvColor, kMargin, kTop, inner, listHeight);
    place(Picture2, kMargin, kTop + listHeight + kMargin, inner, kSwatchHeight);
}

} // namespace quillmere
