#include "app/CellAttempts.h"
#include "app/WindowFixture.h"

#include "preview/PreviewPage.h"
#include "preview/WidgetHtml.h"
#include "rows/ListRows.h"
#include "source/forms/SourceBox.h"
#include "widgets/forms/SourceTab.h"

#include <QDesktopServices>
#include <QDialog>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

#include <csignal>

#include <sys/stat.h>

using namespace quillmere;

namespace {

// Everything that must not hear of a page.
class Outside : public QObject
{
    Q_OBJECT

public:
    Outside()
    {
        openDoors();
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), this, "opened");
    }
    ~Outside() override { QDesktopServices::unsetUrlHandler(QStringLiteral("mailto")); }

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
        markup.replace("$A", address(*m_server));
        markup.replace("$P", address(*m_silent));
        markup.replace("$G", "id='go' style='position:absolute;left:0;top:0;width:60px;height:40px'>");
        markup.replace("$F", QUrl::fromLocalFile(folder).toEncoded());
        markup.replace("$T", "quillmere:$D/theme");
        markup.replace("$D", folder.toUtf8());
        return markup.replace("$N", attempt.name.toUtf8());
    }
    // What has come of the attempts so far. Closes dialogs.
    Names &outcome(QWebEngineView &view, const Attempts &attempts)
    {
        seen += redPlaces(view, attempts);
        for (const QString &word : view.title().split(u',').mid(1)) {
            if (!word.isEmpty())
                seen.insert(word);
        }
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<QDialog *>(window); dialog && dialog->isVisible()) {
                dialog->reject();
                seen.insert(attempts.first().name);
            }
        }
        return seen;
    }

    Names seen;
    int connections = 0;

public slots:
    void opened(const QUrl &url) { seen.insert(url.path()); }

private:
    std::unique_ptr<QTcpServer> m_server, m_silent;
};

class OpenPage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    QWebEnginePage *createWindow(WebWindowType) override { return new OpenPage(profile(), this); }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int,
                                  const QString &) override
    {
    }
};

// What an ordinary person browses with.
class OpenBrowser : public QWebEngineView
{
public:
    explicit OpenBrowser(Outside &outside)
    {
        setPage(new OpenPage(&m_profile, this));
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

} // namespace

// Each test has a window on a theme with red things beside it.
class TestCell : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_window.reset(); }
    void attempts_data();
    void attempts();
    void pictures();
    void noPictures();
    void changedPictures();
    void deaths();
    void hang();
    void costs_data();
    void costs();
    void render();

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
    QByteArray widgets(const Attempts &attempts) const;
    void open(const QByteArray &markup) const
    {
        write("theme/w.xml", "<interface>\r\n" + markup);
        m_window->skin->openDocument(path("theme/w.xml"));
    }
    bool shows(const char *text) const
    {
        return m_window->js(QStringLiteral("document.body.textContent"))
            .toString()
            .contains(QLatin1String(text));
    }
    bool says(const char *text) const
    {
        return m_window->skin->statusBar()->currentMessage().contains(QLatin1String(text));
    }
    // Whether these places, and no others, get red.
    bool reddens(const Attempts &attempts, const Names &places) const
    {
        return QTest::qWaitFor([&] { return redPlaces(*m_wb, attempts) == places; }, 10000);
    }

    std::unique_ptr<Window> m_window;
    WebBrowser *m_wb = nullptr;
    Outside m_outside;
};

void TestCell::init()
{
    m_window = std::make_unique<Window>();
    m_wb = m_window->find<WebBrowser>("wb");
    m_outside.openDoors();
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
}

QByteArray TestCell::widgets(const Attempts &attempts) const
{
    QByteArray text;
    for (qsizetype i = 0; i < attempts.size(); ++i) {
        const QRect at = placeOf(i);
        text += QStringLiteral("<widget class=\"box\" name=\"%1\"><property><rect>[%2,%3,62,42]</rect>"
                               "</property>")
                    .arg(attempts[i].name)
                    .arg(at.x())
                    .arg(at.y())
                    .toUtf8();
        text += m_outside.markupOf(attempts[i], m_window->files.folder());
        text += "</widget>\r\n";
    }
    return text;
}

void TestCell::attempts_data()
{
    QTest::addColumn<Attempts>("attempts");
    QTest::newRow("inside") << attemptsOf(kInside);
    for (const Attempt &attempt : attemptsOf(kAlone))
        QTest::newRow(qPrintable(attempt.name)) << Attempts{attempt};
}

