#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace quillmere {

// Texts that were typed and not saved. Each lies in a file of its own in the recovery folder, named by the
// document that it belongs to and by when editing began, so that a later text never takes the place of one
// that nobody has decided about. The file holds in its first line a fingerprint (hexadecimal) of what the
// text was made from, a blank and the document's path, and then the text, in UTF-16 with a byte order mark:
// every text comes back to the letter.

struct UnsavedText
{
    QString file;   // full path below the recovery folder
    QDateTime time; // when it was kept
    QString text;
    QByteArray base; // what the document held when the text was typed; see LoadedFiles.h
};

// What is kept for a document, newest first. The document is its path, which may be empty. What cannot be
// read is left out.
QList<UnsavedText> unsavedTextsOf(const QString &document);

// A name for another text of the document, full path; nothing is written.
QString newUnsavedFile(const QString &document);

// Writes or replaces a file of that name. RunTimeError says why it cannot be written.
void keepUnsaved(const QString &file, const QString &document, const QString &text,
                 const QByteArray &base = {});

// In the person's data folder; an empty folder restores that.
QString recoveryFolder();
void setRecoveryFolder(const QString &folder);

} // namespace quillmere
