#include "OwnWork.h"
#include "app/CellAttempts.h"
#include "app/PageOfMarkup.h"
#include "app/WindowFixture.h"

#include "commands/forms/RenderCommand.h"
#include "commands/forms/SheetCommand.h"
#include "widgets/forms/SourceTab.h"

#include <QDesktopServices>
#include <QDialog>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QMutex>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

#include <csignal>
#include <cstdio>

#include <dlfcn.h>
#include <netdb.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace quillmere;

namespace {

// Like qWaitFor(), which sleeps between two events; the browser has many.
template <typename Condition>
[[nodiscard]] bool waitFor(Condition condition, int milliseconds)
{
    QEventLoop loop;
    QTimer poll, patience;
    bool holds = condition();
    QObject::connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds)
            loop.quit();
    });
    poll.start(20);
    patience.start(milliseconds);
    if (!holds)
        loop.exec();
    return holds;
}

// Every name that a browser in this process has looked up: the library's own way to a name server ends here.
QMutex askedMutex;
QByteArrayList asked;

} // namespace

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *name, const char *service,
                                                                  const addrinfo *hints, addrinfo **found)
{
    {
        const QMutexLocker lock(&askedMutex);
        asked.append(name ? name : "");
    }
    using Real = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const auto real = reinterpret_cast<Real>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    const QByteArray number = name ? name : "";
    const bool isNumber = QHostAddress().setAddress(QString::fromLatin1(number));
    return isNumber || !name ? real(name, service, hints, found) : EAI_NONAME;
}

namespace {

// Everything that must not hear of a page.
class Outside : public QObject
{
    Q_OBJECT

public:
    // Forgets what came, and takes what comes from now on at new ports: a browser that was to fall for an
    // attempt may still be knocking at the old ones.
    void openDoors()
    {
        seen.clear();
        connections = 0;
        m_server = std::make_unique<QTcpServer>();
        m_silent = std::make_unique<QTcpServer>();
        if (!m_server->listen(QHostAddress::LocalHost) || !m_silent->listen(QHostAddress::LocalHost))
            qFatal("There is no port on the loopback");
        connect(m_silent.get(), &QTcpServer::newConnection, this, [this] { ++connections; });
        connect(m_server.get(), &QTcpServer::newConnection, this, [this] {
            ++connections;
            QTcpSocket *socket = m_server->nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                const QByteArray path = socket->readAll().split(' ').value(1).split('?')[0];
                seen.insert(QString::fromLatin1(path.mid(1)));
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
                socket->disconnectFromHost();
            });
        });
    }

    QByteArray markupOf(const Attempt &attempt, const QString &folder) const
    {
        const auto address = [](const QTcpServer &of) -> QByteArray {
            return "127.0.0.1:" + QByteArray::number(of.serverPort());
        };
        QByteArray markup = attempt.markup;
        markup.replace("$S", "document.title+=/,$N,/.source");
        markup.replace("$H", "http://$A/$N");
        markup.replace("$M", QByteArray("mailto:" + address(*m_server) + "/$N"));
        markup.replace("$A", address(*m_server));
        markup.replace("$P", address(*m_silent));
        markup.replace("$G", "id='go' style='position:absolute;left:0;top:0;width:60px;height:40px'>");
        markup.replace("$F", QUrl::fromLocalFile(folder).toEncoded());
        markup.replace("$T", "quillmere:$D/theme");
        markup.replace("$D", folder.toUtf8());
        return markup.replace("$N", attempt.name.toUtf8());
    }
    // What has come of the attempts in the view so far. Closes its dialogs.
    Names &outcome(QWebEngineView &view, const Attempts &attempts)
    {
        seen += redPlaces(view, attempts);
        for (const QString &word : view.title().split(u',').mid(1)) {
            if (!word.isEmpty())
                seen.insert(word);
        }
        for (QWidget *window : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QDialog *>(window);
            if (dialog && dialog->isVisible() && dialog->parentWidget() == &view) {
                dialog->reject();
                seen.insert(attempts.first().name);
            }
        }
        return seen;
    }
    // A letter to us: the address names the door.
    void mailed(const QString &address)
    {
        const QString door = u"127.0.0.1:%1/"_s.arg(m_server->serverPort());
        if (address.startsWith(door))
            seen.insert(address.mid(door.size()));
    }

    Names seen;
    int connections = 0;

