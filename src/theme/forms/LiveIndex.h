#pragma once

#include "controls/LateWork.h"
#include "outline/Outline.h"
#include "theme/ThemeIndex.h"

#include <QDateTime>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <stop_token>

namespace quillmere {

class Files;
class SourceBox;
class ThemeProject;

// The index of the open theme, kept up to date with what is typed and with the rows that are not saved. It is
// made beside the window's own thread from copies of both, and what was made arrives by the event loop. So
// what it says is of the text as it was when typing last paused.
class LiveIndex : public QObject
{
    Q_OBJECT

public:
    // `openFile` gives the path of the window in the source box, empty for none.
    LiveIndex(ThemeProject &theme, SourceBox &source, Files &files, std::function<QString()> openFile,
              QObject *parent = nullptr);
    ~LiveIndex() override; // tells what is under way to stop, and waits for it

    // nullptr until that of the open theme is made. Stays the same object until changed().
    const ThemeIndex *index() const { return m_index.get(); }
    std::shared_ptr<const ThemeIndex> sharedIndex() const { return m_index; }
    // Of the text in the source box as it stands now; made when it is first asked for after a change.
    const Outline &outline();
    // Whether that is made already.
    bool isOutlined() const { return m_outline.revision() == revision(); }
    // Whether it is being made, or is about to be, beside the window's thread; then outlined() follows.
    bool isOutlineComing() const;
    // A number that each change of that text makes another.
    qint64 revision() const;
    QString openFile() const { return m_openFile(); }
    // Of the theme.
    const QString &folder() const { return m_folder; }
    // With the open text and unsaved rows in place of their files.
    ThemeSources sources() const;

    // Makes the index anew where a file of the theme is another one on disk.
    void lookAgain();

signals:
    // The index is new or brought up to date; or it is nullptr, as another theme was opened.
    void changed();
    // What was being made when the text last changed is there.
    void outlined();

private:
    using Stamp = std::pair<QDateTime, qint64>; // time and size of a file
    using Stamps = QHash<QString, Stamp>;
    struct Made
    {
        std::shared_ptr<const ThemeIndex> index;
        std::shared_ptr<const Stamps> stamps;
        Outline outline;
        bool isOther = false; // than the index before
    };
    struct Work;

    static Stamps stampsOf(const ThemeIndex &index);
    static Made make(Work &work, const std::stop_token &stop);
    void watchRows();
    void themeLoaded();
    void textChanged();
    void fileWritten(const QString &path);
    void start();
    void finish(const std::shared_ptr<Made> &made);

    ThemeProject &m_theme;
    SourceBox &m_source;
    std::function<QString()> m_openFile;
    LateWork m_pause;
    QTimer m_soon; // what led to it goes on first
    QString m_folder;
    std::shared_ptr<const ThemeIndex> m_index;
    std::shared_ptr<const Stamps> m_stamps;
    QSet<QString> m_inHand; // the files of m_index whose text or rows were not those on disk
    QSet<QString> m_late;   // files that m_index is behind of
    bool m_isAnew = false, m_looks = false, m_again = false, m_running = false;
    std::stop_source m_stop;
    Outline m_outline;
    QThreadPool m_worker; // last: nothing of the above may go while it works
};

} // namespace quillmere
