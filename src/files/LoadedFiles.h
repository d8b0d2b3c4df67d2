#pragma once

#include "files/TextFile.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace quillmere {

// What tells two contents of a file apart; empty where there is no such file.
QByteArray fingerprintOf(const QString &path);

// What the files held that are open for editing, when they were loaded or last written here. So a change that
// another program made since is seen before it is written over.
class LoadedFiles
{
public:
    LoadedFiles() = default;
    Q_DISABLE_COPY_MOVE(LoadedFiles)

    // The text of a file that may be written back; from now on changes of the file are known. See LoadText.
    DecodedText load(const QString &path, CodePageRule rule = CodePageRule::Automatic,
                     const Progress &progress = {});

    // Whether the file holds other bytes than when it was loaded or last written by Files, or has come or
    // gone since. False for a file that was never loaded. Reads the file.
    bool changedOutside(const QString &path) const;

    // What the file held then, as fingerprintOf; empty where it was not there or never loaded.
    QByteArray fingerprint(const QString &path) const;
    // The text in hand was made from this older content of a file that was loaded.
    void noteLoadedAs(const QString &path, const QByteArray &fingerprint);

    // A question whether to save a text to `path`, with a line that warns where that would write over what
    // another program wrote.
    QString savingQuestion(const QString &question, const QString &path) const;

    // Files tells what the file holds now; no bytes, no file. It may have been loaded under other spellings
    // of its path.
    void noteWritten(const QString &path, const std::optional<QByteArray> &bytes);

private:
    friend class LoadedForNow;
    struct Loaded
    {
        QString file; // after all links, as Files writes it; the asked path where there was no file
        QByteArray fingerprint;
    };

    QHash<QString, Loaded> m_files; // by the path that was asked for, without "." and ".."
};

// While it lives, what is loaded may turn out not to be wanted: without keep() all is known as it was before.
class LoadedForNow
{
public:
    explicit LoadedForNow(LoadedFiles &files) : m_files(files), m_before(files.m_files) {}
    ~LoadedForNow()
    {
        if (!m_kept)
            m_files.m_files = m_before;
    }
    Q_DISABLE_COPY_MOVE(LoadedForNow)

    void keep() { m_kept = true; }

private:
    LoadedFiles &m_files;
    QHash<QString, LoadedFiles::Loaded> m_before;
    bool m_kept = false;
};

} // namespace quillmere
