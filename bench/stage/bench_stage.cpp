// Work in the picture, in the real window: from the pointer to the outline, from a step of a drag to the
// picture as the browser has drawn it, and from a selection elsewhere to the outline.
//
//   QT_QPA_PLATFORM=offscreen bench_stage [BLOCKS...]

#include "BenchWindow.h"

#include "stage/forms/Picture.h"
#include "stage/forms/StageOverlay.h"

#include <QAction>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QMouseEvent>
#include <QTabBar>
#include <QTextStream>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>

using namespace quillmere;

namespace {

constexpr int kSteps = 100;
constexpr int kWarm = 10; // and these before, which do not count

class Bench : public QObject
{
public:
    explicit Bench(const QTemporaryDir &folder) : m_folder(folder), m_window(folder)
    {
        m_window.find<QTabBar>("TabStrip4")->setCurrentIndex(8);
        m_window.find<QAction>("mnuWwbZ2")->trigger(); // 100 %
        m_picture->overlay->installEventFilter(this);
        connect(&m_patience, &QTimer::timeout, this, [this] { qFatal("Nothing comes of \"%s\"", m_what); });
        connect(m_wb, &QWebEngineView::titleChanged, this, [this](const QString &title) {
            if (m_isDragging && title.startsWith(u"frame"))
                m_loop.quit();
        });
        connect(m_stage, &Stage::placesChanged, this, [this] {
            if (m_waitsForPlaces)
                m_loop.quit();
        });
    }

    void run(int blocks)
    {
        const QString path = m_folder.filePath(QStringLiteral("w%1.xml").arg(blocks));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(windowOf(blocks, QString()).toUtf8()) < 0)
            qFatal("%s cannot be written", qPrintable(path));
        file.close();
        m_window.skin().openDocument(path, QString());
        m_what = "places";
        waitForPlaces();
        QTextStream out(stdout);
        out << blocks << " blocks\n";
        out << "  pointer to outline          " << spread(hovers()) << "\n";
        out << "  selected elsewhere, to outline " << spread(selections(blocks)) << "\n";
        out << "  step of a drag to picture   " << spread(drag()) << ", most " << m_most << " ms" << Qt::endl;
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && m_waitsForPaint)
            QTimer::singleShot(0, &m_loop, &QEventLoop::quit); // painting is done then
        return false;
    }

private:
    void waitForPlaces()
    {
        m_waitsForPlaces = true;
        if (!m_stage->places())
            wait();
        m_waitsForPlaces = false;
    }
    void wait()
    {
        m_patience.start(20000);
        m_loop.exec();
        m_patience.stop();
    }
    template <typename Work>
    double untilPainted(Work work)
    {
        QElapsedTimer clock;
        clock.start();
        m_waitsForPaint = true;
        work();
        wait();
        m_waitsForPaint = false;
        return double(clock.nsecsElapsed()) / 1e6;
    }
    void mouse(QEvent::Type type, QPoint at)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, m_wb->mapToGlobal(at), button, button, Qt::NoModifier);
        QApplication::sendEvent(m_wb, &event);
    }
    QList<double> hovers()
    {
        m_what = "the pointer";
        QList<double> times;
        for (int i = 0; i < kSteps; ++i)
            times.append(untilPainted([&] {
                mouse(QEvent::MouseMove, {i % 20 * 30 + 5, 10 + i / 20 * 17});
            }));
        return times;
    }
    QList<double> selections(int blocks)
    {
        m_what = "a selection";
        QList<double> times;
        for (int i = 0; i < kSteps; ++i)
            times.append(untilPainted(
                [&] { m_stage->select({1 + (i * 7) % std::min(blocks, 150)}, Stage::By::Source); }));
        return times;
    }
    QList<double> drag()
    {
        m_what = "a drag";
        mouse(QEvent::MouseButtonPress, {5, 10});
        mouse(QEvent::MouseButtonRelease, {5, 10});
        mouse(QEvent::MouseButtonPress, {5, 10});
        watchFrames();
        QList<double> times;
        for (int i = 0; i < kWarm + kSteps; ++i) {
            QElapsedTimer clock;
            clock.start();
            m_isDragging = true;
            mouse(QEvent::MouseMove, {35 + i * 17 % 700, 30 + i * 13 % 300});
            wait();
            m_isDragging = false;
            if (i >= kWarm)
                times.append(double(clock.nsecsElapsed()) / 1e6);
            for (int later = 0; later < 20; ++later)
                QApplication::processEvents();
        }
        m_most = *std::ranges::max_element(times);
        m_picture->gestures.cancel();
        mouse(QEvent::MouseButtonRelease, {5, 10});
        waitForPlaces();
        return times;
    }
    // Asking for a frame once the step is written would come too late for the one that has the step in it,
    // and the next one has nothing new and waits for a tick.
    void watchFrames()
    {
        m_wb->page()->runJavaScript(
            QStringLiteral(
                "(function(){var n=0;if(window.frames_)window.frames_.disconnect();"
                "window.frames_=new MutationObserver(function(all){"
                "if(!all.some(function(m){return document.body.contains(m.target);}))return;"
                "requestAnimationFrame(function(){var c=new MessageChannel();"
                "c.port1.onmessage=function(){document.title='frame '+(++n);};"
                "c.port2.postMessage(0);});});"
                "window.frames_.observe(document,{subtree:true,childList:true,characterData:true});})()"),
            QWebEngineScript::ApplicationWorld);
    }

    const QTemporaryDir &m_folder;
    BenchWindow m_window;
    WebBrowser *m_wb = m_window.find<WebBrowser>("wb");
    Picture *m_picture = m_window.skin().findChild<Picture *>();
    Stage *m_stage = m_window.skin().findChild<Stage *>();
    QEventLoop m_loop;
    QTimer m_patience;
    const char *m_what = "";
    double m_most = 0;
    bool m_waitsForPlaces = false, m_waitsForPaint = false, m_isDragging = false;
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    QApplication app(argc, argv);
    QStringList counts = app.arguments().mid(1);
    if (counts.isEmpty())
        counts = {QStringLiteral("200"), QStringLiteral("2000")};
    Bench bench(folder);
    for (const QString &count : counts)
        bench.run(count.toInt());
}