void TestCell::attempts()
{
    QFETCH(const Attempts, attempts);
    const Names expected = controlsOf(attempts);
    QByteArray text = widgets(attempts);
    const bool clicks = text.contains("id='go'");
    const auto click = [&](QWidget &view) {
        if (clicks)
            QTest::mouseClick(view.focusProxy(), Qt::LeftButton, {}, placeOf(0).center());
        QTest::qWait(200);
    };

    QString page;
    connect(m_window->skin->findChild<SourceTab *>(), &SourceTab::pageReady, this,
            [&page](const QString &ready) { page = ready; });
    open(text);
    if (!expected.isEmpty()) {
        write("control.html", page.toUtf8());
        OpenBrowser browser(m_outside);
        browser.load(QUrl::fromLocalFile(path("control.html")));
        const auto fallsForAll = [&] {
            click(browser); // at nothing, until there is a page
            return m_outside.outcome(browser, attempts).contains(expected);
        };
        QVERIFY2(QTest::qWaitFor(fallsForAll, 15000),
                 qPrintable(QStringList((expected - m_outside.seen).values()).join(u' ')));
    }

    m_outside.openDoors();
    int downloads = 0;
    connect(m_wb->page()->profile(), &QWebEngineProfile::downloadRequested, m_wb,
            [&downloads](QWebEngineDownloadRequest *download) {
                downloads += download->state() != QWebEngineDownloadRequest::DownloadCancelled;
            });
    text = widgets(attempts);
    open(text + ' ');
    const QString felt = QStringLiteral(
        "document.querySelector('#go:hover') != null || document.body.textContent.trim() == ''");
    const auto feelsTheMouse = [&] {
        click(*m_wb);
        return !clicks || m_window->js(felt).toBool();
    };
    QVERIFY(QTest::qWaitFor(feelsTheMouse, 10000));
    click(*m_wb);
    QTest::qWait(attempts.size() > 1 ? 1000 : 100); // for whatever must not happen
    QCOMPARE(m_outside.outcome(*m_wb, attempts), Names());
    QCOMPARE(m_outside.connections, 0);
    QCOMPARE(downloads, 0);
    QVERIFY(m_window->js(QStringLiteral("location.href")).toString().startsWith(u"about:blank"));
    // It still is ours to write.
    open("<widget name=\"next\"><property></property></widget>");
    QVERIFY(shows("next"));
}

void TestCell::pictures()
{
    const Attempts attempts = attemptsOf(kPictures);
    write("theme/sheet.png", ".sheet{background:red}");
    link("theme/in.png", "theme/stays.png");
    link("secret.png", "theme/leaves.png");
    link("theme/..", "theme/away");
    QSignalSpy drawn(m_wb, &WebBrowser::drawn);
    open(widgets(attempts));
    QVERIFY(drawn.wait(10000));
    QVERIFY(
        reddens(attempts, {QStringLiteral("inside"), QStringLiteral("stays"), QStringLiteral("looked-up")}));

    // A cell that reaches further, to see that the others are no mistakes in writing. The browser keeps the
    // denials, too, by the time of the file.
    QVERIFY(QImage(path("secret.png")).save(path("secret.png")));
    m_wb->setThemeFolder(m_window->files.folder());
    open(widgets(attempts) + ' ');
    if (!reddens(attempts, controlsOf(attempts)))
        QCOMPARE(redPlaces(*m_wb, attempts), controlsOf(attempts));
}

void TestCell::noPictures()
{
    const Attempts attempts = attemptsOf(kNoPictures);
    QCOMPARE(::mkfifo(qPrintable(path("theme/pipe.png")), 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path("theme/device.png")));
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
    write("theme/drawing.svg", m_outside.markupOf({QStringLiteral("drawing"), drawing, true}, {}));
    QSignalSpy drawn(m_wb, &WebBrowser::drawn);
    open(widgets(attempts));
    QVERIFY(drawn.wait(10000)); // every request has been answered
    QVERIFY(reddens(attempts, {QStringLiteral("drawing")}));
    QTest::qWait(200);
    QVERIFY(reddens(attempts, {QStringLiteral("drawing")}));
    QCOMPARE(m_outside.connections, 0);
}

void TestCell::changedPictures()
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
        return m_wb->grab().toImage().pixelColor(placeOf(0).topLeft() + QPoint(10, 10)) == QColor(Qt::blue);
    };
    QVERIFY(QTest::qWaitFor(isBlue, 10000));
    QVERIFY(reddens(attempts, {}));
}

void TestCell::deaths()
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
    m_window->find<SourceBox>("txtSnippet")->setText(QStringLiteral("<widget name=\"again\"><property>"));
    QVERIFY(shows("again"));
}

void TestCell::hang()
{
    auto *source = m_window->find<SourceBox>("txtSnippet");
    m_window->find<QTabBar>("TabStrip4")->setCurrentIndex(8);
    source->setFocus();
    open("<widget name=\"one\"><property></property></widget>");
    QVERIFY(shows("one"));
    const auto hung = pid_t(m_wb->page()->renderProcessPid());
    QCOMPARE(::kill(hung, SIGSTOP), 0);
    const auto end = qScopeGuard([hung] { ::kill(hung, SIGKILL); });
    QSignalSpy failed(m_wb, &WebBrowser::failed);
    source->setText(QStringLiteral("<widget name=\"two\"><property>"));
    QVERIFY(failed.wait(20000));
    QVERIFY(says("behind"));
    source->setText(QStringLiteral("<widget name=\"three\"><property>"));
    QVERIFY(shows("three"));
    QVERIFY(source->hasFocus());
}

