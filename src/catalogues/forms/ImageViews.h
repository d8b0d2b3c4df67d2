#pragma once

#include "catalogues/forms/Thumbnails.h"

#include <QModelIndex>

namespace quillmere {

class Commands;
class ImageGrid;
class ListView;
class ThumbnailDelegate;

// How the images are looked at: thumbnails in their list, and a grid in its place.
class ImageViews : public QObject
{
    Q_OBJECT

public:
    explicit ImageViews(ListView &list, QObject *parent = nullptr);

    void addCommands(Commands &menu);

    Thumbnails thumbnails;

protected:
    // The tooltips of the list's paths.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showThumbnails(bool on);
    void showGrid(bool on);
    QModelIndexList rowsSeen() const;
    QStringList seen() const;
    void drawAnew(const QString &path);

    ListView &m_list;
    ThumbnailDelegate *m_delegate;
    ImageGrid *m_grid = nullptr; // once it is wanted
    bool m_isOn = false;         // thumbnails are
};

} // namespace quillmere
