#include "controls/DirListBox.h"

#include "rows/ToolTip.h"

#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

namespace quillmere {

namespace {
constexpr int kPathRole = Qt::UserRole;
}

DirListBox::DirListBox(const QString &name, const QString &accessibleName, QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setIndentation(12);
    connect(this, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem *item) { setPath(item->data(0, kPathRole).toString()); });
}

bool DirListBox::setPath(const QString &folder)
{
    const QFileInfo info(QDir::cleanPath(QDir::fromNativeSeparators(folder)));
    if (folder.isEmpty() || !info.isDir())
        return false;
    m_path = QDir::toNativeSeparators(info.absoluteFilePath());
    fill();
    emit pathChanged(m_path);
    return true;
}

void DirListBox::fill()
{
    clear();
    const QIcon open = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon closed = style()->standardIcon(QStyle::SP_DirClosedIcon);
    const auto add = [this](QTreeWidgetItem *above, const QString &path, const QString &name,
                            const QIcon &icon) {
        auto *item = above ? new QTreeWidgetItem(above) : new QTreeWidgetItem(this);
        item->setText(0, name);
        item->setToolTip(0, plainToolTip(path));
        item->setData(0, kPathRole, path);
        item->setIcon(0, icon);
        item->setExpanded(true);
        return item;
    };

    QStringList chain;
    for (QDir dir(m_path);;) {
        chain.prepend(dir.absolutePath());
        if (dir.isRoot() || !dir.cdUp())
            break;
    }
    QTreeWidgetItem *item = nullptr;
    for (const QString &path : std::as_const(chain)) {
        const QString name = QDir(path).isRoot() ? QDir::toNativeSeparators(path) : QDir(path).dirName();
        item = add(item, QDir::toNativeSeparators(path), name, open);
    }
    QFont bold = font();
    bold.setBold(true);
    item->setFont(0, bold);
    setCurrentItem(item);
    const QDir current(m_path);
    for (const QString &name :
         current.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
        add(item, QDir::toNativeSeparators(current.absoluteFilePath(name)), name, closed);
    expandAll();
    scrollToItem(item, PositionAtCenter);
}

void DirListBox::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem())
        setPath(currentItem()->data(0, kPathRole).toString());
    else if (event->key() == Qt::Key_Backspace)
        setPath(QFileInfo(m_path).path());
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace quillmere
