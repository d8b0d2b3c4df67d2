// From a key in the source to its page, in the real window: with the page changed where it differs, and with
// the page written anew, ten keys and ten keys in turn: what one way leaves behind, thousands of elements to
// be cleared away, is not to be paid for by the other. "written" is when the browser has the document,
// "painted" when it has made the first frame with it, "shown" when our window has painted that frame. "work"
// is what the window's thread and that of the browser's renderer did until then, which says something on a
// busy machine, too.
//
//   QT_QPA_PLATFORM=offscreen bench_keys [--receiver] [BLOCKS...]

#include "BenchWindow.h"

#include "source/forms/SourceBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QKeyEvent>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QSettings>
#include <QTabBar>
#include <QTextStream>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>

#include <utility>

using namespace quillmere;

namespace {

constexpr int kRounds = 5; // of both ways; the first does not count
constexpr int kKeys = 10;  // of each way in a round
constexpr int kWarm = 3;   // and these before, which do not count

QByteArray windowOf(int blocks)
{
    QByteArray text = "<interface>\r\n<widget class=\"window\" style=\"default\" name=\"screen\"><property>"
                      "<rect>[0,0,1280,720]</rect></property><children>\r\n";
    for (int block = 0; block < blocks; ++block) {
        const QByteArray number = QByteArray::number(block);
        text += "    <widget class=\"text\" style=\"default\" name=\"block_" + number +
                "\">\r\n        <property>\r\n            <rect>[" + QByteArray::number(block % 40 * 30) +
                "," + QByteArray::number(block / 40 % 40 * 17) +
                ",120,40]</rect>\r\n            <backcolor>[navy,navy,gray]</backcolor>\r\n"
                "            <forecolor>[white,white,gray]</forecolor>\r\n            <string>text " +
                number +
                "</string>\r\n            <alignment>hcentre|vcentre</alignment>\r\n"
                "        </property>\r\n    </widget>\r\n";
    }
    return text + "</children></widget>\r\n</interface>\r\n";
}

struct Times
{
    QList<double> written, painted, shown, work, rendererWork;
};

// The processor time that the first thread of a process has had, ms.
double workOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/task/%1/schedstat").arg(process));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(0).toDouble() / 1e6 : 0;
}

// Every script that changes or writes the page ends by numbering it.
const QString kTellPainted = QStringLiteral(
    "(function(){var page=window.__page,key=0;Object.defineProperty(window,'__page',{configurable:true,"
    "get(){return page;},set(n){page=n;requestAnimationFrame(function(){var c=new MessageChannel();"
    "c.port1.onmessage=function(){if(n==page)document.title='#'+(++key);};c.port2.postMessage(0);});}});})("
    ")");

