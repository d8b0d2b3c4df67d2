#include "theme/forms/LiveIndex.h"

#include "files/Files.h"
#include "files/Paths.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLoggingCategory>

#include <utility>

namespace quillmere {

namespace {
Q_LOGGING_CATEGORY(lcIndex, "quillmere.index", QtInfoMsg)
}

// All that one round of work needs, so that it asks nothing of the window.
struct LiveIndex::Work
{
    ThemeSources sources;
    std::shared_ptr<const ThemeIndex> before;
    std::shared_ptr<const Stamps> stamps;
    QSet<QString> late;
    QString openFile;
    qint64 revision = 0;
    bool isAnew = false, looks = false;
};

LiveIndex::LiveIndex(ThemeProject &theme, SourceBox &source, Files &files, std::function<QString()> openFile,
                     QObject *parent)
    : QObject(parent), m_theme(theme), m_source(source), m_openFile(std::move(openFile)),
      m_pause(
          0, [this] { start(); }, {}, this)
{
    m_worker.setMaxThreadCount(1);
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &LiveIndex::start);
    connect(&theme, &ThemeProject::loaded, this, &LiveIndex::themeLoaded);
    connect(&source, &SourceBox::changed, this, &LiveIndex::textChanged);
    for (const RowsDocument *document :
         {&theme.images.document, &theme.colours.document, &theme.language.document}) {
        const auto note = [this, document] {
            m_late.insert(document->path());
            m_soon.start();
        };
        connect(&document->rows(), &ListRows::edited, this, note);
        connect(&document->rows(), &ListRows::modelReset, this, note);
    }
    files.onWritten(this, [this](const QString &path) { fileWritten(path); });
}

LiveIndex::~LiveIndex()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

const Outline &LiveIndex::outline()
{
    if (m_outline.revision() != revision())
        m_outline = Outline(m_source.text(), revision());
    return m_outline;
}

bool LiveIndex::isOutlineComing() const
{
    const bool isAtWork = m_running || m_soon.isActive() || m_pause.isWaiting();
    return isAtWork && !isOutlined() && !m_folder.isEmpty() && !m_openFile().isEmpty();
}

qint64 LiveIndex::revision() const
{
    return m_source.revision();
}

ThemeSources LiveIndex::sources() const
{
    ThemeSources sources;
    sources.folder = m_theme.folder();
    sources.rule = m_theme.rule;
    if (const QString path = m_openFile(); !path.isEmpty())
        sources.texts.insert(path, m_source.text());
    for (const RowsDocument *document :
         {&m_theme.images.document, &m_theme.colours.document, &m_theme.language.document}) {
        if (document->isEdited() && !document->path().isEmpty())
            sources.rows.insert(document->path(), document->rows().rows());
    }
    return sources;
}

void LiveIndex::lookAgain()
{
    m_looks = true;
    m_soon.start();
}

void LiveIndex::themeLoaded()
{
    m_isAnew = true;
    m_stop.request_stop();
    m_soon.start();
    if (std::exchange(m_folder, m_theme.folder()) == m_folder)
        return;
    m_index.reset();
    m_inHand.clear();
    emit changed();
}

// While keys come, nothing of this is done; the page of the window waits as long.
void LiveIndex::textChanged()
{
    m_late.insert(m_openFile());
    if (m_source.isTyping())
        m_pause.changed(0, LateWork::Wait::Always);
    else
        m_soon.start();
}

// A file that the index does not know may be a new window, or one that a link leads to.
void LiveIndex::fileWritten(const QString &path)
{
    if (!m_index)
        return;
    if (m_index->numbersOf(path).isEmpty() || !QFileInfo::exists(path))
        m_looks = true;
    else
        m_late.insert(path);
    m_soon.start();
}

