#include "catalogues/forms/ImageTab.h"

#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "catalogues/ImageCatalogue.h"
#include "catalogues/UsageScan.h"
#include "catalogues/forms/PictureBox.h"
#include "catalogues/forms/PictureFiles.h"
#include "controls/Commands.h"
#include "controls/DirListBox.h"
#include "controls/ListView.h"
#include "controls/Named.h"
#include "controls/PathLabel.h"
#include "files/FileList.h"
#include "files/Paths.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>
#include <limits>

namespace quillmere {

namespace {

constexpr int kMargin = 8;          // pixels
constexpr int kTop = 18;            // pixels, below the caption of the frame
constexpr int kLine = 18;           // pixels
constexpr int kPanelHeight = 196;   // pixels
constexpr int kFilesHeight = 220;   // pixels, at most
constexpr int kLeastFiles = 110;    // pixels
constexpr int kListBeside = 160;    // pixels that the list keeps while the files can be made lower
constexpr QSize kPicture(200, 112); // pixels
constexpr int kAround = 900;        // twips of the frame's height that the list does not take
constexpr int kExtension = 4;       // characters, with the dot

QLineEdit *box(const char *name, const QString &accessibleName)
{
    auto *edit = named(new QLineEdit, name, accessibleName);
    edit->setMaxLength(std::numeric_limits<int>::max()); // a theme's texts are never cut
    return edit;
}

} // namespace

ImageTab::ImageTab(ImageCatalogue &catalogue, ListRows &windows, Files &files, Talk &talk, QWidget *parent)
    : TabFrame(QStringLiteral("frYt(2)"), parent), m_catalogue(catalogue), m_windows(windows), m_files(files),
      m_talk(talk), frImage(new CaptionBox(QStringLiteral("frImage"), this)),
      lvImage(new ListView(QStringLiteral("lvImage"), tr("Images"), catalogue.rows, frImage)),
      lbImagePath(new PathLabel(QStringLiteral("lbImagePath"), tr("Image folder"), frImage)),
      Picture1(named(new QFrame(frImage), "Picture1", tr("Edit image"))),
      txtFile(box("txtFile", tr("Picture file"))), txtID(box("txtID", tr("Image ID"))),
      m_picture(named(new PictureBox, "picImage", tr("Picture"))),
      m_pictureFacts(named(new QLabel, "lblPicture", tr("Size of the picture"))),
      Frame3(new CaptionBox(QStringLiteral("Frame3"), frImage)),
      DirImage(new DirListBox(QStringLiteral("DirImage"), tr("Picture folders"), Frame3)),
      m_file2(new FileList(this)), File2(named(new QListView(Frame3), "File2", tr("Picture files")))
{
    lvImage->setColumnShares({10, 8, 1});
    connect(lvImage, &ListView::rowClicked, this, &ImageTab::mnuImgRubah_Click);
    makePanel();

    Frame3->setCaption(tr("Choose a picture: double-click a file"));
    auto *chooser = new QHBoxLayout(Frame3);
    chooser->addWidget(DirImage);
    chooser->addWidget(File2);
    new PictureFiles(*m_file2, *File2);
    connect(DirImage, &DirListBox::pathChanged, m_file2, &FileList::setPath);
    connect(File2, &QListView::activated, this,
            [this](const QModelIndex &file) { File2_DblClick(file.data().toString()); });
    connect(File2->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &file) {
                if (file.isValid())
                    showPicture(joinPath(m_file2->path(), file.data().toString()));
            });
    Picture1->hide();
    Frame3->hide();
}