private:
    std::unique_ptr<QTcpServer> m_server, m_silent;
};

class OpenPage : public QWebEnginePage
{
public:
    OpenPage(Outside &outside, QWebEngineProfile *profile, QObject *parent)
        : QWebEnginePage(profile, parent), m_outside(outside)
    {
    }

protected:
    QWebEnginePage *createWindow(WebWindowType) override { return new OpenPage(m_outside, profile(), this); }
    // The dialog that comes otherwise has an event loop of its own, which nobody ends where it comes late.
    QStringList chooseFiles(FileSelectionMode, const QStringList &, const QStringList &accepted) override
    {
        m_outside.seen.insert(accepted.value(0).mid(1));
        return {};
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {
    }

private:
    Outside &m_outside;
};

// What an ordinary person browses with.
class OpenBrowser : public QWebEngineView
{
public:
    explicit OpenBrowser(Outside &outside)
    {
        setPage(new OpenPage(outside, &m_profile, this));
        settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
        settings()->setAttribute(QWebEngineSettings::HyperlinkAuditingEnabled, true);
        settings()->setAttribute(QWebEngineSettings::AutoLoadIconsForPage, false);
        settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::AllowAllUnknownUrlSchemes);
        connect(&m_profile, &QWebEngineProfile::downloadRequested, this,
                [&outside](QWebEngineDownloadRequest *download) {
                    outside.seen.insert(download->downloadFileName());
                    download->cancel();
                });
        resize(1024, 576);
        show();
    }
    ~OpenBrowser() override { delete page(); }

private:
    QWebEngineProfile m_profile;
};

constexpr char kFeel[] =
    "window.__clicks=0;document.addEventListener('click',function(){++window.__clicks},true)";
// Or it is gone with the page.
constexpr char kFelt[] = "!Object.hasOwn(window,'__clicks') || window.__clicks > 0";

// A click past all that keeps the mouse from the page: what if one came through?
void clickPast(QObject &page, QPoint at)
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, {});
        page.event(&event);
    }
}

// Clicks at what wants a click until the page has felt it, a click a call.
class Clicks
{
public:
    Clicks(QWebEngineView &view, bool wanted)
        : m_view(view), m_state(std::make_shared<State>(wanted ? NotLoaded : Felt))
    {
    }
    void loaded()
    {
        if (*m_state != NotLoaded)
            return;
        m_view.page()->runJavaScript(QLatin1String(kFeel), QWebEngineScript::ApplicationWorld);
        *m_state = NotFelt;
    }
    bool next()
    {
        if (*m_state == NotFelt) {
            clickPast(*m_view.focusProxy(), placeOf(0).center());
            *m_state = Asked;
            m_view.page()->runJavaScript(QLatin1String(kFelt), QWebEngineScript::ApplicationWorld,
                                         [state = m_state](const QVariant &felt) {
                                             *state = felt == QVariant(false) ? NotFelt : Felt;
                                         });
        }
        return *m_state == Felt;
    }

private:
    enum State { NotLoaded, NotFelt, Asked, Felt };

    QWebEngineView &m_view;
    std::shared_ptr<State> m_state;
};

const char kNaming[] =
    "<meta http-equiv='x-dns-prefetch-control' content='on'><a href='http://link.test/'>x</a>"
    "<link rel='dns-prefetch' href='http://hint.test/'>"
    "<link rel='preconnect' href='http://server.test/'>"
    "<img src='http://picture.test/'><form action='http://form.test/'></form>";

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

