#pragma once

#include "platform/TabFrame.h"

class QLabel;
class QLineEdit;
class QListView;

namespace quillmere {

class FileList;
class ImageCatalogue;
class ListView;

// The Image tab: the pictures of the theme.
class ImageTab : public TabFrame
{
    Q_OBJECT

public:
    explicit ImageTab(ImageCatalogue &catalogue, QWidget *parent = nullptr);

    // Shows what the catalogue's loader has read; `imageFolder` is what theme loading found.
    void showCatalogue(const QString &imageFolder);

protected:
    void layOut(int height) override;

private:
    ImageCatalogue &m_catalogue;
    CaptionBox *frImage;
    ListView *lvImage;
    QLabel *lbImagePath;
    QFrame *Picture1;
    QLineEdit *txtFile, *txtID;
    CaptionBox *Frame3;
    FileList *m_file2;
    QListView *File2;
};

} // namespace quillmere
