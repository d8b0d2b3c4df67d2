#pragma once

#include "files/TextFile.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillmere {

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

    // See SaveFile, RestoreFile, DeleteFile. RunTimeError also where the file may not be touched.
    // Nothing is saved into a folder of another letter case than that of the theme.
    CodePage save(const QString &path, const QString &text, const QString &theme,
                  std::optional<Encoding> encoding = {});
    void restore(const QString &path, const QString &version, const QString &theme);
    void remove(const QString &path, const QString &theme);

    // Saves a file of the program's own, which no theme has named, wherever links lead.
    CodePage saveOwn(const QString &path, const QString &text, std::optional<Encoding> encoding = {});

    // Where the program keeps what is the person's to edit: replace.ini and the dictionaries. Found when it
    // is first asked for; see findProgramFolder.
    QString programFolder() const;
    void setProgramFolder(const QString &folder) { m_programFolder = folder; }

private:
    QString touch(Step step, const QString &path, const QString &theme) const;

    QSet<QString> m_allowed;
    mutable QString m_programFolder;
};

} // namespace quillmere