// Each test has a window on a theme with red things beside it; the rows of one test share it.
class TestCell : public QObject
{
    Q_OBJECT

public:
    TestCell()
    {
        QDesktopServices::setUrlHandler(u"mailto"_s, this, "mailed");
        // The ordinary browser lives in this program too, and the loopback is all it gets.
        static constexpr char flags[] = "QTWEBENGINE_CHROMIUM_FLAGS";
        qputenv(flags, qgetenv(flags).replace("~NOTFOUND", "~NOTFOUND , EXCLUDE 127.0.0.1"));
    }
    ~TestCell() override { QDesktopServices::unsetUrlHandler(u"mailto"_s); }

public slots:
    void mailed(const QUrl &url)
    {
        m_outside.mailed(url.path());
        m_control.mailed(url.path());
    }

private slots:
    void cleanupTestCase() { m_window.reset(); }

    void init()
    {
        m_outside.openDoors();
        m_control.openDoors();
        if (m_test == QTest::currentTestFunction())
            return;
        m_test = QTest::currentTestFunction();
        m_window.reset();
        m_window = std::make_unique<Window>();
        m_wb = m_window->find<WebBrowser>("wb");
        write("secret.html", "<body bgcolor=red>");
        write("script.js", "document.title+=',src-file,'");
        write("import.css", ".import{background:red}");
        write("link.css", ".link{background:red}");
        write("theme/theme.xml", "<config><file_image>image.xml</file_image></config>");
        write("theme/image.xml", "<image id=\"up\">../secret.png</image><image id=\"in\">in.png</image>");
        QImage red(40, 30, QImage::Format_RGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(path("secret.png")) && red.save(path("theme/in.png")));
        m_window->skin->openTheme(path("theme"));
        m_window->choose("mnuWwbZ1"); // 100 %: a pixel of the browser is one of the page
    }

    void attempts_data()
    {
        QTest::addColumn<Attempts>("attempts");
        QTest::addColumn<bool>("asReceiver");
        QTest::newRow("inside") << attemptsBelow("inside") << false;
        QTest::newRow("inside, as the receiver") << attemptsBelow("inside") << true;
        for (const Attempt &attempt : attemptsBelow("alone"))
            QTest::newRow(qPrintable(attempt.name)) << Attempts{attempt} << false;
    }

    // First in the cell, then in the ordinary browser: when that one has fallen for all of it, there has been
    // time for whatever must not happen.
    void attempts()
    {
        QFETCH(const Attempts, attempts);
        QFETCH(const bool, asReceiver);
        m_window->find<QAction>("mnuReceiver")->setChecked(!asReceiver);
        m_window->choose("mnuReceiver");
        int downloads = 0;
        const auto watch = connect(m_wb->page()->profile(), &QWebEngineProfile::downloadRequested, m_wb,
                                   [&downloads](QWebEngineDownloadRequest *download) {
                                       downloads +=
                                           download->state() != QWebEngineDownloadRequest::DownloadCancelled;
                                   });
        const auto unwatch = qScopeGuard([&watch] { disconnect(watch); });
        QSignalSpy drawn(m_wb, &WebBrowser::drawn);
        const QByteArray text = widgets(attempts);
        open(text);
        QVERIFY(drawn.wait(10000));
        Clicks inCell(*m_wb, text.contains("id='go'"));
        inCell.loaded();
        QVERIFY(waitFor([&] { return inCell.next(); }, 10000));

        const Names expected = controlsOf(attempts) + Names{u"barrier"_s};
        const Attempt barrier{u"barrier"_s, "<img src='$H'>", true};
        write("control.html",
              pageOfMarkup(QString::fromUtf8("<interface>\r\n" + widgets(attempts, m_control) +
                                             m_control.markupOf(barrier, {})))
                  .toUtf8());
        OpenBrowser browser(m_control);
        Clicks clicks(browser, text.contains("id='go'"));
        connect(&browser, &QWebEngineView::loadFinished, &browser, [&clicks] { clicks.loaded(); });
        browser.load(QUrl::fromLocalFile(path("control.html")));
        const auto fallsForAll = [&] {
            clicks.next();
            return m_control.outcome(browser, attempts).contains(expected);
        };
        QVERIFY2(waitFor(fallsForAll, 15000),
                 qPrintable(QStringList((expected - m_control.seen).values()).join(u' ')));

        QCOMPARE(m_outside.outcome(*m_wb, attempts), Names());
        QCOMPARE(m_outside.connections, 0);
        QCOMPARE(downloads, 0);
        QVERIFY(m_window->js(u"location.href"_s).toString().startsWith(u"about:blank"));
        const auto isThere = [&] {
            return attempts.size() > 1 || m_window->js(u"document.querySelector('div') != null"_s).toBool();
        };
        QVERIFY(waitFor(isThere, 10000));
        // It still is ours to write.
        open("<widget name=\"next\"><property><rect>[0,0,90,30]</rect><string>next</string>"
             "<forecolor>[#ffffff]</forecolor></property></widget>");
        QVERIFY(shows("next"));
    }

