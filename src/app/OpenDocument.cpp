#include "app/OpenDocument.h"

#include "app/StatusLine.h"
#include "asking/Prompts.h"
#include "asking/forms/AskToWrite.h"
#include "browser/forms/WebBrowser.h"
#include "files/LoadedFiles.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "keeping/forms/OutsideChanges.h"
#include "keeping/forms/Recovery.h"
#include "markup/FormatXML.h"
#include "preview/forms/PreviewFrame.h"
#include "source/SavedText.h"
#include "source/forms/SourceBox.h"

#include <QFileInfo>
#include <QThreadPool>

namespace quillmere {

namespace {
constexpr qint64 kMegabyte = 1'000'000;
constexpr qint64 kAskFrom = 8; // megabytes
constexpr int kDaysKept = 60;  // an unsaved text that opening its document shows anyhow
} // namespace

OpenDocument::OpenDocument(SourceBox &source, PreviewFrame &frame, StatusLine &status,
                           OutsideChanges &outside, Files &files, Prompts &prompts, Guard guard,
                           LongRun runLong, QObject *parent)
    : QObject(parent), m_source(source), m_frame(frame), m_status(status), m_outside(outside), m_files(files),
      m_prompts(prompts), m_guard(std::move(guard)), m_runLong(std::move(runLong)),
      m_recovery(new Recovery(source, *status.offers, this))
{
    connect(m_recovery, &Recovery::hint, &m_status, &StatusLine::say);
    connect(m_recovery, &Recovery::restored, this, &OpenDocument::textRestored);
    m_recovery->opened({});
    // Beside the window's thread: the documents may lie on a disk that does not answer.
    QThreadPool::globalInstance()->start([folder = recoveryFolder(), rule = codePageRule()] {
        const auto shown = [rule](const QString &path) {
            try {
                QString text = decodeText(LoadBytes(path).value_or(QByteArray()), rule).text;
                return FormatXML(text);
            } catch (const RunTimeError &) {
                return QString(); // what is not to be read shows nothing
            }
        };
        dropUnsaved(folder, QDateTime::currentDateTime().addDays(-kDaysKept), shown);
    });
}

QString OpenDocument::path() const
{
    return m_frame.title();
}

void OpenDocument::open(const QString &path, const QString &theme)
{
    const qint64 size = QFileInfo(findFile(path)).size();
    const qint64 megabytes = size / kMegabyte;
    if (megabytes >= kAskFrom && size <= kLargestFile && // or it is not read at all
        !m_prompts.ask(tr("Open"),
                       tr("%1 has %2 MB and takes a while to open. Open it?").arg(path).arg(megabytes)))
        return;
    const QString before = m_recovery->keepNow() ? this->path() : QString();
    DecodedText file;
    ReadyText ready;
    LoadedForNow loaded; // the file may be read and its text then be cancelled
    m_runLong(tr("Opening the window"), [&](const Progress &progress) {
        file = LoadForEditing(path, progress);
        ready = makeReady(FormatXML(file.text), progress);
    });
    loaded.keep();
    if (path != this->path())
        m_frame.wb->beginDocument();
    m_frame.setCaption(path);
    m_theme = theme;
    m_status.showCodePage(file.page);
    m_source.setText(std::move(ready));
    m_status.say(before.isEmpty() || before == path
                     ? path
                     : tr("%1. The unsaved text of %2 is kept and offered when that is opened again.")
                           .arg(path, QFileInfo(before).fileName()));
    m_recovery->opened(path);
    // What is unsaved is kept by opening and offered again afterwards.
    m_outside.watch(QStringLiteral("document"),
                    {{path, [this, path, theme] { m_guard([&] { open(path, theme); }); }, {}}});
}

void OpenDocument::save()
{
    if (path().isEmpty()) {
        m_prompts.tell(QStringLiteral("Simpan File"),
                       tr("No file is open: double-click a window on the Widget tab first."),
                       Prompts::Icon::Information);
        return;
    }
    // The answer does not matter: saving has always meant saving, and the old file is in the backup folder.
    const WriteQuestion question = {QStringLiteral("Simpan File"),
                                    QStringLiteral("Benar mau menyimpan file?"), path(), m_theme};
    if (!askToWrite(m_files, m_prompts, question, No::IsIgnored))
        return;
    m_files.save(path(), textToSave(m_source.text()), m_theme);
    m_source.document()->setModified(false);
    m_recovery->saved();
    m_status.say(tr("%1 saved.").arg(path()));
}

bool OpenDocument::mayClose()
{
    try {
        m_recovery->keepNow();
    } catch (const RunTimeError &error) {
        return m_prompts.ask(QStringLiteral("Quillmere"),
                             tr("%1\nLeave all the same, and lose what is not saved?").arg(error.message()));
    }
    return true;
}

} // namespace quillmere