void ImageTab::makePanel()
{
    const auto button = [this](const QString &caption, const char *name, const QString &accessibleName,
                               void (ImageTab::*handler)()) {
        auto *made = named(new QPushButton(caption), name, accessibleName);
        connect(made, &QPushButton::clicked, this, handler);
        return made;
    };
    auto *add = button(QStringLiteral("&Tambah"), "cmdimgTambah", tr("Add as a new image"),
                       &ImageTab::cmdimgTambah_Click);
    auto *change =
        button(QStringLiteral("&Rubah"), "cmdImgRubah", tr("Change the ID"), &ImageTab::cmdImgRubah_Click);
    add->setToolTip(tr("Adds an image with this file and this ID."));
    change->setToolTip(tr("Gives the selected image this ID; its file stays."));
    m_picture->setFixedSize(kPicture);
    m_pictureFacts->setTextFormat(Qt::PlainText);
    m_pictureFacts->setWordWrap(true);
    m_pictureFacts->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto *close = button(tr("Close"), "cmdImgClose", tr("Close the panel"), &ImageTab::closePanel);
    close->setToolTip(tr("Closes the panel and gives its room back to the list (Esc)."));
    for (QWidget *part : {static_cast<QWidget *>(Picture1), static_cast<QWidget *>(Frame3)}) {
        auto *escape = new QShortcut(Qt::Key_Escape, part);
        escape->setContext(Qt::WidgetWithChildrenShortcut);
        connect(escape, &QShortcut::activated, this, &ImageTab::closePanel);
    }

    Picture1->setFrameShape(QFrame::StyledPanel);
    auto *grid = new QGridLayout(Picture1);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    const auto caption = [](const QString &text, QWidget *buddy) {
        auto *label = new QLabel(text);
        label->setBuddy(buddy);
        return label;
    };
    grid->addWidget(caption(QStringLiteral("File :"), txtFile), 0, 0);
    grid->addWidget(txtFile, 0, 1, 1, 3);
    grid->addWidget(caption(QStringLiteral("ID :"), txtID), 1, 0);
    grid->addWidget(txtID, 1, 1, 1, 2);
    grid->addWidget(close, 1, 3); // beside the others there is no room for it
    grid->addWidget(m_picture, 2, 1, 2, 1, Qt::AlignTop);
    grid->addWidget(m_pictureFacts, 2, 2, 1, 2);
    grid->addWidget(add, 3, 2);
    grid->addWidget(change, 3, 3);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(3, 1);
}

void ImageTab::addCommands(Commands &menu)
{
    menu.on("mnuImgTambah", [this] { mnuImgTambah_Click(); });
    menu.on("mnuImgRubah", [this] { mnuImgRubah_Click(); });
    menu.on("mnuImgSave", [this] { mnuImgSave_Click(); });
    menu.on("mnuImgChe", [this] { mnuImgChe_Click(); });
}

void ImageTab::layOut(int height)
{
    place(frImage, 0, 0, width(), this->height());
    const int inner = width() - 2 * kMargin;
    int listHeight = toPixels(height - kAround);
    int files = 0;
    if (!Picture1->isHidden())
        listHeight -= kPanelHeight + kMargin;
    if (!Frame3->isHidden()) {
        files = std::clamp(listHeight - kListBeside, kLeastFiles, kFilesHeight);
        listHeight -= files + kMargin;
    }
    int top = kTop;
    place(lbImagePath, kMargin, top, inner, kLine);
    top += kLine + 4;
    place(lvImage, kMargin, top, inner, listHeight);
    top += listHeight + kMargin;
    place(Picture1, kMargin, top, inner, kPanelHeight);
    place(Frame3, kMargin, top + kPanelHeight + kMargin, inner, files);
}

void ImageTab::showPanel(bool panel, bool files)
{
    Picture1->setVisible(panel);
    Frame3->setVisible(files);
    layOut(toTwips(height()));
    if (lvImage->selectedRow() >= 0)
        lvImage->scrollTo(lvImage->currentIndex());
}

void ImageTab::showCatalogue(const QString &themeFolder)
{
    const QString &imageFolder = m_catalogue.folder();
    m_themeFolder = themeFolder;
    frImage->setCaption(m_catalogue.document.path());
    lbImagePath->setText(imageFolder);
    if (!DirImage->setPath(findFolder(imageFolder)))
        m_file2->setPath(imageFolder);
}

