#include "gallery/forms/PictureRun.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace quillmere {

namespace {

constexpr size_t kInHand = 4; // of each camera: one is drawn, one waits, and two are worked on
constexpr int kOnCamera = 2;

} // namespace

PictureRun::PictureRun(const QString &themeFolder, QSize size, const ThemePages &pages, int cameras)
    : m_loads(size_t(cameras))
{
    const auto mark = pages.areReceivers() ? PageCamera::Mark::Below : PageCamera::Mark::InPage;
    for (int i = 0; i < cameras; ++i) {
        m_cameras.push_back(std::make_unique<PageCamera>(themeFolder, size, mark));
        m_cameras.back()->setFonts(pages.fonts());
    }
}

PictureRun::~PictureRun()
{
    m_workers.waitForDone();
}

void PictureRun::run(const std::function<std::optional<PictureJob>()> &next)
{
    m_next = next;
    feed();
    if (!m_inHand.empty())
        m_loop.exec();
}

void PictureRun::feed()
{
    while (m_next && m_inHand.size() < kInHand * m_cameras.size() &&
           *std::ranges::min_element(m_loads) < kOnCamera) {
        if (const std::optional<PictureJob> job = m_next())
            begin(*job);
        else
            m_next = nullptr;
    }
}

void PictureRun::begin(const PictureJob &job)
{
    const qint64 number = m_first + qint64(m_inHand.size());
    m_inHand.emplace_back();
    const auto hand = [this, number, work = job.work](const QImage &picture) {
        m_workers.start([this, number, work, picture] {
            QMetaObject::invokeMethod(
                &m_thread, [this, number, then = work(picture)] { finish(number, then); },
                Qt::QueuedConnection);
        });
    };
    if (job.page.isEmpty()) {
        hand({});
        return;
    }
    const size_t camera = size_t(std::ranges::min_element(m_loads) - m_loads.begin());
    ++m_loads[camera];
    m_cameras[camera]->take(job.page, [this, camera, hand](const QImage &picture) {
        --m_loads[camera];
        hand(picture);
        feed();
    });
}

void PictureRun::finish(qint64 number, const std::function<void()> &then)
{
    InHand &own = m_inHand[size_t(number - m_first)];
    own.isDone = true;
    own.then = then;
    while (!m_inHand.empty() && m_inHand.front().isDone) {
        const auto first = std::move(m_inHand.front().then);
        m_inHand.pop_front();
        ++m_first;
        first();
    }
    feed();
    if (m_inHand.empty())
        m_loop.quit();
}

} // namespace quillmere
