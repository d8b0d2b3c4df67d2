#pragma once

#include "files/Backups.h"
#include "files/LoadedFiles.h"
#include "files/TextFile.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

namespace quillmere {

class Writer;

// The one door to what is written and deleted, and to the program's own files. Made once and handed to who
// needs it.
//
// A theme travels between strangers and names the files that its commands write. So whatever names a file
// also says which theme led there, by the theme's folder, and a file that really lies elsewhere is left alone
// until the person allows it. An empty folder is no theme's: nothing lies in it.
class Files
{
public:
    enum class Step {
        Save,    // the file that LoadFile would read, else a new one; links are followed
        Restore, // exactly the file named; links are followed
        Delete,  // exactly the file named, and of a link the link itself
        Create,  // the same, which is not there yet
    };

    struct Place
    {
        QString path; // that the step would really touch
        bool isInside = false;
        bool mayBeTouched = false; // as it is inside, or was allowed
    };

    Files() = default;
    Q_DISABLE_COPY_MOVE(Files)

    // Where the step would end; looks at the folders on the way, and at nothing in the file. A theme that is
    // opened through a link has its real folder.
    Place place(Step step, const QString &path, const QString &theme) const;
    // The places, each once, of those files that lie outside of the theme; names are taken as they stand.
    static QStringList placesOutside(const QStringList &paths, const QString &theme);
    // The person allows this place (a Place::path), until the program ends.
    void allow(const QString &place);

    // Saves a text: a copy of the old file goes to the backup folder, then the new text is written beside it,
    // flushed and renamed over it. Without an `encoding` it is that of the file replaced. Gives the page that
    // the new file is in. RunTimeError says which file, which step and why, also where it may not be touched;
    // the old file is then as it was. Nothing is saved into a folder of another letter case than that of the
    // theme.
    CodePage save(const QString &path, const QString &text, const QString &theme,
                  std::optional<Encoding> encoding = {});
    // The same for many, all or none. Each is there and holds `before`, or is refused.
    struct Change
    {
        QString path;
        QByteArray before, after;
    };
    void saveAll(const QList<Change> &changes, const QString &theme);
    // Makes a file that is not there yet. Where one is, in letters of any case, it is left alone; where it
    // cannot be written whole, none is made.
    void create(const QString &path, const QByteArray &bytes, const QString &theme);
    // Puts back the bytes of `version`, a copy that backups keep; makes the file and its folder again where
    // they are gone.
    void restore(const QString &path, const QString &version, const QString &theme);
    // Gives exactly the file named another name; one that bears it already is left alone.
    void move(const QString &path, const QString &to, const QString &theme);
    // Into the backup folder, then gone.
    void remove(const QString &path, const QString &theme);

    // Saves a file of the program's own, which no theme has named, wherever links lead.
    CodePage saveOwn(const QString &path, const QString &text, std::optional<Encoding> encoding = {});

    Backups &backups() { return m_backups; }
    // What is open for editing, and whether another program has changed it.
    LoadedFiles &loaded() { return m_loaded; }

    // Calls `tell` with the path of each file that has been written or deleted here, while `listener` lives.
    void onWritten(const QObject *listener, std::function<void(const QString &path)> tell);

    // Where the program keeps what is the person's to edit: replace.ini and the dictionaries. Found when it
    // is first asked for; see findProgramFolder.
    QString programFolder() const;
    void setProgramFolder(const QString &folder) { m_programFolder = folder; }

    // Where what was not saved is kept: in the person's data folder, unless another is set.
    QString recoveryFolder() const;
    void setRecoveryFolder(const QString &folder) { m_recoveryFolder = folder; }

private:
    QString touch(Step step, const QString &path, const QString &theme) const;
    Writer writer();

    QSet<QString> m_allowed;
    Backups m_backups;
    LoadedFiles m_loaded;
    QList<std::pair<QPointer<const QObject>, std::function<void(const QString &)>>> m_listeners;
    mutable QString m_programFolder;
    QString m_recoveryFolder;
};

} // namespace quillmere
