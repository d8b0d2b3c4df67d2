// What the Lang tab takes with the 20,000 strings of a theme of make_theme: a key in the filter, the choices
// above the list, the next string without a translation, another row in the panel, and suggestions for it,
// which are looked for beside the window's thread; and comparing the languages of the theme. It is the work
// of the window's thread, drawing included: the longest stretch of it, for which a key would wait, and all.
// Suggestions take what the clock says.
//
//   QT_QPA_PLATFORM=offscreen bench_strings THEME [LANGUAGE]

#include "BenchWindow.h"
#include "Measured.h"

#include "controls/ListView.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTabBar>
#include <QTextStream>
#include <QToolButton>

using namespace quillmere;

namespace {

constexpr int kRounds = 30;

class Bench
{
public:
    explicit Bench(const BenchWindow &window) : m_window(window), m_list(*window.find<ListView>("LvBhs")) {}

    void run(const QString &theme, int language)
    {
        m_window.skin().openTheme(theme);
        m_window.find<QTabBar>("TabStrip4")->setCurrentIndex(4);
        settle();
        auto *languages = m_window.find<ListView>("lvLang");
        languages->setCurrentIndex(languages->model()->index(language, 0));
        m_window.find<QAction>("mnuLangOpen")->trigger();
        settle(100); // the theme is checked meanwhile
        m_out << m_list.model()->rowCount() << " strings\n";
        filter();
        choices();
        next();
        rows();
        compare();
    }

private:
    static void settle(int rounds = 10)
    {
        for (int i = 0; i < rounds; ++i)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    template <typename Do>
    void work(Do what)
    {
        const double begin = workOfThread();
        double before = begin, longest = 0;
        what();
        for (int i = 0; i < 10; ++i) {
            QApplication::processEvents();
            const double now = workOfThread();
            longest = std::max(longest, now - std::exchange(before, now));
        }
        m_stretches.append(longest);
        m_all.append(before - begin);
    }
    void print(const char *what)
    {
        m_out << what << ":\n    a key waits " << spread(std::exchange(m_stretches, {}))
              << "\n    in all      " << spread(std::exchange(m_all, {})) << '\n';
    }

    void filter()
    {
        m_window.find<QAction>("mnuFind")->trigger();
        settle();
        auto *box = m_window.find<QLineEdit>("txtFilterLvBhs");
        for (int round = 0; round < kRounds; ++round) {
            for (const char *text : {"s", "st", "st1", "st12", "st1", "st", "s", ""})
                work([&] { box->setText(QLatin1String(text)); });
        }
        print("a key in the filter");
    }

    void choices()
    {
        for (int round = 0; round < kRounds; ++round) {
            for (const char *name : {"cmdStrings(1)", "cmdStrings(0)", "cmdStrings(2)", "cmdStrings(0)"}) {
                auto *button = m_window.find<QToolButton>(name);
                work([&] { button->click(); });
            }
        }
        print("another choice");
    }

    void next()
    {
        for (int round = 0; round < kRounds; ++round) {
            m_list.setCurrentIndex(m_list.model()->index(0, 0));
            settle();
            work([&] { m_window.find<QAction>("mnuLangNext")->trigger(); });
        }
        print("next untranslated, from the first row");
    }

    void rows()
    {
        QList<double> shown;
        auto *suggestions = m_window.find<ListView>("lvSuggestions");
        for (int round = 0; round < kRounds; ++round) {
            bool isThere = false;
            const auto told = QObject::connect(suggestions->model(), &QAbstractItemModel::rowsInserted,
                                               [&isThere] { isThere = true; });
            QElapsedTimer clock;
            clock.start();
            const int row = (round + 1) * 601 % m_list.model()->rowCount();
            work([&] { m_list.setCurrentIndex(m_list.model()->index(row, 0)); });
            while (!isThere && clock.elapsed() < 1000)
                QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
            if (isThere)
                shown.append(double(clock.nsecsElapsed()) / 1e6);
            QObject::disconnect(told);
            settle();
        }
        print("another row in the panel");
        if (!shown.isEmpty())
            m_out << "its suggestions, shown: " << spread(shown) << '\n';
    }

    static QWidget *dialog()
    {
        for (QWidget *each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"frmCompareLanguages")
                return each;
        }
        qFatal("There is no frmCompareLanguages");
    }

    // Opened anew, a language more or less beside the others, and a key in its filter.
    void compare()
    {
        QAction *open = m_window.find<QAction>("mnuLangCompare");
        for (int round = 0; round < kRounds; ++round) {
            work([&] { open->trigger(); });
            dialog()->close();
            settle(2);
        }
        print("compare languages, opened");
        open->trigger();
        settle();
        QAbstractItemModel &languages =
            *dialog()->findChild<ListView *>(QStringLiteral("lvCompareLanguages"))->model();
        for (int round = 0; round < 2 * kRounds; ++round)
            work([&] {
                languages.setData(languages.index(1, 0), round % 2 ? Qt::Checked : Qt::Unchecked,
                                  Qt::CheckStateRole);
            });
        print("a column less or more");
        auto *box = dialog()->findChild<QLineEdit *>(QStringLiteral("txtCompareFilter"));
        for (int round = 0; round < kRounds; ++round) {
            for (const char *text : {"s", "st", "st1", "st", "s", ""})
                work([&] { box->setText(QLatin1String(text)); });
        }
        print("a key in its filter");
    }

    const BenchWindow &m_window;
    ListView &m_list;
    QTextStream m_out{stdout};
    QList<double> m_stretches, m_all;
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    QApplication app(argc, argv);
    if (app.arguments().size() < 2)
        qFatal("bench_strings THEME [LANGUAGE]");
    const BenchWindow window(folder);
    Bench(window).run(app.arguments().at(1), app.arguments().value(2).toInt());
}