    // Another process stands for the ordinary browser: what ours may look up holds for all browsers in it.
    void names()
    {
        write("control.html", kNaming);
        QProcess ordinary;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QTWEBENGINE_CHROMIUM_FLAGS"_s);
        ordinary.setProcessEnvironment(environment);
        ordinary.start(QCoreApplication::applicationFilePath(), {u"--ordinary"_s, path("control.html")});
        QVERIFY(ordinary.waitForFinished(20000));
        const QByteArray heard = ordinary.readAllStandardOutput();
        QVERIFY2(heard.contains("link.test") && heard.contains("picture.test"), heard.constData());

        asked.clear();
        QSignalSpy drawn(m_wb, &WebBrowser::drawn);
        for (const char *next : {"", " "}) {
            open(kNaming + QByteArray("<widget name=\"w\"><property></property>") + kNaming + next);
            QVERIFY(drawn.wait(10000));
        }
        // A name that an ordinary browser of this process wants is asked for after those, and not found
        // either.
        OpenBrowser browser(m_control);
        QSignalSpy loaded(&browser, &QWebEngineView::loadFinished);
        browser.load(QUrl(u"http://last.test/"_s));
        QVERIFY(loaded.wait(10000));
        const QMutexLocker lock(&askedMutex);
        QCOMPARE(asked.join(' '), QByteArray());
    }

    void outlives_data()
    {
        QTest::addColumn<QByteArray>("markup");
        const auto row = [](const char *name, const char *markup) {
            QTest::newRow(name) << QByteArray("<widget class=\"box\" name=\"first\"><property></property>") +
                                       markup;
        };
        row("policy", "<meta http-equiv='Content-Security-Policy' content=\"default-src 'none'\"></widget>");
        row("policy in a name", "</widget><widget name=\"x</style><META HTTP-EQUIV='content-security-policy' "
                                "content='default-src none'>\"></widget>");
        row("refresh", "<meta http-equiv='refresh' content='1;url=about:blank'></widget>");
        row("refresh at once", "<meta http-equiv='refresh' content='0;url=about:blank'></widget>");
        row("looking up", "<meta http-equiv='x-dns-prefetch-control' content='on'></widget>");
    }

    // What a page sets ends with it, and no page is taken away by itself.
    void outlives()
    {
        QFETCH(const QByteArray, markup);
        const QByteArray good = "<widget class=\"box\" name=\"good\"><property><rect>[10,20,30,40]</rect>"
                                "<unfocus_img>" +
                                path("theme/in.png").toUtf8() + "</unfocus_img></property></widget>";
        write("theme/good.xml", "<interface>\r\n" + good);
        const auto isWhole = [&] {
            return m_window->style(u"good"_s, u"left"_s) == u"10px" &&
                   m_wb->grab().toImage().pixelColor(20, 30) == QColor(Qt::red);
        };
        open(markup);
        QVERIFY(shows("first"));
        const QString mark = u"Object.hasOwn(document,'mark')"_s;
        m_window->js(u"document.mark=1"_s);
        m_window->skin->openDocument(path("theme/good.xml"));
        QVERIFY(waitFor(isWhole, 10000));
        QVERIFY(!m_window->js(mark).toBool());

        // In one window too, once the markup is mended.
        open(markup);
        QVERIFY(shows("first"));
        open(good);
        QVERIFY(waitFor(isWhole, 10000));
        // Nor does a page written by keys lose what an ordinary browser loses.
        m_window->source()->setText(QString::fromUtf8("<interface>" + good + markup));
        QVERIFY(shows("first"));
        if (markup.contains("refresh")) {
            write("control.html", "<p>" + markup);
            OpenBrowser browser(m_control);
            browser.load(QUrl::fromLocalFile(path("control.html")));
            QVERIFY(waitFor([&] { return browser.url() == QUrl(u"about:blank"_s); }, 10000));
        }
        QVERIFY(shows("first"));
    }

