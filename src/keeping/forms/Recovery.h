#pragma once

#include "keeping/UnsavedTexts.h"

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

namespace quillmere {

class OfferBar;
class SourceBox;
class Talk;

// Keeps the text of the source box in a recovery file while it is not saved, and offers what was kept when
// its document is opened again.
class Recovery : public QObject
{
    Q_OBJECT

public:
    Recovery(SourceBox &source, OfferBar &offers, Talk &talk, QObject *parent = nullptr);
    ~Recovery() override;

    // Keeps what is unsaved now; false where there is nothing. RunTimeError says why it cannot be kept; the
    // text must not be given up then.
    bool keepNow();
    // Another document (its path) is in the source box.
    void opened(const QString &document);
    // The text of the source box is in its file.
    void saved();

signals:
    // What was offered is in the source box.
    void restored();

private:
    void textChanged();
    std::optional<QString> textToKeep();
    void letGo();
    void keepInBackground();
    void offerNext();
    UnsavedFile takeOffered();
    void restore();
    void discard();

    SourceBox &m_source;
    OfferBar &m_offers;
    Talk &m_talk;
    QString m_document;
    UnsavedFile m_file;           // that the text goes to; null until it is first kept
    bool m_wasOffered = false;    // it is one that was restored
    QList<UnsavedText> m_offered; // those of this document that nobody has decided about, newest first
    bool m_kept = true;           // the text is in its file, or needs none
    QTimer m_pause;               // since the last key
    QElapsedTimer m_sinceKept;
    QThreadPool m_writer; // one thread: flushing a file may take longer than a key may
};

} // namespace quillmere
