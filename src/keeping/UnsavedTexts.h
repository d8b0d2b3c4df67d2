#pragma once

#include "files/TextFile.h"

#include <QDateTime>
#include <QList>
#include <QLockFile>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace quillmere {

// Texts that were typed and not saved. Each lies in a file of its own in a recovery folder, named by the
// document that it belongs to and by when editing began, so that a later text never takes the place of one
// that nobody has decided about. The file holds in its first line a fingerprint (hexadecimal) of what the
// text was made from, "-" and two letters for the encoding of that, a blank and the document's path, and then
// the text, in UTF-16 with a byte order mark: every text comes back to the letter.

// The same file may be open as text and as the rows of a list; what is kept of the one is none of the other.
// Of rows, the text is what RowsText.h makes of them.
enum class UnsavedKind { Text, Colours, Images, Translations };

struct UnsavedText
{
    QString file;     // full path
    QDateTime time;   // when it was kept
    QString document; // its path, where that holds no line break
    QString text;
    QByteArray base;                  // what the document held when the text was typed; see LoadedFiles.h
    std::optional<Encoding> encoding; // of the document then; earlier releases did not keep it
};

enum class InUse { LeaveOut, Include };
// What is kept for a document, newest first. The document is its path, which may be empty. What cannot be
// read is left out, and what a living program still writes, unless it is asked for.
QList<UnsavedText> unsavedTextsOf(const QString &folder, const QString &document,
                                  InUse inUse = InUse::LeaveOut, UnsavedKind kind = UnsavedKind::Text);
// The text in one file.
std::optional<UnsavedText> readUnsaved(const QString &file);

// A file for an unsaved text that this program alone writes, offers and deletes while the object lives: a
// lock beside it tells other programs. The lock of a program that has died counts for nothing.
class UnsavedFile
{
public:
    UnsavedFile() = default;
    // For another text of the document; nothing is written yet.
    static UnsavedFile forNew(const QString &folder, const QString &document,
                              UnsavedKind kind = UnsavedKind::Text);
    // One that is kept; null where a living program has it.
    static UnsavedFile take(const QString &path);

    bool isNull() const { return m_path.isEmpty(); }
    const QString &path() const { return m_path; }
    // Deletes it; the object is null then.
    void remove();

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};

// Deletes texts that were kept before `time` and that nobody would miss: `shown` gives what opening a
// document shows, and that is the same. Beside any thread.
void dropUnsaved(const QString &folder, const QDateTime &time,
                 const std::function<QString(const QString &document)> &shown);

// Writes or replaces a file of that name. RunTimeError says why it cannot be written.
void keepUnsaved(const QString &file, const QString &document, const QString &text,
                 const QByteArray &base = {}, std::optional<Encoding> encoding = {});

} // namespace quillmere
