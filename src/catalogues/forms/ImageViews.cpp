#include "catalogues/forms/ImageViews.h"

#include "catalogues/forms/ThumbnailDelegate.h"
#include "controls/Commands.h"
#include "controls/ListView.h"

#include <QAction>
#include <QSettings>

namespace quillmere {

namespace {

const QString kThumbnails = QStringLiteral("images/thumbnails");

// The rows of a list that are in view, and one more.
QModelIndexList rowsInView(const ListView &list)
{
    QModelIndexList rows;
    QModelIndex row = list.indexAt({0, 0});
    const int height = row.isValid() ? list.visualRect(row).height() : 0;
    for (int y = 0; row.isValid() && height > 0; row = list.indexAt({0, y})) {
        rows.append(row.siblingAtColumn(0));
        if (y > list.viewport()->height())
            break;
        y += height;
    }
    return rows;
}

} // namespace

ImageViews::ImageViews(ListView &list, QObject *parent)
    : QObject(parent), m_list(list), m_delegate(new ThumbnailDelegate(list, thumbnails))
{
    thumbnails.setSeen([this] { return seen(); });
    connect(&thumbnails, &Thumbnails::made, this, &ImageViews::drawAnew);
}

void ImageViews::addCommands(Commands &menu)
{
    QAction *item = menu.action("mnuImgThumbnails");
    item->setToolTip(tr("Show each image before its path"));
    item->setChecked(QSettings().value(kThumbnails, true).toBool());
    menu.on("mnuImgThumbnails", [this, item] {
        QSettings().setValue(kThumbnails, item->isChecked());
        showThumbnails(item->isChecked());
    });
    showThumbnails(item->isChecked());
}

void ImageViews::showThumbnails(bool on)
{
    m_isOn = on;
    m_list.setItemDelegateForColumn(0, on ? m_delegate : nullptr);
    m_list.viewport()->update();
}

QStringList ImageViews::seen() const
{
    QStringList paths;
    if (m_isOn && m_list.isVisible()) {
        for (const QModelIndex &row : rowsInView(m_list))
            paths.append(row.data().toString());
    }
    return paths;
}

void ImageViews::drawAnew(const QString &path)
{
    if (!m_isOn)
        return;
    for (const QModelIndex &row : rowsInView(m_list)) {
        if (row.data().toString() == path)
            m_list.update(row);
    }
}

} // namespace quillmere
