#pragma once

#include "keeping/forms/Recoverable.h"

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

namespace quillmere {

class Files;
class OfferBar;
class Talk;

// Keeps the text of the source box, or the rows of a list, in a recovery file while it is not saved, and
// offers what was kept when its document is opened again.
class Recovery : public QObject
{
    Q_OBJECT

public:
    Recovery(Recoverable content, Files &files, OfferBar &offers, Talk &talk, QObject *parent = nullptr);
    ~Recovery() override;

    // Keeps what is unsaved now; false where there is nothing. RunTimeError says why it cannot be kept; the
    // text must not be given up then.
    bool keepNow();
    // It was changed.
    void changed();
    // Another document has taken the place of the one before, or the same one was loaded again. What is kept
    // of it is offered, but for what shows already.
    void opened();
    // It is in its file now.
    void saved();
    // The path of what is kept.
    const QString &document() const { return m_document; }

signals:
    // What was offered is in place again.
    void restored();

private:
    std::optional<QString> textToKeep();
    void letGo();
    void forget();
    void keepInBackground();
    void offerNext();
    UnsavedFile takeOffered();
    void restore();
    void discard();

    Recoverable m_content;
    QString m_key; // of the offer
    Files &m_files;
    OfferBar &m_offers;
    Talk &m_talk;
    QString m_document;           // the path that it was opened from or saved to
    QByteArray m_base;            // what that held then
    UnsavedFile m_file;           // that the text goes to; null until it is first kept
    bool m_wasOffered = false;    // it is one that was restored
    QList<UnsavedText> m_offered; // those of this document that nobody has decided about, newest first
    bool m_kept = true;           // the text is in its file, or needs none
    QTimer m_pause;               // since the last key
    QElapsedTimer m_sinceKept;
    QThreadPool m_writer; // one thread: flushing a file may take longer than a key may
};

} // namespace quillmere
