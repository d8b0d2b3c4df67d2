#pragma once

#include "catalogues/forms/Thumbnails.h"

class QAction;

namespace quillmere {

class Commands;
class ListView;
class ThumbnailDelegate;

// How the images are looked at: thumbnails in their list.
class ImageViews : public QObject
{
    Q_OBJECT

public:
    explicit ImageViews(ListView &list, QObject *parent = nullptr);

    void addCommands(Commands &menu);

    Thumbnails thumbnails;

private:
    void showThumbnails(bool on);
    QStringList seen() const;
    void drawAnew(const QString &path);

    ListView &m_list;
    ThumbnailDelegate *m_delegate;
    bool m_isOn = false;
};

} // namespace quillmere
