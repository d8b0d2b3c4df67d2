#pragma once

#include "files/TextFile.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace quillmere {

// What the files held that are open for editing, when they were loaded or last written here. So a change that
// another program made since is seen before it is written over.

// The text of a file that may be written back; from now on changes of the file are known. See LoadText.
DecodedText LoadForEditing(const QString &path, CodePageRule rule = CodePageRule::Automatic,
                           const Progress &progress = {});

// While it lives, what is loaded for editing may turn out not to be wanted: without keep() all is known as it
// was before.
class LoadedForNow
{
public:
    LoadedForNow();
    ~LoadedForNow();
    Q_DISABLE_COPY_MOVE(LoadedForNow)

    void keep() { m_kept = true; }

private:
    struct Before;
    std::unique_ptr<Before> m_before;
    bool m_kept = false;
};

// Whether the file holds other bytes than when it was loaded for editing or last written by SaveFile, or has
// come or gone since. False for a file that was never loaded for editing. Reads the file.
bool changedOutside(const QString &path);

// What the file held then, as fingerprintOf; empty where it was not there or never loaded for editing.
QByteArray loadedFingerprint(const QString &path);
// The text in hand was made from this older content of a file that was loaded for editing.
void noteLoadedAs(const QString &path, const QByteArray &fingerprint);

// What tells two contents of a file apart; empty where there is no such file.
QByteArray fingerprintOf(const QString &path);

// A question whether to save a text to `path`, with a line that warns where that would write
// over what another program wrote.
QString savingQuestion(const QString &question, const QString &path);

// SaveFile and DeleteFile tell what the file holds now; no bytes, no file. It may have been loaded under
// other spellings of its path.
void noteWritten(const QString &path, const std::optional<QByteArray> &bytes);

} // namespace quillmere
