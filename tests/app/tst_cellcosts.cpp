#include "app/CellTest.h"
#include "app/PageOfMarkup.h"

#include "commands/forms/RenderCommand.h"
#include "commands/forms/SheetCommand.h"

#include <QElapsedTimer>

#include <csignal>

#include <sys/stat.h>

using namespace quillmere;

namespace {

// The processor time a process has had, in hundredths of a second.
int workOf(qint64 process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = file.readAll().split(')').last().split(' ');
    return fields.value(12).toInt() + fields.value(13).toInt();
}

} // namespace

// Pages that take the renderer too long, or end it.
class TestCellCosts : public CellTest
{
    Q_OBJECT

private slots:
    void init() { begin(); }

    void deaths()
    {
        open("<widget name=\"lives\"><property></property></widget>");
        for (int death = 1; death <= 4; ++death) {
            QVERIFY(shows("lives") && !says("stopped"));
            QSignalSpy written(m_wb, &WebBrowser::written);
            QSignalSpy failed(m_wb, &WebBrowser::failed);
            QCOMPARE(::kill(pid_t(m_wb->page()->renderProcessPid()), SIGKILL), 0);
            QVERIFY(death < 4 ? written.wait(10000) : failed.wait(10000));
        }
        QVERIFY(says("stopped"));
        m_window->source()->setText(u"<widget name=\"again\"><property>"_s);
        QVERIFY(shows("again"));
    }

    void hang()
    {
        auto *source = m_window->source();
        m_window->turnTo(8);
        source->setFocus();
        open("<widget name=\"one\"><property></property></widget>");
        QVERIFY(shows("one"));
        const auto hung = pid_t(m_wb->page()->renderProcessPid());
        QCOMPARE(::kill(hung, SIGSTOP), 0);
        const auto end = qScopeGuard([hung] { ::kill(hung, SIGKILL); });
        QSignalSpy failed(m_wb, &WebBrowser::failed);
        source->setText(u"<widget name=\"two\"><property>"_s);
        QVERIFY(m_wb->isBusy());
        m_wb->setPatience(0); // it has come to its end
        QVERIFY(failed.wait(20000));
        m_wb->setPatience(60000);
        QVERIFY(says("behind"));
        source->setText(u"<widget name=\"three\"><property>"_s);
        QVERIFY(shows("three"));
        QVERIFY(source->hasFocus());
    }

    void costs_data()
    {
        QTest::addColumn<QByteArray>("markup");
        QTest::addColumn<bool>("tooLarge");
        const auto row = [](const char *name, bool tooLarge, const QByteArray &markup) {
            QTest::newRow(name) << QByteArray("<widget name=\"w\"><property></property>" + markup)
                                << tooLarge;
        };
        row("too deep", true, QByteArray("<div>").repeated(2000000));
        row("too long", true, "<widget name=\"" + QByteArray("a{}").repeated(3 << 20) + "\"></widget>");
        row("deep", false, QByteArray("<div>").repeated(280000));
        row("one name", false,
            QByteArray("<widget name=\"w\"><property></property></widget>").repeated(10000));
        row("motion", false,
            "<style>@keyframes k{to{transform:rotate(1turn)}}b{animation:k 1s "
            "infinite;position:absolute;width:"
            "500px;height:500px;background:red;filter:blur(20px)}</style>" +
                QByteArray("<b>x</b>").repeated(3000));
    }

