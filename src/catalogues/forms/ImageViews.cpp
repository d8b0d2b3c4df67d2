#include "catalogues/forms/ImageViews.h"

#include "catalogues/forms/ImageGrid.h"
#include "catalogues/forms/ThumbnailDelegate.h"
#include "controls/Commands.h"
#include "controls/ListView.h"

#include <QAction>
#include <QHelpEvent>
#include <QSettings>
#include <QToolTip>

namespace quillmere {

namespace {

const QString kThumbnails = QStringLiteral("images/thumbnails");
const QString kGrid = QStringLiteral("images/grid");

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
    list.viewport()->installEventFilter(this);
    thumbnails.setSeen([this] { return seen(); });
    connect(&thumbnails, &Thumbnails::made, this, &ImageViews::drawAnew);
}

void ImageViews::addCommands(Commands &menu)
{
    const auto add = [this, &menu](const char *name, const QString &setting, bool isOn, const QString &tip,
                                   void (ImageViews::*show)(bool)) {
        QAction *item = menu.action(name);
        item->setToolTip(tip);
        item->setChecked(QSettings().value(setting, isOn).toBool());
        menu.on(name, [this, item, setting, show] {
            QSettings().setValue(setting, item->isChecked());
            (this->*show)(item->isChecked());
        });
        (this->*show)(item->isChecked());
    };
    add("mnuImgThumbnails", kThumbnails, true, tr("Show each image before its path"),
        &ImageViews::showThumbnails);
    add("mnuImgGrid", kGrid, false, tr("Show the images side by side in place of the list"),
        &ImageViews::showGrid);
}

void ImageViews::showThumbnails(bool on)
{
    m_isOn = on;
    m_list.setItemDelegateForColumn(0, on ? m_delegate : nullptr);
    m_list.viewport()->update();
}

void ImageViews::showGrid(bool on)
{
    if (!m_grid && !on)
        return;
    if (!m_grid) {
        m_grid = new ImageGrid(m_list, thumbnails);
        connect(m_grid, &ImageGrid::wanting, &thumbnails, &Thumbnails::look);
    }
    m_grid->appear(on);
    thumbnails.look();
}

QModelIndexList ImageViews::rowsSeen() const
{
    if (m_grid && m_grid->isVisible())
        return m_grid->inView();
    return m_isOn && m_list.isVisible() ? rowsInView(m_list) : QModelIndexList();
}

QStringList ImageViews::seen() const
{
    QStringList paths;
    for (const QModelIndex &row : rowsSeen())
        paths.append(row.siblingAtColumn(0).data().toString());
    return paths;
}

void ImageViews::drawAnew(const QString &path)
{
    QAbstractItemView *view =
        m_grid && m_grid->isVisible() ? m_grid : static_cast<QAbstractItemView *>(&m_list);
    for (const QModelIndex &row : rowsSeen()) {
        if (row.siblingAtColumn(0).data().toString() == path)
            view->update(row);
    }
}

bool ImageViews::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !m_isOn)
        return QObject::eventFilter(watched, event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex index = m_list.indexAt(help->pos());
    const QString path = index.data().toString();
    const Thumbnail *thumbnail = thumbnails.of(path);
    if (!index.isValid() || index.column() != 0 || !thumbnail)
        return QObject::eventFilter(watched, event);
    QToolTip::showText(help->globalPos(), thumbnailToolTip(path, thumbnail), m_list.viewport(),
                       m_list.visualRect(index));
    return true;
}

} // namespace quillmere
