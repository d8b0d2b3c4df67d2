#include "keeping/forms/Recovery.h"

#include "files/LoadedFiles.h"
#include "files/RunTimeError.h"
#include "keeping/forms/OfferBar.h"
#include "source/forms/SourceBox.h"

#include <QFile>

namespace quillmere {

namespace {

constexpr int kPause = 2000; // ms after the last key
constexpr int kMost = 20000; // ms that somebody may type without a pause

const QString kKey = QStringLiteral("unsaved");

QString shownTime(const QDateTime &time)
{
    return time.toString(time.date() == QDate::currentDate() ? u"hh:mm" : u"yyyy-MM-dd hh:mm");
}

} // namespace

Recovery::Recovery(SourceBox &source, OfferBar &offers, QObject *parent)
    : QObject(parent), m_source(source), m_offers(offers)
{
    m_writer.setMaxThreadCount(1);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &Recovery::keepInBackground);
    connect(&source, &SourceBox::changed, this, &Recovery::textChanged);
}

Recovery::~Recovery()
{
    m_writer.waitForDone();
}

void Recovery::textChanged()
{
    if (m_wasOffered && !m_source.document()->isModified()) {
        // Taken back, and worth keeping all the same; what is typed next goes elsewhere.
        m_file.clear();
        m_wasOffered = false;
    }
    // Also when all changes were taken back: what was kept of them goes then.
    if (m_kept)
        m_sinceKept.start();
    m_kept = false;
    m_pause.start(std::clamp(kMost - int(m_sinceKept.elapsed()), 0, kPause));
}

void Recovery::keepInBackground()
{
    if (m_kept || !startFile())
        return;
    m_kept = true;
    m_writer.start([this, file = m_file, document = m_document, text = m_source.text(),
                    base = loadedFingerprint(m_document)] {
        try {
            keepUnsaved(file, document, text, base);
        } catch (const RunTimeError &error) {
            QMetaObject::invokeMethod(this, [this, message = error.message()] {
                m_kept = false;
                emit hint(message);
            });
        }
    });
}

// Whether there is something to keep; it has a file to go to then.
bool Recovery::startFile()
{
    if (!m_source.document()->isModified()) {
        saved();
        return false;
    }
    if (m_source.document()->isEmpty())
        return false; // what was kept before it was emptied is worth more
    if (m_file.isEmpty())
        m_file = newUnsavedFile(m_document);
    return true;
}

bool Recovery::keepNow()
{
    m_pause.stop();
    m_writer.waitForDone();
    if (!startFile())
        return false;
    keepUnsaved(m_file, m_document, m_source.text(), loadedFingerprint(m_document));
    m_kept = true;
    return true;
}

void Recovery::opened(const QString &document)
{
    m_pause.stop();
    m_kept = true;
    m_file.clear();
    m_wasOffered = false;
    m_document = document;
    m_offered = unsavedTextsOf(document);
    const QString loaded = m_source.text();
    m_offered.removeIf([&](const UnsavedText &kept) {
        const bool same = kept.text == loaded;
        if (same)
            QFile::remove(kept.file);
        return same;
    });
    offerNext();
}

void Recovery::saved()
{
    m_pause.stop();
    m_writer.waitForDone();
    m_kept = true;
    if (!m_file.isEmpty())
        QFile::remove(m_file);
    m_file.clear();
    m_wasOffered = false;
}

void Recovery::offerNext()
{
    m_offers.withdraw(kKey);
    if (m_offered.isEmpty())
        return;
    QString text = tr("Unsaved text of %1.").arg(shownTime(m_offered.first().time));
    if (m_offered.first().base != loadedFingerprint(m_document))
        text += tr(" The file has changed since.");
    m_offers.offer(kKey, text,
                   {{tr("Restore"), [this] { restore(); }}, {tr("Discard"), [this] { discard(); }}});
}

void Recovery::restore()
{
    const UnsavedText kept = m_offered.takeFirst();
    m_source.rewrite(kept.text);
    m_file = kept.file; // what was typed until now stays in the file it had
    m_wasOffered = true;
    if (kept.base != loadedFingerprint(m_document))
        noteLoadedAs(m_document, kept.base); // so that saving it says what it would write over
    offerNext();
    emit restored();
    emit hint(tr("Unsaved text restored; Ctrl+Z takes it back."));
}

void Recovery::discard()
{
    QFile::remove(m_offered.takeFirst().file);
    offerNext();
}

} // namespace quillmere
