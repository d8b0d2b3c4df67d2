#pragma once

#include "gallery/PictureTurns.h"
#include "gallery/WindowPage.h"
#include "theme/ReceiverParts.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>

namespace quillmere {

class OverviewRows;
class PageCamera;
class PictureSizes;
class ThemeProject;

// Draws the windows of the overview that are seen, each when its turn comes. Their pages are made beside the
// window's thread; the browser that draws them is there only as long as somebody looks, and a while longer.
class OverviewPictures : public QObject
{
    Q_OBJECT

public:
    // What counts for a document in the place of its file; nothing where the file does.
    using TextOf = std::function<std::optional<QString>(const QString &path)>;

    OverviewPictures(OverviewRows &rows, const ThemeProject &theme, TextOf text, QObject *parent = nullptr);
    ~OverviewPictures() override; // waits for the page under way

    // The catalogue of the theme has other windows, or the theme is another one.
    void setWindows();
    // Pixels of the screen.
    void setPictureSize(QSize size);
    // The windows in view, then those beside, in the order in which they are to be drawn; those with large
    // documents let the others go first. From now on they are, until stop().
    void setSeen(const QList<int> &numbers);
    void stop();
    // Pictures may have become others: those in view are looked at again.
    void changed();

private:
    void pump();
    void make(int number);
    void take(int number, const WindowPage &made);
    void draw(int number, const QString &page);
    void show(int number, const QImage &picture);
    void done(int number);
    void startAnew();
    void watch();
    // `use` in this thread, with what `work` gives on another; not at all once startAnew() was called.
    template <typename Work, typename Use>
    void beside(Work work, Use use);
    PageCamera &camera();

    OverviewRows &m_rows;
    const ThemeProject &m_theme;
    TextOf m_text;
    PictureTurns m_turns;
    QList<int> m_seen;
    QSize m_size; // of pictures
    bool m_isOn = false, m_isMaking = false;
    int m_drawing = 0;     // pages that the camera has
    int m_drawn = 0;       // that it has had
    int m_generation = 0;  // of what is under way
    bool m_isStale = true; // the parts
    QString m_folder;      // that the sizes are of
    ReceiverParts m_parts;
    std::shared_ptr<PictureSizes> m_sizes;
    QHash<int, QByteArray> m_marks;  // of what is being drawn
    QHash<int, QStringList> m_files; // that the windows seen are made from
    QFileSystemWatcher m_watcher;
    QTimer m_soon, m_settling, m_rest;
    std::unique_ptr<PageCamera> m_camera;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
