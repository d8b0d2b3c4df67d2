// What a list of 20,000 rows takes for a key in its filter, and to be sorted: work of this thread, drawing
// included, so that a busy machine does not count.
//
//   QT_QPA_PLATFORM=offscreen bench_lists

#include "controls/ListFilter.h"
#include "controls/ListView.h"
#include "rows/ListRows.h"

#include <QApplication>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTextStream>

#include <algorithm>
#include <ctime>

using namespace quillmere;

namespace {

constexpr int kRows = 20'000;

// ms
double worked()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

class Bench
{
public:
    Bench()
        : m_rows({QStringLiteral("Nama"), QStringLiteral("Status"), QString()}, ListRows::Checks::Yes),
          m_list(QStringLiteral("lvImage"), QStringLiteral("Images"), m_rows, &m_frame), m_filter(m_list)
    {
        QRandomGenerator random(1);
        QList<ListRows::Row> rows;
        for (int row = 0; row < kRows; ++row) {
            const QString name = QStringLiteral("button_%1_%2").arg(random.bounded(kRows)).arg(row % 7);
            rows.append({QString(u"/home/somebody/themes/aurora/theme/images/glass/" + name + u".png"),
                         {name, QStringLiteral("Y")}});
        }
        m_rows.assign(rows);
        m_frame.resize(460, 900);
        m_list.setGeometry(0, 0, 460, 900);
        m_list.setColumnShares({10, 8, 1});
        m_frame.show();
        time(QStringLiteral("the list comes"), [] {});
    }

    // The first figure is the longest stretch in which no key is handled.
    template <typename Work>
    void time(const QString &what, Work work)
    {
        double longest = 0, before = worked();
        const double begin = before;
        const auto stretch = [&] {
            longest = std::max(longest, worked() - before);
            before = worked();
        };
        work();
        for (int i = 0; i < 20; ++i) {
            QApplication::processEvents();
            stretch();
        }
        QTextStream(stdout)
            << QStringLiteral("%1 ms, %2 in all: ").arg(longest, 8, 'f', 1).arg(worked() - begin, 8, 'f', 1)
            << what << Qt::endl;
    }
    void filter()
    {
        time(QStringLiteral("the filter comes"), [&] { m_filter.open(); });
        auto *box = m_filter.findChild<QLineEdit *>();
        for (const QChar key : QStringLiteral("button_12_3"))
            time(u"key " + key, [&] { box->insert(key); });
        for (int i = 0; i < 11; ++i)
            time(QStringLiteral("backspace"), [&] { box->backspace(); });
    }
    void sort(bool stays = false)
    {
        time(QStringLiteral("sort up"), [&] { m_list.sortBy(1, Qt::AscendingOrder); });
        time(QStringLiteral("sort down"), [&] { m_list.sortBy(1, Qt::DescendingOrder); });
        if (!stays)
            time(QStringLiteral("file order"), [&] { m_list.sortBy(-1, Qt::AscendingOrder); });
    }

private:
    ListRows m_rows;
    QWidget m_frame;
    ListView m_list;
    ListFilter m_filter;
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    Bench bench;
    bench.sort();
    bench.filter();
    bench.sort(true);
    bench.filter();
    return 0;
}
