#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

class QListView;

namespace quillmere {

class FileList;

// Keeps a list of files at what is in its folder while it is shown, and hides the rows of files that are
// certainly no pictures. The rows themselves are those of the list.
class PictureFiles : public QObject
{
    Q_OBJECT

public:
    // Both must outlive it.
    PictureFiles(FileList &files, QListView &view);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void refresh();
    void hideOthers();

    FileList &m_files;
    QListView &m_view;
    QFileSystemWatcher m_watcher;
    QTimer m_soon; // files come many at a time
};

} // namespace quillmere
