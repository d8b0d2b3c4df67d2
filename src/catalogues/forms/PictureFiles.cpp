#include "catalogues/forms/PictureFiles.h"

#include "files/FileList.h"
#include "files/Paths.h"

#include <QEvent>
#include <QListView>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kSoon = 200; // ms

bool isOther(const QString &name)
{
    static const QStringList endings = {
        QStringLiteral(".xml"),  QStringLiteral(".txt"), QStringLiteral(".ini"), QStringLiteral(".md"),
        QStringLiteral(".html"), QStringLiteral(".ttf"), QStringLiteral(".otf")};
    return std::any_of(endings.begin(), endings.end(),
                       [&name](const QString &ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
}

} // namespace

PictureFiles::PictureFiles(FileList &files, QListView &view) : QObject(&view), m_files(files), m_view(view)
{
    view.setModel(&files); // before this listens to it: the view shows all rows anew
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoon);
    connect(&m_soon, &QTimer::timeout, this, &PictureFiles::refresh);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { m_soon.start(); });
    connect(&files, &FileList::modelReset, this, [this] {
        if (m_view.isVisible())
            follow();
    });
    view.installEventFilter(this);
}

bool PictureFiles::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show)
        refresh();
    else if (event->type() == QEvent::Hide && !m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    return QObject::eventFilter(watched, event);
}

void PictureFiles::follow()
{
    const QString folder = findFolder(m_files.path());
    if (m_watcher.directories() != QStringList{folder}) {
        if (!m_watcher.directories().isEmpty())
            m_watcher.removePaths(m_watcher.directories());
        if (!folder.isEmpty())
            m_watcher.addPath(folder);
    }
    hideOthers();
}

// The file that is current stays so.
void PictureFiles::refresh()
{
    const QString current = m_view.currentIndex().data().toString();
    m_files.refresh();
    if (const qsizetype row = m_files.files().indexOf(current); row >= 0)
        m_view.setCurrentIndex(m_files.index(int(row)));
}

void PictureFiles::hideOthers()
{
    const QStringList &names = m_files.files();
    for (int row = 0; row < names.size(); ++row)
        m_view.setRowHidden(row, isOther(names[row]));
}

} // namespace quillmere
