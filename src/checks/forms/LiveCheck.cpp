#include "checks/forms/LiveCheck.h"

#include "checks/Parallel.h"
#include "files/Memory.h"
#include "theme/forms/LiveIndex.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillmere {

namespace {

Q_LOGGING_CATEGORY(lcChecks, "quillmere.checks", QtInfoMsg)

constexpr int kPause = 1000; // ms after the last change, until the whole theme is checked again

const QString &pathOf(const IndexedFile &file)
{
    return file.found.isEmpty() ? file.path : file.found;
}

} // namespace

// All that one round of work needs, so that it asks nothing of the window.
struct LiveCheck::Work
{
    Extent extent = Extent::Nothing;
    ThemeSources sources;
    QString openFile, openBefore;
    std::shared_ptr<const ThemeIndex> index;
    std::shared_ptr<const ThemeFacts> facts;
    std::shared_ptr<const QList<Problem>> all;
    std::shared_ptr<PictureStore> pictures;
    QList<IgnoredRule> ignored;
    MeasuredTheme measured;
};

LiveCheck::LiveCheck(LiveIndex &index, PictureReader reader, QObject *parent)
    : QObject(parent), m_index(index), m_pictures(std::make_shared<PictureStore>(std::move(reader))),
      m_all(std::make_shared<const QList<Problem>>()), m_shown(m_all)
{
    m_worker.setMaxThreadCount(1);
    m_later.setSingleShot(true);
    connect(&m_later, &QTimer::timeout, this, [this] { start(Extent::Theme); });
    connect(&index, &LiveIndex::changed, this, &LiveCheck::indexChanged);
}

LiveCheck::~LiveCheck()
{
    m_stop.request_stop();
    m_worker.waitForDone();
}

bool LiveCheck::isBehind() const
{
    return m_openRevision != m_index.revision();
}

QList<Problem> LiveCheck::openProblems() const
{
    return isBehind() ? QList<Problem>() : m_open;
}

QList<Problem> LiveCheck::problemsAt(qsizetype position) const
{
    QList<Problem> there;
    for (const Problem &problem : openProblems()) {
        if (problem.range.holds(position))
            there.append(problem);
    }
    return there;
}

void LiveCheck::lookAgain()
{
    if (isReady())
        m_later.start(kPause);
}