class Bench : public QObject
{
public:
    explicit Bench(const QTemporaryDir &folder) : m_folder(folder), m_window(folder)
    {
        m_window.find<QTabBar>("TabStrip4")->setCurrentIndex(8);
        m_source->setFocus();
        QObject::connect(&m_patience, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        QObject::connect(&m_settled, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        m_settled.setSingleShot(true);
        m_settled.setInterval(40);
        QObject::connect(m_wb, &WebBrowser::written, m_wb, [this] { note(m_written); });
        QObject::connect(m_wb, &QWebEngineView::titleChanged, m_wb, [this](const QString &title) {
            if (title.startsWith(u'#'))
                note(m_painted);
        });
    }

    void run(int blocks)
    {
        const QString path = m_folder.filePath(QStringLiteral("w%1.xml").arg(blocks));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(windowOf(blocks)) < 0)
            qFatal("%s cannot be written", qPrintable(path));
        file.close();
        m_isTelling = false;
        waitForPage([&] { m_window.skin().openDocument(path); });
        watchFrames();
        m_wb->page()->runJavaScript(kTellPainted, QWebEngineScript::ApplicationWorld);
        m_isTelling = true;
        const QString place = QStringLiteral("<string>text %1").arg(blocks / 2);
        m_source->select(m_source->text().indexOf(place) + place.size(), 0);
        Times patched, anew;
        for (int round = 0; round < kRounds; ++round) {
            for (const bool patching : {true, false}) {
                m_wb->setPatching(patching);
                for (int key = -kWarm; key < kKeys; ++key) {
                    press();
                    if (round > 0 && key >= 0)
                        take(patching ? patched : anew);
                }
            }
        }
        QTextStream(stdout) << blocks << " blocks\n";
        print("changed where it differs", patched);
        print("written anew", anew);
    }

private:
    void take(Times &times) const
    {
        times.written.append(m_written);
        times.painted.append(m_painted);
        times.shown.append(m_shown);
        times.work.append(m_work);
        times.rendererWork.append(m_rendererWork);
    }
    static void print(const char *way, const Times &times)
    {
        QTextStream out(stdout);
        out << "  " << way << ":\n";
        for (const auto &[name, values] :
             {std::pair("written", &times.written), std::pair("painted", &times.painted),
              std::pair("shown  ", &times.shown), std::pair("work of the window  ", &times.work),
              std::pair("work of the renderer", &times.rendererWork)})
            out << "    " << name << ' ' << spread(*values) << Qt::endl;
    }
    void press()
    {
        const bool back = m_key % 2 == 0;
        waitForPage([&] {
            QKeyEvent key(QEvent::KeyPress, back ? Qt::Key_Backspace : Qt::Key_X, Qt::NoModifier,
                          back ? QString() : QStringLiteral("x"));
            QApplication::sendEvent(m_source, &key);
        });
    }
    template <typename Work>
    void waitForPage(Work work)
    {
        ++m_key;
        m_written = m_painted = m_shown = -1;
        const qint64 own = QCoreApplication::applicationPid(), renderer = m_wb->page()->renderProcessPid();
        m_workBefore = workOf(own);
        m_rendererWorkBefore = workOf(renderer);
        m_frameIsNew = false;
        m_clock.start();
        work();
        m_patience.start(20000);
        m_loop.exec();
        m_patience.stop();
        m_settled.stop();
        if (m_written < 0)
            qFatal("The page does not come");
    }
    void note(double &time)
    {
        if (time < 0)
            time = double(m_clock.nsecsElapsed()) / 1e6;
        settle();
    }
    // Frames come on their own only where something has changed, so the last one has the key in it.
    void frameIsShown()
    {
        m_shown = double(m_clock.nsecsElapsed()) / 1e6;
        m_work = workOf(QCoreApplication::applicationPid()) - m_workBefore;
        m_rendererWork = workOf(m_wb->page()->renderProcessPid()) - m_rendererWorkBefore;
        settle();
    }
    void settle()
    {
        if (m_written >= 0 && (!m_isTelling || (m_painted >= 0 && m_shown >= 0)))
            m_settled.start();
    }
    // The browser draws into a Qt Quick window off the screen, and a widget paints what it has drawn.
    void watchFrames()
    {
        auto *shown = m_wb->findChild<QQuickWidget *>();
        if (!shown || std::exchange(m_watched, shown) == shown)
            return;
        connect(shown->quickWindow(), &QQuickWindow::afterRendering, this, [this] { m_frameIsNew = true; });
        shown->installEventFilter(this);
    }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && std::exchange(m_frameIsNew, false))
            QMetaObject::invokeMethod(
                this, [this] { frameIsShown(); }, Qt::QueuedConnection); // once painted
        return QObject::eventFilter(object, event);
    }

    const QTemporaryDir &m_folder;
    QEventLoop m_loop;
    QTimer m_patience, m_settled;
    QElapsedTimer m_clock;
    BenchWindow m_window; // which tells the above of its end
    WebBrowser *m_wb = m_window.find<WebBrowser>("wb");
    SourceBox *m_source = m_window.find<SourceBox>("txtSnippet");
    QQuickWidget *m_watched = nullptr;
    bool m_isTelling = false;  // the page tells when it is painted
    bool m_frameIsNew = false; // not yet painted by the widget
    int m_key = 0;
    double m_written = -1, m_painted = -1, m_shown = -1; // ms; -1 while it is not
    double m_workBefore = 0, m_rendererWorkBefore = 0;   // ms
    double m_work = 0, m_rendererWork = 0;               // ms
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    prepareBench(folder);
    QApplication app(argc, argv);
    QStringList counts = app.arguments().mid(1);
    if (counts.removeAll(QStringLiteral("--receiver")) > 0)
        QSettings().setValue(QStringLiteral("receiver/on"), true);
    if (counts.isEmpty())
        counts = {QStringLiteral("200"), QStringLiteral("2000")};
    Bench bench(folder);
    for (const QString &count : counts)
        bench.run(count.toInt());
}