    void pictures()
    {
        const Attempts attempts = attemptsBelow("pictures");
        write("theme/sheet.png", ".sheet{background:red}");
        link("theme/in.png", "theme/stays.png");
        link("secret.png", "theme/leaves.png");
        link("theme/..", "theme/away");
        QSignalSpy drawn(m_wb, &WebBrowser::drawn);
        open(widgets(attempts));
        QVERIFY(drawn.wait(10000));
        QVERIFY(reddens(attempts, {u"inside"_s, u"stays"_s, u"looked-up"_s}));

        // A cell that reaches further, to see that the others are no mistakes in writing. The browser keeps
        // the denials, too, by the time of the file.
        QVERIFY(QImage(path("secret.png")).save(path("secret.png")));
        m_wb->setThemeFolder(m_window->files.folder());
        open(widgets(attempts) + ' ');
        if (!reddens(attempts, controlsOf(attempts)))
            QCOMPARE(redPlaces(*m_wb, attempts), controlsOf(attempts));
    }

    void noPictures()
    {
        const Attempts attempts = attemptsBelow("no pictures");
        QCOMPARE(::mkfifo(qPrintable(path("theme/pipe.png")), 0600), 0);
        QVERIFY(QFile::link(u"/dev/zero"_s, path("theme/device.png")));
        QVERIFY(QDir().mkdir(path("theme/folder.png")));
        QVERIFY(QFile::copy(path("secret.png"), path("theme/large.png")));
        QVERIFY(QFile::resize(path("theme/large.png"), 65 << 20));
        QImage bomb(9000, 9000, QImage::Format_Mono);
        bomb.setColorTable({qRgb(255, 0, 0), qRgb(255, 0, 0)});
        QVERIFY(bomb.save(path("theme/bomb.png")));
        write("theme/page.png", "<body bgcolor=red>");
        const QByteArray drawing = R"(<svg xmlns='http://www.w3.org/2000/svg' width='99' height='99'
            onload='fetch("$H")'><script>fetch('$H')</script><rect fill='red' width='99' height='99'/>
            <image href='$H'/></svg>)";
        write("theme/drawing.svg", m_outside.markupOf({u"drawing"_s, drawing, true}, {}));
        QSignalSpy drawn(m_wb, &WebBrowser::drawn);
        open(widgets(attempts));
        QVERIFY(drawn.wait(10000)); // every request has been answered
        QVERIFY(reddens(attempts, {u"drawing"_s}));
        QCOMPARE(m_outside.connections, 0);
    }

    // The window goes on while many pictures are looked for in a very large folder, of which a list takes
    // some milliseconds.
    void missing()
    {
        constexpr int files = 18000, pictures = 20000;
        QVERIFY(QDir().mkpath(path("theme/large")));
        for (int number = 0; number < files; ++number) {
            const QString name = path("theme/large/") + QString::number(number);
            QCOMPARE(::link(qPrintable(path("secret.html")), qPrintable(name)), 0);
        }
        QByteArray page;
        for (int number = 0; number < pictures; ++number)
            page +=
                m_outside.markupOf({{}, "<img src='$T/large/" + QByteArray::number(number) + ".png'>", false},
                                   m_window->files.folder());

        double longest = 0, last = ownWork();
        const double before = last;
        QTimer tick;
        connect(&tick, &QTimer::timeout, this, [&] {
            const double now = ownWork();
            longest = std::max(longest, now - std::exchange(last, now));
        });
        tick.start(1);
        m_wb->write(QString::fromUtf8(page));
        const QString complete = u"document.images.length == %1 && "
                                 "Array.from(document.images).every(i => i.complete)"_s;
        QVERIFY(waitFor([&] { return m_window->js(complete.arg(pictures)).toBool(); }, 60000));
        const double whole = ownWork() - before;
        qInfo("The window's thread worked for %.0f ms, %.1f ms at most at a time", whole, longest);
        QVERIFY(longest < 100);
        QVERIFY(whole < 1000);
    }

    void changedPictures()
    {
        const Attempts attempts =
            attemptsOf("changed <property><unfocus_img>$D/theme/in.png</unfocus_img></property>\n"
                       "moved <property><unfocus_img>$D/theme/moves.png</unfocus_img></property>");
        link("theme/in.png", "theme/moves.png");
        open(widgets(attempts));
        QVERIFY(reddens(attempts, controlsOf(attempts)));

        link("secret.png", "theme/moves.png");
        QVERIFY(QImage(path("secret.png")).save(path("secret.png"))); // not written at the time of the other
        QImage blue(40, 30, QImage::Format_RGB32);
        blue.fill(Qt::blue);
        QVERIFY(blue.save(path("theme/in.png")));
        open(widgets(attempts) + ' ');
        const auto isBlue = [this] {
            return m_wb->grab().toImage().pixelColor(placeOf(0).topLeft() + QPoint(10, 10)) ==
                   QColor(Qt::blue);
        };
        QVERIFY(waitFor(isBlue, 10000));
        QVERIFY(reddens(attempts, {}));
    }

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

