#pragma once

#include "controls/TabFrame.h"
#include "files/Progress.h"

class QLabel;
class QLineEdit;
class QListView;

namespace quillmere {

class Commands;
class DirListBox;
class FileList;
class Files;
class ImageCatalogue;
class ListRows;
class ListView;
class PictureBox;
class Talk;

// The Image tab: the pictures of the theme, the panel that adds or renames one, and the files to choose from.
class ImageTab : public TabFrame
{
    Q_OBJECT

public:
    // `windows` are the rows of LvWidget, which "Widget Check" marks.
    ImageTab(ImageCatalogue &catalogue, ListRows &windows, Files &files, Talk &talk,
             QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // Shows what the catalogue's loader has read.
    void showCatalogue(const QString &themeFolder);

signals:
    // A command has put something to work on here.
    void putToWork();

protected:
    void layOut(int height) override;

private:
    void mnuImgTambah_Click();
    void mnuImgRubah_Click();
    void mnuImgSave_Click();
    void mnuImgChe_Click();
    void cmdimgTambah_Click();
    void cmdImgRubah_Click();
    void closePanel();
    void File2_DblClick(const QString &name);
    void makePanel();
    void showPanel(bool panel, bool files);
    void showPicture(const QString &path);
    // The row selected in lvImage; -1, after a hint, when none is.
    int selectedImage();

    ImageCatalogue &m_catalogue;
    ListRows &m_windows;
    Files &m_files;
    Talk &m_talk;
    QString m_themeFolder;
    CaptionBox *frImage;
    ListView *lvImage;
    QLabel *lbImagePath;
    QFrame *Picture1;
    QLineEdit *txtFile, *txtID;
    PictureBox *m_picture;
    QLabel *m_pictureFacts;
    CaptionBox *Frame3;
    DirListBox *DirImage;
    FileList *m_file2;
    QListView *File2;
};

} // namespace quillmere
