#include "app/OpenDocument.h"

#include "app/StatusLine.h"
#include "asking/LineCount.h"
#include "asking/Talk.h"
#include "asking/forms/AskToWrite.h"
#include "browser/forms/WebBrowser.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "keeping/forms/KeptRows.h"
#include "keeping/forms/OutsideChanges.h"
#include "keeping/forms/Recovery.h"
#include "markup/FormatXML.h"
#include "markup/LineDifference.h"
#include "preview/forms/PreviewFrame.h"
#include "source/SavedText.h"
#include "source/forms/SourceBox.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QThreadPool>

#include <utility>

namespace quillmere {

namespace {
constexpr qint64 kMegabyte = 1'000'000;
constexpr qint64 kAskFrom = 8; // megabytes
constexpr int kDaysKept = 60;  // an unsaved text that opening its document shows anyhow
} // namespace

OpenDocument::OpenDocument(SourceBox &source, PreviewFrame &frame, StatusLine &status,
                           OutsideChanges &outside, Files &files, Talk &talk, QObject *parent)
    : QObject(parent), m_source(source), m_frame(frame), m_status(status), m_outside(outside), m_files(files),
      m_talk(talk),
      m_recovery(new Recovery(recoverableText(source, m_document), files, *status.offers, talk, this))
{
    connect(&source, &SourceBox::changed, m_recovery, &Recovery::changed);
    connect(m_recovery, &Recovery::restored, this, &OpenDocument::textRestored);
    connect(m_recovery, &Recovery::restored, this,
            [this] { m_status.showCodePage(m_document.encoding().page); });
    m_recovery->opened();
    // Beside the window's thread: the documents may lie on a disk that does not answer.
    QThreadPool::globalInstance()->start([folder = files.recoveryFolder()] {
        const auto shown = [](const QString &path) {
            try {
                QString text = LoadFile(path);
                return FormatXML(text);
            } catch (const RunTimeError &) {
                return QString(); // what is not to be read shows nothing
            }
        };
        dropUnsaved(folder, QDateTime::currentDateTime().addDays(-kDaysKept), shown);
    });
}

void OpenDocument::open(const QString &path, const QString &theme, CodePageRule rule)
{
    const qint64 size = QFileInfo(findFile(path)).size();
    const qint64 megabytes = size / kMegabyte;
    if (megabytes >= kAskFrom && size <= kLargestFile && // or it is not read at all
        !m_talk.ask(tr("Open"),
                    tr("%1 has %2 MB and takes a while to open. Open it?").arg(path).arg(megabytes)))
        return;
    const QString kept = m_recovery->keepNow() ? m_document.path() : QString();
    const auto over = qScopeGuard([this] { emit expected({}); });
    LoadedForNow loaded(m_files.loaded()); // the file may be read and its text then be cancelled
    ReadyWindow window = read(path, theme, rule, [this](const QString &markup) { emit expected(markup); });
    loaded.keep();
    show(std::move(window));
    if (!kept.isEmpty() && kept != path)
        m_talk.say(tr("%1. The unsaved text of %2 is kept and offered when that is opened again.")
                       .arg(path, QFileInfo(kept).fileName()));
}

void OpenDocument::reload()
{
    const Document now = m_document;
    open(now.path(), now.theme(), now.encoding().rule);
}

const Document &OpenDocument::document()
{
    m_document.setText(m_source.text());
    m_document.setEdited(m_source.document()->isModified());
    return m_document;
}

QString OpenDocument::leftFromAnother(const QString &theme) const
{
    const QString own = m_document.theme();
    if (own.isEmpty() || QFileInfo(own).canonicalFilePath() == QFileInfo(theme).canonicalFilePath())
        return {};
    return tr("The source still holds %1 of %2, and saves it there.")
        .arg(QFileInfo(m_document.path()).fileName(), own);
}

ReadyWindow OpenDocument::read(const QString &path, const QString &theme, CodePageRule rule,
                               const std::function<void(const QString &)> &hasText) const
{
    ReadyWindow window;
    m_talk.runLong(tr("Opening the window"), [&](const Progress &progress) {
        window.file = Document::open(m_files, path, theme, rule, progress);
        QString text = window.file.text();
        FormatXML(text);
        if (hasText)
            hasText(text);
        window.text = makeReady(text, progress);
    });
    return window;
}

void OpenDocument::show(ReadyWindow window)
{
    const QString path = window.file.path();
    if (path != m_document.path()) {
        emit leaving();
        m_frame.wb->beginDocument();
    }
    m_document = window.file;
    m_inFile = PackedText(m_document.text());
    m_document.setText({}); // see document()
    m_frame.setCaption(path);
    m_status.showCodePage(m_document.encoding().page);
    m_source.setText(std::move(window.text));
    m_talk.say(path);
    m_recovery->opened();
    watch();
    emit opened();
}

void OpenDocument::watch()
{
    // What is unsaved is kept by opening and offered again afterwards.
    m_outside.watch(QStringLiteral("document"),
                    {{m_document.path(), [this] { m_talk.run([this] { reload(); }); }}});
}

void OpenDocument::moved(const QString &path)
{
    m_document.setPath(path, QString(m_document.theme()));
    m_frame.setCaption(path);
    m_recovery->saved(); // what was kept is kept for the new name
    m_recovery->changed();
    watch();
}

void OpenDocument::save()
{
    const QString path = m_document.path();
    if (path.isEmpty()) {
        m_talk.tell(QStringLiteral("Simpan File"),
                    tr("No file is open: double-click a window on the Widget tab first."),
                    Talk::Icon::Information);
        return;
    }
    // The answer does not matter: saving has always meant saving, and the old file is in the backup folder.
    const QString text = textToSave(m_source.text());
    const WriteQuestion question = {QStringLiteral("Simpan File"),
                                    QStringLiteral("Benar mau menyimpan file?"),
                                    path,
                                    m_document.theme(),
                                    Files::Step::Save,
                                    text,
                                    m_document.encoding().rule};
    if (!askToWrite(m_files, m_talk, question, No::IsIgnored))
        return;
    m_document.save(m_files, text);
    m_document.setText({});
    m_source.document()->setModified(false);
    m_status.showCodePage(m_document.encoding().page);
    m_recovery->saved();
    const qsizetype indented = onlyIndented(std::exchange(m_inFile, PackedText(text)).text(), text);
    const QString saved = tr("%1 saved.").arg(path);
    m_talk.sayUntilEdit(indented == 0 ? saved : QString(saved + u' ' + indentedLinesText(indented)));
}

bool OpenDocument::mayClose(KeptRows &rows)
{
    QStringList problems = rows.keepAll();
    try {
        m_recovery->keepNow();
    } catch (const RunTimeError &error) {
        problems.prepend(error.message());
    }
    return problems.isEmpty() ||
           m_talk.ask(QStringLiteral("Quillmere"),
                      tr("%1\nLeave anyway, and lose what is not saved?").arg(problems.join(u'\n')));
}

} // namespace quillmere