private:
    QString path(const char *name) const { return m_window->files.path(QLatin1String(name)); }
    void write(const char *name, const QByteArray &text) const
    {
        m_window->files.write(QLatin1String(name), text);
    }
    void link(const char *target, const char *name) const
    {
        QFile::remove(path(name));
        QVERIFY(QFile::link(path(target), path(name)));
    }
    void open(const QByteArray &markup) const
    {
        write("theme/w.xml", "<interface>\r\n" + markup);
        m_window->skin->openDocument(path("theme/w.xml"));
    }
    QByteArray widgets(const Attempts &attempts, const Outside &outside) const
    {
        QByteArray text;
        for (qsizetype i = 0; i < attempts.size(); ++i) {
            const QRect at = placeOf(i);
            text += u"<widget class=\"box\" name=\"%1\"><property><rect>[%2,%3,62,42]</rect>"
                    "</property>"_s.arg(attempts[i].name)
                        .arg(at.x())
                        .arg(at.y())
                        .toUtf8();
            text += outside.markupOf(attempts[i], m_window->files.folder());
            text += "</widget>\r\n";
        }
        return text;
    }
    QByteArray widgets(const Attempts &attempts) const { return widgets(attempts, m_outside); }
    bool shows(const char *text) const
    {
        return m_window->js(u"document.body.textContent"_s).toString().contains(QLatin1String(text));
    }
    bool says(const char *text) const { return m_window->said().contains(QLatin1String(text)); }
    // Whether these places, and no others, get red.
    bool reddens(const Attempts &attempts, const Names &places) const
    {
        return waitFor([&] { return redPlaces(*m_wb, attempts) == places; }, 10000);
    }

    std::unique_ptr<Window> m_window;
    WebBrowser *m_wb = nullptr;
    QByteArray m_test;
    Outside m_outside; // what the cell is told of
    Outside m_control; // what an ordinary browser is told of
};

namespace {

// Prints the names that an ordinary browser looks up for a page.
int browseOrdinarily(int argc, char **argv)
{
    QApplication app(argc, argv);
    Outside outside;
    OpenBrowser browser(outside);
    browser.load(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2])));
    const auto hasAsked = [] {
        const QMutexLocker lock(&askedMutex);
        return asked.contains("link.test") && asked.contains("picture.test");
    };
    const bool done = waitFor(hasAsked, 10000);
    std::puts(asked.join(' ').constData());
    return done ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--ordinary") == 0)
        return browseOrdinarily(argc, argv);
    return runWindowTest<TestCell>(argc, argv);
}

#include "tst_cell.moc"