void TestCell::costs_data()
{
    QTest::addColumn<QByteArray>("markup");
    QTest::addColumn<bool>("tooLarge");
    const auto row = [](const char *name, bool tooLarge, const QByteArray &markup) {
        QTest::newRow(name) << QByteArray("<widget name=\"w\"><property></property>" + markup) << tooLarge;
    };
    row("too deep", true, QByteArray("<div>").repeated(2000000));
    row("too long", true, "<widget name=\"" + QByteArray("a{}").repeated(3 << 20) + "\"></widget>");
    row("deep", false, QByteArray("<div>").repeated(280000));
    row("one name", false, QByteArray("<widget name=\"w\"><property></property></widget>").repeated(10000));
    row("motion", false,
        "<style>@keyframes k{to{transform:rotate(1turn)}}b{animation:k 1s infinite;position:absolute;width:"
        "500px;height:500px;background:red;filter:blur(20px)}</style>" +
            QByteArray("<b>x</b>").repeated(3000));
}

void TestCell::costs()
{
    QFETCH(const QByteArray, markup);
    QFETCH(const bool, tooLarge);
    open("<widget name=\"before\"><property></property></widget>");
    QVERIFY(shows("before"));
    const auto pageOf = [](const QByteArray &text) {
        ListRows blocks({QString(), QString()}), fonts({QString()});
        const auto noImages = [](const QString &) { return QString(); };
        return BuildPreviewPage(BuildWidgetHtml(QString::fromUtf8(text), noImages, fonts, blocks), {}, {},
                                blocks);
    };
    // Not by way of the source box, which needs its own time for so many lines.
    const QString page = pageOf(markup);
    const QString next = pageOf("<widget name=\"after\"><property></property></widget>");
    const qint64 renderer = m_wb->page()->renderProcessPid();
    qint64 longest = 0;
    QElapsedTimer whole, sinceTick;
    QTimer tick;
    connect(&tick, &QTimer::timeout, this, [&] { longest = std::max(longest, sinceTick.restart()); });
    tick.start(1);
    whole.start();
    sinceTick.start();
    m_wb->write(page);
    QTest::qWait(100);
    QCOMPARE(says("too large"), tooLarge);
    m_wb->write(next);
    QVERIFY(QTest::qWaitFor([this] { return !m_wb->isBusy(); }, 30000));
    QVERIFY(shows("after"));
    qInfo("The program was held up for %lld ms at most; next page after %lld ms", longest, whole.elapsed());
    QVERIFY(longest < 1500);
    const auto isGone = [renderer] { return ::kill(pid_t(renderer), 0) != 0; };
    QVERIFY(m_wb->page()->renderProcessPid() == renderer || QTest::qWaitFor(isGone, 10000));
}

void TestCell::render()
{
    QProcess program;
    const std::pair<QByteArray, QByteArray> documents[] = {
        {"attempts", widgets(attemptsOf(kInside))},
        {"deep", "<widget name=\"w\">" + QByteArray("<div>").repeated(280000)},
        {"refresh", widgets(attemptsOf(kAlone).mid(1, 2))},
        {"motion", "<widget name=\"w\"><property></property><style>@keyframes k{to{transform:rotate(1turn)}}"
                   "b{animation:k 1s infinite}</style><b>x</b>"},
        {"pipe", widgets(attemptsOf(kNoPictures).mid(1, 1))},
        {"red", widgets(attemptsOf(kPictures).first(1))}};
    QByteArray catalogue;
    for (const auto &[name, text] : documents) {
        catalogue += "<widget class=\"window\" name=\"" + name + "\"/>";
        write(QByteArray("theme/" + name + ".xml").constData(), text);
    }
    write("theme/widget.xml", catalogue);
    write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
    QCOMPARE(::mkfifo(qPrintable(path("theme/pipe.png")), 0600), 0);
    program.start(QStringLiteral(QUILLMERE_PROGRAM),
                  {QStringLiteral("render"), path("theme"), QStringLiteral("--out"), path("out")});
    QVERIFY(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 90000));
    QVERIFY(program.readAllStandardError().contains("deep: the browser did not draw it"));
    QCOMPARE(program.exitCode(), 1);
    QCOMPARE(QDir(path("out")).entryList(QDir::Files).join(u' '),
             QStringLiteral("attempts.png motion.png pipe.png red.png refresh.png"));
    QCOMPARE(QImage(path("out/red.png")).pixelColor(20, 20), QColor(Qt::red));
    QCOMPARE(m_outside.connections, 0);
}

int main(int argc, char **argv)
{
    return runWindowTest<TestCell>(argc, argv);
}

#include "tst_cell.moc"
