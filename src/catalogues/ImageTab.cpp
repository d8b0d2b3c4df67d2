#include "catalogues/ImageTab.h"

#include "catalogues/ImageCatalogue.h"
#include "platform/FileList.h"
#include "platform/ListView.h"
#include "platform/Named.h"
#include "platform/PathLabel.h"

#include <QLineEdit>
#include <QListView>

namespace quillmere {

namespace {

constexpr int kMargin = 8;   // pixels
constexpr int kTop = 18;     // pixels, below the caption of the frame
constexpr int kLine = 18;    // pixels
constexpr int kAround = 900; // twips of the frame's height that the list does not take

} // namespace

ImageTab::ImageTab(ImageCatalogue &catalogue, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(2)"), parent), m_catalogue(catalogue),
      frImage(new CaptionBox(QStringLiteral("frImage"), this)),
      lvImage(new ListView(QStringLiteral("lvImage"), tr("Images"), catalogue.rows, frImage)),
      lbImagePath(new PathLabel(QStringLiteral("lbImagePath"), tr("Image folder"), frImage)),
      Picture1(named(new QFrame(frImage), "Picture1", tr("Edit image"))),
      txtFile(named(new QLineEdit(Picture1), "txtFile", tr("Picture file"))),
      txtID(named(new QLineEdit(Picture1), "txtID", tr("Image ID"))),
      Frame3(new CaptionBox(QStringLiteral("Frame3"), frImage)), m_file2(new FileList(this)),
      File2(named(new QListView(Frame3), "File2", tr("Picture files")))
{
    lvImage->setColumnShares({10, 8, 1});
    File2->setModel(m_file2);
    Picture1->hide();
    Frame3->hide();
}

void ImageTab::layOut(int height)
{
    place(frImage, 0, 0, width(), this->height());
    const int inner = width() - 2 * kMargin;
    const int listHeight = toPixels(height - kAround);
    place(lbImagePath, kMargin, kTop, inner, kLine);
    place(lvImage, kMargin, kTop + kLine + 4, inner, listHeight);
}

void ImageTab::showCatalogue(const QString &imageFolder)
{
    frImage->setCaption(m_catalogue.path());
    lbImagePath->setText(imageFolder);
    m_file2->setPath(imageFolder);
}

} // namespace quillmere
