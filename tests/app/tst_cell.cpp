#include "app/CellTest.h"
#include "app/PageOfMarkup.h"

#include <QDesktopServices>
#include <QDialog>
#include <QMouseEvent>
#include <QMutex>
#include <QProcess>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

#include <cstdio>

#include <dlfcn.h>
#include <netdb.h>

using namespace quillmere;

namespace {

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

// What has come of the attempts in the view so far. Closes its dialogs.
Names &outcome(Outside &outside, QWebEngineView &view, const Attempts &attempts)
{
    outside.seen += redPlaces(view, attempts);
    for (const QString &word : view.title().split(u',').mid(1)) {
        if (!word.isEmpty())
            outside.seen.insert(word);
    }
    for (QWidget *window : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QDialog *>(window);
        if (dialog && dialog->isVisible() && dialog->parentWidget() == &view) {
            dialog->reject();
            outside.seen.insert(attempts.first().name);
        }
    }
    return outside.seen;
}

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

} // namespace

class TestCell : public CellTest
{
    Q_OBJECT

public:
    TestCell() { QDesktopServices::setUrlHandler(u"mailto"_s, this, "mailed"); }
    ~TestCell() override { QDesktopServices::unsetUrlHandler(u"mailto"_s); }

public slots:
    void mailed(const QUrl &url)
    {
        m_outside.mailed(url.path());
        m_control.mailed(url.path());
    }

private slots:
    void init()
    {
        begin();
        m_control.openDoors();
        write("script.js", "document.title+=',src-file,'");
        write("import.css", ".import{background:red}");
        write("link.css", ".link{background:red}");
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
            return outcome(m_control, browser, attempts).contains(expected);
        };
        QVERIFY2(waitFor(fallsForAll, 15000),
                 qPrintable(QStringList((expected - m_control.seen).values()).join(u' ')));

        QCOMPARE(outcome(m_outside, *m_wb, attempts), Names());
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

private:
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
