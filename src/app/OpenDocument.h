#pragma once

#include "files/Progress.h"

#include <QObject>
#include <QString>

#include <functional>

namespace quillmere {

class Files;
class OutsideChanges;
class PreviewFrame;
class Prompts;
class Recovery;
class SourceBox;
class StatusLine;

// The widget document in the source box: opens it, saves it, and keeps what is typed from getting lost. Its
// path is the caption of the preview.
class OpenDocument : public QObject
{
    Q_OBJECT

public:
    using Guard = std::function<void(const std::function<void()> &)>;

    OpenDocument(SourceBox &source, PreviewFrame &frame, StatusLine &status, OutsideChanges &outside,
                 Files &files, Prompts &prompts, Guard guard, LongRun runLong, QObject *parent = nullptr);

    // Empty before a document was opened.
    QString path() const;
    const QString &theme() const { return m_theme; }
    // Shows the text of a document, re-indented; a missing one gives an empty text. RunTimeError where the
    // unsaved text of the one before cannot be kept, and Cancelled; that one stays open then.
    // `theme` is the folder of the theme that led to the path.
    void open(const QString &path, const QString &theme);
    // Asks, and writes the text to its file.
    void save();
    // Keeps the unsaved text for the next time. False when it cannot be kept and the person would rather not
    // lose it.
    bool mayClose();

signals:
    // An unsaved text that was offered is in the source box.
    void textRestored();

private:
    SourceBox &m_source;
    PreviewFrame &m_frame;
    StatusLine &m_status;
    OutsideChanges &m_outside;
    Files &m_files;
    Prompts &m_prompts;
    Guard m_guard;
    LongRun m_runLong;
    Recovery *m_recovery;
    QString m_theme; // folder of the theme that led to the document
};

} // namespace quillmere
