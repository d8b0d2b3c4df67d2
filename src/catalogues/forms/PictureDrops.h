#pragma once

#include "catalogues/PictureIntake.h"

#include <QImage>
#include <QObject>
#include <QStringList>

class QMimeData;
class QRubberBand;

namespace quillmere {

class Commands;
class ListView;
class Talk;

// Pictures that are dropped on the Image tab or pasted into its list become images of the theme; and another
// picture is put in the place of the selected one.
class PictureDrops : public QObject
{
    Q_OBJECT

public:
    PictureDrops(ImageCatalogue &images, ListView &list, QWidget &tab, Files &files, Talk &talk);

    void addCommands(Commands &menu);

signals:
    // Pictures have come, or one has become another.
    void changed();

protected:
    // Of the tab.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Coming
    {
        QStringList files;
        QImage picture; // where there are no files
    };
    static bool hasPictures(const QMimeData &data);
    static Coming picturesIn(const QMimeData &data);
    void takeLater(const QMimeData &data);
    void paste();
    void take(const Coming &coming);
    QList<ComingPicture> look(const PictureIntake &intake, const Coming &coming);
    void askForNames(PictureIntake &intake, QList<ComingPicture> &pictures);
    bool askForName(const PictureIntake &intake, ComingPicture &picture);
    void bring(const PictureIntake &intake, QList<ComingPicture> &pictures);
    void tell(const QList<ComingPicture> &pictures, qsizetype added, bool isCancelled);
    void mnuImgReplace_Click();

    ImageCatalogue &m_images;
    ListView &m_list;
    Files &m_files;
    Talk &m_talk;
    QRubberBand *m_mark; // while pictures are over the tab
};

} // namespace quillmere