void LiveIndex::start()
{
    m_pause.forget();
    m_soon.stop();
    if (m_folder.isEmpty())
        return;
    if (m_running) {
        m_again = true;
        return;
    }
    auto work = std::make_shared<Work>();
    work->sources = sources();
    work->before = m_index;
    work->stamps = m_stamps;
    work->openFile = m_openFile();
    work->revision = revision();
    work->isAnew = std::exchange(m_isAnew, false) || !m_index;
    work->looks = std::exchange(m_looks, false);
    QSet<QString> inHand;
    for (const QStringList &paths : {work->sources.texts.keys(), work->sources.rows.keys()})
        inHand += QSet(paths.begin(), paths.end());
    // What is no longer open or unsaved counts as its file has it again.
    work->late = std::exchange(m_late, {}) | (m_inHand - inHand);
    m_inHand = inHand;
    m_running = true;
    m_again = false;
    m_stop = {};
    m_worker.start([this, work = std::move(work), stop = m_stop.get_token()] {
        const auto made = std::make_shared<Made>(make(*work, stop));
        QMetaObject::invokeMethod(
            this, [this, made] { finish(made); }, Qt::QueuedConnection);
    });
}

LiveIndex::Stamps LiveIndex::stampsOf(const ThemeIndex &index)
{
    Stamps stamps;
    const auto add = [&](const QString &path) {
        const QFileInfo info(path);
        stamps.insert(path, {info.lastModified(), info.size()});
    };
    for (const IndexedFile &file : index.files()) {
        const QString &path = file.found.isEmpty() ? file.path : file.found;
        add(path);
        if (const QString folder = folderOf(path).toString(); !stamps.contains(folder))
            add(folder);
    }
    return stamps;
}

LiveIndex::Made LiveIndex::make(Work &work, const std::stop_token &stop)
{
    Made made = {work.before, work.stamps, {}, false};
    bool isAnew = work.isAnew;
    if (!isAnew && work.looks && work.stamps)
        isAnew = stampsOf(*work.before) != *work.stamps;
    if (!isAnew && !work.late.isEmpty()) {
        auto index = std::make_shared<ThemeIndex>(*work.before);
        for (const QString &path : std::as_const(work.late)) {
            const QList<qint32> numbers = index->numbersOf(path);
            if (numbers.isEmpty())
                continue;
            const IndexedFile &file = index->files().at(numbers.first());
            const auto rows = work.sources.rows.constFind(file.path);
            const bool isOther = rows != work.sources.rows.constEnd()
                                     ? index->update(path, *rows)
                                     : index->update(path, textOf(work.sources, file).value_or(QString()));
            isAnew = isAnew || isOther;
            made.isOther = true;
        }
        made.index = std::move(index);
    }
    if (isAnew) {
        QElapsedTimer clock;
        clock.start();
        std::optional<ThemeIndex> index = ThemeIndex::build(work.sources, stop);
        if (!index)
            return {};
        qCDebug(lcIndex) << "index of" << index->files().size() << "files in" << clock.elapsed() << "ms";
        made.index = std::make_shared<const ThemeIndex>(std::move(*index));
        made.stamps = std::make_shared<const Stamps>(stampsOf(*made.index));
        made.isOther = true;
    }
    if (!work.openFile.isEmpty())
        made.outline = Outline(work.sources.texts.value(work.openFile), work.revision);
    work = {}; // here, since it is not the window's thread that has to clear it away
    return made;
}

void LiveIndex::finish(const std::shared_ptr<Made> &made)
{
    m_running = false;
    if (m_stop.stop_requested() || !made->index) {
        start();
        return;
    }
    if (made->outline.revision() == revision() && m_outline.revision() != revision() &&
        !made->outline.text().isEmpty())
        m_outline = std::move(made->outline);
    m_stamps = std::move(made->stamps);
    // A whole index takes its time to go.
    m_worker.start([before = std::exchange(m_index, std::move(made->index))]() mutable { before.reset(); });
    const bool isOther = made->isOther;
    if (m_again)
        start();
    if (isOther)
        emit changed();
    if (!isOutlineComing())
        emit outlined();
}

} // namespace quillmere
