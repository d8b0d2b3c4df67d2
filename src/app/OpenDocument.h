#pragma once

#include "files/PackedText.h"
#include "files/Progress.h"
#include "outline/Document.h"
#include "source/forms/SourceBox.h"

#include <QObject>
#include <QString>

#include <functional>

namespace quillmere {

class Files;
class KeptRows;
class OutsideChanges;
class PreviewFrame;
class Talk;
class Recovery;
class StatusLine;

// A window that has been read and not shown yet.
struct ReadyWindow
{
    Document file;
    ReadyText text;
};

// The window in the source box: opens it, saves it, and keeps what is typed from getting lost.
class OpenDocument : public QObject
{
    Q_OBJECT

public:
    OpenDocument(SourceBox &source, PreviewFrame &frame, StatusLine &status, OutsideChanges &outside,
                 Files &files, Talk &talk, QObject *parent = nullptr);

    // Has no path before a window was opened; its text is the one in the source box.
    const Document &document();
    const QString &path() const { return m_document.path(); }
    const QString &theme() const { return m_document.theme(); }
    // Shows the text of a window, re-indented; a missing one gives an empty text. RunTimeError where the
    // unsaved text of the one before cannot be kept, and Cancelled; that one stays open then.
    void open(const QString &path, const QString &theme, CodePageRule rule);
    // The same in two steps, for a window whose text is not edited: reading changes nothing here.
    // `hasText` is told the markup before the longer part of the work.
    ReadyWindow read(const QString &path, const QString &theme, CodePageRule rule,
                     const std::function<void(const QString &markup)> &hasText = {}) const;
    void show(ReadyWindow window);
    // A sentence to say where the window is one of another theme than this, else nothing.
    QString leftFromAnother(const QString &theme) const;
    // The file has another name from now on.
    void moved(const QString &path);
    // Asks, and writes the text to its file.
    void save();
    // Keeps the unsaved text and rows for the next time. False when something cannot be kept and the person
    // would rather not lose it.
    bool mayClose(KeptRows &rows);

signals:
    // A window is in the source box, also one that was there before.
    void opened();
    // This text is being made ready for the source box, and nothing else changes meanwhile; empty once that
    // is over.
    void expected(const QString &markup);
    // Another window is about to take the place of the one in the source box.
    void leaving();
    // An unsaved text that was offered is in the source box.
    void textRestored();

private:
    void watch();
    void reload();

    SourceBox &m_source;
    PreviewFrame &m_frame;
    StatusLine &m_status;
    OutsideChanges &m_outside;
    Files &m_files;
    Talk &m_talk;
    Document m_document;
    PackedText m_inFile; // as last read or saved
    Recovery *m_recovery;
};

} // namespace quillmere
