#pragma once

#include "files/Files.h"

#include <functional>

namespace quillmere {

// The one writer: a copy of the old file goes to the backup folder, then the new text is written beside it,
// flushed and renamed over it. Permissions are kept, a symbolic link stays one and its target is written.
// For Files alone, which knows what may be touched. RunTimeError says which file, which step and why; the old
// file is then as it was.
class Writer
{
public:
    // What a file holds now; no bytes, no file.
    using Written = std::function<void(const QString &path, const std::optional<QByteArray> &bytes)>;

    Writer(Backups &backups, Written written);

    // Without an `encoding` it is that of the file replaced. Gives the page that the new file is in.
    CodePage save(const QString &path, const QString &text, std::optional<Encoding> encoding);

    // Files that are there, by their real paths. Replaces all of them or none.
    void replaceAll(const QList<Files::Change> &files);

    // Makes exactly the file named, which is not there yet, whole or not at all.
    void create(const QString &path, const QByteArray &bytes);

    // Puts the bytes of `version`, a copy that backups keep, into exactly the file named, by the same steps;
    // makes the file and its folder again where they are gone.
    void restore(const QString &path, const QString &version);

    // Gives exactly the file named another name, which none bears yet.
    void move(const QString &path, const QString &to);

    // Into the backup folder, then gone; exactly the file named.
    void remove(const QString &path);

private:
    void replace(const QString &target, const QByteArray &bytes);
    void putBack(const QList<Files::Change> &files, qsizetype count, const QString &reason);

    Backups &m_backups;
    Written m_written;
};

} // namespace quillmere