    void costs()
    {
        QFETCH(const QByteArray, markup);
        QFETCH(const bool, tooLarge);
        open("<widget name=\"before\"><property></property></widget>");
        QVERIFY(shows("before"));
        // Not by way of the source box, which needs its own time for so many lines.
        const QString page = pageOfMarkup(QString::fromUtf8(markup));
        const QString next = pageOfMarkup(u"<widget name=\"after\"><property></property></widget>"_s);
        const qint64 renderer = m_wb->page()->renderProcessPid();
        qint64 longest = 0;
        QElapsedTimer whole, sinceTick;
        QTimer tick;
        connect(&tick, &QTimer::timeout, this, [&] { longest = std::max(longest, sinceTick.restart()); });
        tick.start(1);
        whole.start();
        sinceTick.start();
        m_wb->setPatience(60000);
        QSignalSpy written(m_wb, &WebBrowser::written);
        const int before = workOf(renderer);
        m_wb->write(page);
        // What is in its way must have begun.
        const auto isAtWork = [&] {
            return says("too large") || !written.isEmpty() || workOf(renderer) > before + 10;
        };
        QVERIFY(waitFor(isAtWork, 10000));
        QCOMPARE(says("too large"), tooLarge);
        m_wb->write(next);
        m_wb->setPatience(0); // and it has come to its end
        QVERIFY(waitFor([this] { return !m_wb->isBusy(); }, 30000));
        QVERIFY(shows("after"));
        qInfo("The program was held up for %lld ms at most; next page after %lld ms", longest,
              whole.elapsed());
        QVERIFY(longest < 1500);
        const auto isGone = [renderer] { return ::kill(pid_t(renderer), 0) != 0; };
        QVERIFY(m_wb->page()->renderProcessPid() == renderer || waitFor(isGone, 10000));
    }

    void render()
    {
        const std::pair<QByteArray, QByteArray> documents[] = {
            {"attempts", widgets(attemptsBelow("inside"))},
            {"deep", "<widget name=\"w\">" + QByteArray("<div>").repeated(280000)},
            {"refresh", widgets(attemptsBelow("alone").mid(1, 2))},
            {"motion",
             "<widget name=\"w\"><property></property><style>@keyframes k{to{transform:rotate(1turn)}}"
             "b{animation:k 1s infinite}</style><b>x</b>"},
            {"pipe", widgets(attemptsBelow("no pictures").mid(1, 1))},
            {"red", widgets(attemptsBelow("pictures").first(1))}};
        QByteArray catalogue;
        for (const auto &[name, text] : documents) {
            catalogue += "<widget class=\"window\" name=\"" + name + "\"/>";
            write(QByteArray("theme/" + name + ".xml").constData(), text);
        }
        QVERIFY(QFile::link(u"/dev/full"_s, path("theme/device.xml")));
        catalogue += "<widget class=\"window\" name=\"device\"/>";
        write("theme/widget.xml", catalogue);
        write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        QCOMPARE(::mkfifo(qPrintable(path("theme/pipe.png")), 0600), 0);
        CommandLine line;
        line.theme = path("theme");
        line.out = path("out");
        QString said, complaints;
        QTextStream out(&said), err(&complaints);
        // The patience ends when the renderer is at work on what takes it too long, and not before.
        int before = -1;
        QTimer tick;
        connect(&tick, &QTimer::timeout, this, [&] {
            const bool isDeep = said.contains(u"[1/") && complaints.isEmpty();
            for (QWidget *top : QApplication::topLevelWidgets()) {
                auto *wb = qobject_cast<WebBrowser *>(top);
                if (!wb)
                    continue;
                const int work = workOf(wb->page()->renderProcessPid());
                before = isDeep && before < 0 ? work : before;
                wb->setPatience(isDeep && work > before + 10 ? 0 : 60000);
            }
        });
        tick.start(20);
        QCOMPARE(renderWindows(line, out, err), 1);
        QVERIFY(complaints.contains(u"deep: the browser did not draw it"_s));
        QVERIFY(complaints.contains(
            u"device: Cannot read \"%1\": it is not a regular file."_s.arg(path("theme/device.xml"))));
        QCOMPARE(QDir(path("out")).entryList(QDir::Files).join(u' '),
                 u"attempts.png motion.png pipe.png red.png refresh.png"_s);
        QCOMPARE(QImage(path("out/red.png")).pixelColor(20, 20), QColor(Qt::red));
        tick.stop();
        line.receiver = true;
        line.jobs = 2;
        QCOMPARE(renderWindows(line, out, err), 1);
        line.out = path("sheet.html");
        QCOMPARE(writeSheet(line, out, err), 1);
        QCOMPARE(m_outside.connections, 0);
    }
};

WINDOW_TEST_MAIN(TestCellCosts)
#include "tst_cellcosts.moc"