int ImageTab::selectedImage()
{
    const int row = lvImage->selectedRow();
    if (row < 0)
        m_talk.say(tr("Select an image in the list of the Image tab first."));
    return row;
}

void ImageTab::showPicture(const QString &path)
{
    m_pictureFacts->setText(m_picture->showFile(path));
}

void ImageTab::mnuImgTambah_Click()
{
    showPanel(true, true);
    emit putToWork();
}

void ImageTab::mnuImgRubah_Click()
{
    if (m_catalogue.rows.isEmpty())
        return;
    const int row = selectedImage();
    if (row < 0)
        return;
    const QString path = m_catalogue.rows.text(row);
    txtFile->setText(path);
    txtID->setText(m_catalogue.rows.sub(row, 1));
    // The preview shows nothing from outside of the theme, so neither does this.
    if (findFile(path).isEmpty() || liesBelow(findFile(path), m_themeFolder)) {
        showPicture(path);
    } else {
        m_picture->clear();
        m_pictureFacts->setText(tr("This file is outside the theme."));
    }
    showPanel(true, false);
    emit putToWork();
}

void ImageTab::cmdimgTambah_Click()
{
    const QString id = txtID->text();
    int row = m_catalogue.rowOf(id);
    if (row >= 0) {
        m_talk.tell(QStringLiteral("Duplikat ID"), u"Sudah ada ID " + id, Talk::Icon::Information);
    } else {
        row = m_catalogue.rows.count();
        m_catalogue.rows.add(txtFile->text(), {id, QStringLiteral("Y")});
        m_talk.say(tr("Image added. \"Save\" in the Image menu writes the catalogue."));
    }
    lvImage->setCurrentIndex(m_catalogue.rows.index(row, 0));
}

void ImageTab::closePanel()
{
    showPanel(false, false);
    lvImage->setFocus();
}

void ImageTab::cmdImgRubah_Click()
{
    const int row = selectedImage();
    if (row < 0)
        return;
    m_catalogue.rows.setSub(row, 1, txtID->text());
    m_catalogue.rows.setSub(row, 2, QStringLiteral("Y"));
    closePanel(); // the files would lie over the list
    m_talk.say(tr("Image renamed. \"Save\" in the Image menu writes the catalogue."));
}

void ImageTab::File2_DblClick(const QString &name)
{
    txtFile->setText(joinPath(m_file2->path(), name));
    txtID->setText(name.chopped(std::min<qsizetype>(kExtension, name.size())));
}

void ImageTab::mnuImgSave_Click()
{
    if (m_catalogue.rows.isEmpty())
        return;
    const WriteQuestion question = {QStringLiteral("Simpan File"),
                                    QStringLiteral("Benar mau menyimpan file widget image?"),
                                    m_catalogue.document.path(),
                                    m_catalogue.document.theme(),
                                    Files::Step::Save,
                                    m_catalogue.asText(),
                                    m_catalogue.document.encoding().rule};
    if (!askToWrite(m_files, m_talk, question, No::Counts))
        return;
    m_catalogue.SaveImageList(m_files);
    m_talk.sayUntilEdit(tr("%1 saved.").arg(m_catalogue.document.path()));
}

void ImageTab::mnuImgChe_Click()
{
    const int row = selectedImage();
    if (row < 0)
        return;
    int used = 0;
    m_talk.runLong(tr("Checking the windows"), [&](const Progress &progress) {
        used = checkWindowsWith(m_catalogue.rows.sub(row, 1), m_windows, progress,
                                m_catalogue.document.encoding().rule);
    });
    m_talk.say(tr("%1 of %2 windows use this image; they are checked on the Widget tab.")
                   .arg(used)
                   .arg(m_windows.count()));
}

} // namespace quillmere
