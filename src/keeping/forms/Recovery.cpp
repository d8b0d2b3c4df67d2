#include "keeping/forms/Recovery.h"

#include "asking/Talk.h"
#include "files/LoadedFiles.h"
#include "files/RunTimeError.h"
#include "keeping/forms/OfferBar.h"
#include "source/forms/SourceBox.h"

#include "asking/Talk.h"
#include <QSignalBlocker>

namespace quillmere {

namespace {

constexpr int kPause = 2000; // ms after the last key
constexpr int kMost = 20000; // ms that somebody may type without a pause

const QString kKey = QStringLiteral("unsaved");

// What the box held last before it was emptied; nothing where that is saved.
QString textBefore(SourceBox &emptied)
{
    const QSignalBlocker quiet(emptied);
    QTextDocument &document = *emptied.document();
    int steps = 0;
    for (; document.isEmpty() && document.isUndoAvailable(); ++steps)
        document.undo();
    const QString text = document.isModified() ? emptied.text() : QString();
    for (; steps > 0; --steps)
        document.redo();
    return text;
}

QString shownTime(const QDateTime &time)
{
    return time.toString(time.date() == QDate::currentDate() ? u"hh:mm" : u"yyyy-MM-dd hh:mm");
}

} // namespace

Recovery::Recovery(SourceBox &source, OfferBar &offers, Talk &talk, QObject *parent)
    : QObject(parent), m_source(source), m_offers(offers), m_talk(talk)
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
        letGo();
    }
    // Also when all changes were taken back: what was kept of them goes then.
    if (m_kept)
        m_sinceKept.start();
    m_kept = false;
    m_pause.start(std::clamp(kMost - int(m_sinceKept.elapsed()), 0, kPause));
}

void Recovery::letGo()
{
    m_file = UnsavedFile();
    m_wasOffered = false;
}

void Recovery::keepInBackground()
{
    if (m_kept)
        return;
    const std::optional<QString> toKeep = textToKeep();
    if (!toKeep)
        return;
    m_kept = true;
    m_writer.start([this, file = m_file.path(), document = m_document, text = *toKeep,
                    base = loadedFingerprint(m_document)] {
        try {
            keepUnsaved(file, document, text, base);
        } catch (const RunTimeError &error) {
            QMetaObject::invokeMethod(this, [this, message = error.message()] {
                m_kept = false;
                m_talk.say(message);
            });
        }
    });
}

// None where there is nothing to keep; else it has a file to go to.
std::optional<QString> Recovery::textToKeep()
{
    if (!m_source.document()->isModified()) {
        saved();
        return {};
    }
    const QString text = m_source.document()->isEmpty() ? textBefore(m_source) : m_source.text();
    if (text.isEmpty())
        return {};
    if (m_file.isNull())
        m_file = UnsavedFile::forNew(m_document);
    return text;
}

bool Recovery::keepNow()
{
    m_pause.stop();
    m_writer.waitForDone();
    const std::optional<QString> text = textToKeep();
    if (!text)
        return false;
    keepUnsaved(m_file.path(), m_document, *text, loadedFingerprint(m_document));
    m_kept = true;
    return true;
}

void Recovery::opened(const QString &document)
{
    m_pause.stop();
    m_kept = true;
    letGo();
    m_document = document;
    m_offered = unsavedTextsOf(document);
    const QString loaded = m_source.text();
    m_offered.removeIf([&](const UnsavedText &kept) {
        const bool same = kept.text == loaded;
        if (same)
            UnsavedFile::take(kept.file).remove();
        return same;
    });
    offerNext();
}

void Recovery::saved()
{
    m_pause.stop();
    m_writer.waitForDone();
    m_kept = true;
    m_file.remove();
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

// The text that is offered; null where another program has it by now, or has changed it.
UnsavedFile Recovery::takeOffered()
{
    const UnsavedText &kept = m_offered.first();
    UnsavedFile file = UnsavedFile::take(kept.file);
    const auto now = file.isNull() ? std::nullopt : readUnsaved(kept.file);
    if (!file.isNull() && (!now || now->text == kept.text))
        return file;
    m_offered.removeFirst();
    offerNext();
    m_talk.say(tr("Another Quillmere has restored this text."));
    return {};
}

void Recovery::restore()
{
    UnsavedFile file = takeOffered();
    if (file.isNull())
        return;
    const UnsavedText kept = m_offered.takeFirst();
    m_source.rewrite(kept.text);
    m_file = std::move(file); // what was typed until now stays in the file it had
    m_wasOffered = true;
    if (kept.base != loadedFingerprint(m_document))
        noteLoadedAs(m_document, kept.base); // so that saving it says what it would write over
    offerNext();
    emit restored();
    m_talk.say(tr("Unsaved text restored; Ctrl+Z takes it back."));
}

void Recovery::discard()
{
    UnsavedFile file = takeOffered();
    if (file.isNull())
        return;
    file.remove();
    m_offered.removeFirst();
    offerNext();
}

} // namespace quillmere
