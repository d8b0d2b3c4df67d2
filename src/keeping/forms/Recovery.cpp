#include "keeping/forms/Recovery.h"

#include "asking/Talk.h"
#include "files/Files.h"
#include "files/RunTimeError.h"
#include "keeping/forms/OfferBar.h"

namespace quillmere {

namespace {

constexpr int kPause = 2000; // ms after the last key
constexpr int kMost = 20000; // ms that somebody may type without a pause

QString shownTime(const QDateTime &time)
{
    return time.toString(time.date() == QDate::currentDate() ? u"hh:mm" : u"yyyy-MM-dd hh:mm");
}

} // namespace

Recovery::Recovery(Recoverable content, Files &files, OfferBar &offers, Talk &talk, QObject *parent)
    : QObject(parent), m_content(std::move(content)), m_key(QStringLiteral("unsaved ") + m_content.name),
      m_files(files), m_offers(offers), m_talk(talk)
{
    m_writer.setMaxThreadCount(1);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &Recovery::keepInBackground);
}

Recovery::~Recovery()
{
    m_writer.waitForDone();
}

void Recovery::changed()
{
    if (m_wasOffered && !m_content.isEdited()) {
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
    m_writer.start([this, file = m_file.path(), document = m_document, text = *toKeep, base = m_base,
                    encoding = m_content.document->encoding()] {
        try {
            keepUnsaved(file, document, text, base, encoding);
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
    if (!m_content.isEdited()) {
        forget();
        return {};
    }
    const std::optional<QString> text = m_content.textToKeep();
    if (text && m_file.isNull())
        m_file = UnsavedFile::forNew(m_files.recoveryFolder(), m_document, m_content.kind);
    return text;
}

bool Recovery::keepNow()
{
    m_pause.stop();
    m_writer.waitForDone();
    const std::optional<QString> text = textToKeep();
    if (!text)
        return false;
    keepUnsaved(m_file.path(), m_document, *text, m_base, m_content.document->encoding());
    m_kept = true;
    return true;
}

void Recovery::opened()
{
    m_pause.stop();
    m_kept = true;
    letGo();
    m_document = m_content.document->path();
    m_base = m_files.loaded().fingerprint(m_document);
    m_offered = unsavedTextsOf(m_files.recoveryFolder(), m_document, InUse::LeaveOut, m_content.kind);
    m_offered.removeIf([&](const UnsavedText &kept) {
        const bool same = m_content.shows(kept.text);
        if (same)
            UnsavedFile::take(kept.file).remove();
        return same;
    });
    offerNext();
}

void Recovery::saved()
{
    forget();
    m_document = m_content.document->path(); // rows may be saved elsewhere
    m_base = m_files.loaded().fingerprint(m_document);
}

void Recovery::forget()
{
    m_pause.stop();
    m_writer.waitForDone();
    m_kept = true;
    m_file.remove();
    m_wasOffered = false;
}

void Recovery::offerNext()
{
    m_offers.withdraw(m_key);
    if (m_offered.isEmpty())
        return;
    QString text = tr("Unsaved %1 of %2.").arg(m_content.name, shownTime(m_offered.first().time));
    if (m_offered.first().base != m_files.loaded().fingerprint(m_document))
        text += tr(" The file has changed since.");
    m_offers.offer(m_key, text,
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
    QString before;
    try {
        if (!m_content.hasUndo && keepNow())
            before = m_file.path();
    } catch (const RunTimeError &error) {
        offerNext();
        m_talk.say(error.message());
        return;
    }
    const UnsavedText kept = m_offered.takeFirst();
    if (!m_content.restore(kept.text)) {
        offerNext();
        m_talk.say(tr("The copy kept in %1 is damaged.").arg(kept.file));
        return;
    }
    if (kept.encoding)
        m_content.document->setEncoding(*kept.encoding);
    m_file = std::move(file); // what was typed until now stays in the file it had
    m_wasOffered = true;
    if (const auto other = before.isEmpty() ? std::nullopt : readUnsaved(before)) {
        if (m_content.shows(other->text))
            UnsavedFile::take(before).remove();
        else
            m_offered.append(*other); // it is the way back
    }
    m_base = kept.base;
    if (m_base != m_files.loaded().fingerprint(m_document))
        m_files.loaded().noteLoadedAs(m_document, m_base); // so that saving it says what it would write over
    offerNext();
    emit restored();
    m_talk.say(m_content.hasUndo ? tr("Unsaved %1 restored; Ctrl+Z takes it back.").arg(m_content.name)
                                 : tr("Unsaved %1 restored.").arg(m_content.name));
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
