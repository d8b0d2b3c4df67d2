#pragma once

#include "catalogues/ImageCatalogue.h"

#include <QByteArray>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

namespace quillmere {

class Files;

// A picture that is to become an image of the theme, from a file or as bytes.
struct ComingPicture
{
    QString source;   // its file; empty for bytes
    QByteArray bytes; // where it has no file
    QString name;     // of the file in the image folder, or the path below that
    QString id;
    bool isThere = false; // in the image folder already: only its row is added
    bool isTaken = false; // its name or its ID is; another is to be asked for
    QString problem;      // why it cannot come: a sentence without its full stop; empty where it can
};

// Brings pictures into the image folder of a theme: looks at each, copies it, and gives the rows for the
// catalogue. No file is ever written over.
class PictureIntake
{
public:
    // Says why bytes are no picture that can be shown; empty where they are one. A sentence without its full
    // stop.
    using WhyNoPicture = std::function<QString(const QByteArray &bytes)>;

    // RunTimeError where the theme has no image folder inside of its own.
    PictureIntake(const ImageCatalogue &images, Files &files, WhyNoPicture whyNot);

    // What is to be said of a file, or of bytes that are to be a file of this name, before it is read whole.
    ComingPicture fromFile(const QString &path) const;
    ComingPicture fromBytes(const QByteArray &bytes, const QString &name) const;
    // Gives it another name, or only another ID where the file is there already.
    void rename(ComingPicture &picture, const QString &name) const;
    // A name, or an ID, that is free, like the one it has.
    QString freeName(const ComingPicture &picture) const;

    // From now on its name and its ID are taken, for the pictures that come with it.
    void claim(const ComingPicture &picture);
    // Reads and copies it; the row for the catalogue, or nothing, with the problem. Nothing is left of a
    // file that could not be written whole.
    std::optional<ListRows::Row> bring(ComingPicture &picture) const;

    // Why a theme cannot hold a picture of this name; a sentence without its full stop, or empty. A theme's
    // files know no way to write what would end a name early, and a browser's page none for quotes.
    static QString nameProblem(const QString &name, const Encoding &encoding);

private:
    void look(ComingPicture &picture, const QString &name) const;
    bool isNameTaken(const QString &name) const;
    bool isIdTaken(const QString &id) const;

    const ImageCatalogue &m_images;
    Files &m_files;
    WhyNoPicture m_whyNot;
    QString m_folder;             // as it is on disk
    QSet<QString> m_names, m_ids; // claimed; names without letter case
};

// Puts the picture `source` in the place of the file at `path`, of which a copy goes to the backup folder. It
// has to be of the format that the name of the file says, or of the one that the file has. RunTimeError says
// why it cannot be.
void replacePicture(const QString &path, const QString &source, const QString &theme, Files &files,
                    const PictureIntake::WhyNoPicture &whyNot);

} // namespace quillmere