QString LiveCheck::settingsKey() const
{
    const QFileInfo folder(m_folder);
    const QString path = folder.exists() ? folder.canonicalFilePath() : folder.absoluteFilePath();
    return QStringLiteral("check/ignored/") +
           QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

void LiveCheck::setIgnored(const QList<IgnoredRule> &ignored)
{
    m_ignored = ignored;
    QStringList texts;
    for (const IgnoredRule &each : ignored)
        texts.append(textOf(each));
    if (texts.isEmpty())
        QSettings().remove(settingsKey());
    else
        QSettings().setValue(settingsKey(), texts);
    start(Extent::Nothing);
    m_later.start(kPause); // that may have given up the check of the theme
}

void LiveCheck::setMeasures(std::shared_ptr<const TextMeasures> measures,
                            std::function<std::function<ReceiverTheme::Font(const QString &)>()> fonts)
{
    m_measures = std::move(measures);
    m_fonts = std::move(fonts);
    m_later.stop();
    start(Extent::Theme);
}

bool LiveCheck::isMeasured() const
{
    return m_measures && m_facts && m_facts->fit && m_facts->fit->measured.measures == m_measures;
}

void LiveCheck::indexChanged()
{
    m_stop.request_stop();
    const QString folder = m_index.folder();
    if (!m_index.index() || std::exchange(m_folder, folder) != folder) {
        m_later.stop();
        m_facts.reset();
        m_all = m_shown = std::make_shared<const QList<Problem>>();
        m_open.clear();
        m_counts = {};
        m_folder = folder;
        m_measures.reset();
        m_ignored.clear();
        for (const QString &text : QSettings().value(settingsKey()).toStringList()) {
            if (const std::optional<IgnoredRule> ignored = ignoredRule(text))
                m_ignored.append(*ignored);
        }
        emit changed();
    }
    if (!m_index.index())
        return;
    if (!isReady()) {
        start(Extent::Theme);
        return;
    }
    start(Extent::Window);
    m_later.start(kPause);
}

void LiveCheck::start(Extent extent)
{
    if (!m_index.index() || (extent != Extent::Theme && !isReady()))
        return;
    m_stop.request_stop();
    m_stop = {};
    auto work = std::make_shared<Work>(Work{extent,
                                            m_index.sources(),
                                            m_index.openFile(),
                                            m_openFile,
                                            m_index.sharedIndex(),
                                            m_facts,
                                            m_all,
                                            m_pictures,
                                            m_ignored,
                                            {}});
    if (m_measures && extent == Extent::Theme)
        work->measured = {m_fonts(), m_measures};
    const qint64 revision = m_index.revision();
    m_worker.start([this, work = std::move(work), revision, stop = m_stop.get_token()] {
        giveWay();
        const QString openFile = work->openFile;
        const auto found = std::make_shared<Found>(find(*work, stop));
        const auto hand = [this, found, revision, openFile] { finish(found, revision, openFile); };
        QMetaObject::invokeMethod(this, hand, Qt::QueuedConnection);
    });
}

// All problems, with those of a window's text as it is now in the place of those it had.
QList<Problem> LiveCheck::checkedAgain(const QList<Problem> &all, const IndexedFile &file, const Work &work,
                                       const std::stop_token &stop)
{
    const std::optional<QString> text = textOf(work.sources, file);
    if (!text || (file.role != FileRole::Window && file.role != FileRole::Style))
        return all;
    const auto first = std::ranges::lower_bound(all, pathOf(file), {}, &Problem::file);
    const auto last = std::ranges::upper_bound(all, pathOf(file), {}, &Problem::file);
    QList<Problem> now;
    // What is about the whole file is not found in its text.
    std::copy_if(first, last, std::back_inserter(now),
                 [](const Problem &each) { return each.range.isEmpty(); });
    now += checkWindow(Outline(*text), file, *work.index, *work.facts, stop);
    sortByPlace(now);
    QList<Problem> result;
    result.reserve(all.size() - (last - first) + now.size());
    std::copy(all.begin(), first, std::back_inserter(result));
    std::move(now.begin(), now.end(), std::back_inserter(result));
    std::copy(last, all.end(), std::back_inserter(result));
    return result;
}

LiveCheck::Found LiveCheck::find(Work &work, const std::stop_token &stop)
{
    Found found = {work.facts, work.all, {}, {}, {}, false};
    const auto fileAt = [&](const QString &path) {
        const QList<qint32> numbers = path.isEmpty() ? QList<qint32>() : work.index->numbersOf(path);
        return numbers.isEmpty() ? std::nullopt : std::optional(work.index->files().at(numbers.first()));
    };
    const std::optional<IndexedFile> open = fileAt(work.openFile);
    if (work.extent == Extent::Theme) {
        QElapsedTimer clock;
        clock.start();
        std::optional<CheckedTheme> checked =
            checkTheme(work.sources, *work.index, *work.pictures, stop, {}, work.measured);
        if (checked) {
            qCDebug(lcChecks) << checked->problems.size() << "problems in" << clock.elapsed() << "ms";
            found.facts = std::make_shared<const ThemeFacts>(std::move(checked->facts));
            found.all = std::make_shared<const QList<Problem>>(std::move(checked->problems));
        }
    } else if (work.extent == Extent::Window) {
        QList<Problem> all = *work.all;
        if (open)
            all = checkedAgain(all, *open, work, stop);
        // The text of the window before is that of its file again.
        if (const auto before = fileAt(work.openBefore); before && work.openBefore != work.openFile)
            all = checkedAgain(all, *before, work, stop);
        found.all = std::make_shared<const QList<Problem>>(std::move(all));
    }
    found.shown = work.ignored.isEmpty()
                      ? found.all
                      : std::make_shared<const QList<Problem>>(withoutIgnored(*found.all, work.ignored));
    for (const Problem &problem : *found.shown) {
        ++found.counts[size_t(problem.severity())];
        if (open && problem.file == pathOf(*open) && !problem.range.isEmpty())
            found.open.append(problem);
    }
    found.isStopped = stop.stop_requested();
    const bool isLarge = work.extent == Extent::Theme;
    work = Work(); // here, since it is not the window's thread that has to clear it away
    if (isLarge && found.isStopped)
        giveMemoryBack(); // else when what it replaces has gone
    return found;
}

void LiveCheck::finish(const std::shared_ptr<Found> &found, qint64 revision, const QString &openFile)
{
    if (found->isStopped || !m_index.index())
        return;
    m_open = std::move(found->open);
    m_openRevision = revision;
    m_openFile = openFile;
    m_counts = found->counts;
    // Many problems take their time to go, and so does what is known of many pictures.
    m_worker.start([isLarge = found->facts != m_facts, facts = std::exchange(m_facts, found->facts),
                    all = std::exchange(m_all, found->all),
                    shown = std::exchange(m_shown, found->shown)]() mutable {
        facts.reset();
        all.reset();
        shown.reset();
        if (isLarge)
            giveMemoryBack();
    });
    emit changed();
}

} // namespace quillmere
