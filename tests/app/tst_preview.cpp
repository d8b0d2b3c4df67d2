#include "app/WindowFixture.h"

#include "controls/ListView.h"
#include "source/forms/SourceBox.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QProcess>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWheelEvent>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QString kExample = QStringLiteral(EXAMPLES_FOLDER "/aurora/theme");

// Opens the window of this name as a person does: a double click on its row.
void openWindow(const Window &window, const QString &name)
{
    window.turnTo(1);
    auto *list = window.find<ListView>("LvWidget");
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        if (list->model()->index(row, 1).data().toString() == name) {
            doubleClick(list, row);
            return;
        }
    }
    qFatal("There is no window %s", qPrintable(name));
}

int textBlocks(const Window &window)
{
    return window.js(u"document.querySelectorAll('body div[id]').length"_s).toInt();
}

QByteArray theme(const QByteArray &windows, const QByteArray &images = {})
{
    return "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image></config>" +
           windows + images;
}

} // namespace

class Requests : public QWebEngineUrlRequestInterceptor
{
public:
    void interceptRequest(QWebEngineUrlRequestInfo &info) override { urls.append(info.requestUrl().path()); }
    qsizetype of(const QString &picture) const { return urls.filter(picture).size(); }

    QStringList urls;
};

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void exampleInTheBrowser()
    {
        Window window;
        auto *wb = window.find<WebBrowser>("wb");
        QSignalSpy drawn(wb, &WebBrowser::drawn);
        window.skin->openTheme(kExample);
        window.choose("mnuWwbZ2");
        openWindow(window, u"wnd_epg"_s);
        QVERIFY(drawn.wait(10000));
        const int blocks = window.model("lvBlock")->rowCount();
        QVERIFY(blocks > 60);
        QCOMPARE(textBlocks(window), blocks);
        QCOMPARE(window.find<QLabel>("lblBlocks")->text(), u"%1 blocks"_s.arg(blocks));

        // The background picture: a page without it is one flat colour between the blocks.
        const auto picture = [&] { return wb->grab().toImage(); };
        const auto arrived = [&] {
            const QImage shot = picture();
            return shot.pixelColor(20, 300) != shot.pixelColor(1260, 700);
        };
        QVERIFY(QTest::qWaitFor(arrived, 10000));
        QCOMPARE(picture().size(), QSize(1280, 720));
        QVERIFY(picture().pixelColor(20, 300).lightness() < 80);

        // The screen is wider than the frame; the wheel over the picture scrolls.
        const QScrollBar *bar = window.find<QAbstractScrollArea>("previewScroll")->horizontalScrollBar();
        const QPointF over(100, 100);
        QWheelEvent turn(over, wb->mapToGlobal(over), {}, {-120, 0}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(wb->focusProxy(), &turn);
        QVERIFY(bar->value() > 0);
    }

    // What is typed asks for no picture but the one that it brings.
    void picturesStay()
    {
        Requests requests; // outlives the browser
        Window window;
        auto *wb = window.find<WebBrowser>("wb");
        auto *source = window.find<SourceBox>("txtSnippet");
        wb->page()->profile()->setUrlRequestInterceptor(&requests);
        window.skin->openTheme(kExample);
        openWindow(window, u"wnd_epg"_s);
        window.turnTo(8);
        const QString image = u"art_orchard_184x102"_s;
        QTRY_VERIFY(requests.of(image) == 1 && !wb->isBusy());
        source->setFocus();
        source->select(source->text().indexOf(u"<string>"_s) + 8, 0);
        QTest::keyClicks(source, u"some words"_s);
        QTRY_VERIFY(!wb->isBusy());
        QGuiApplication::clipboard()->setText(u"art_vinyl_320x320"_s);
        source->select(source->text().indexOf(image), image.size());
        source->paste();
        QTRY_COMPARE(requests.of(u"art_vinyl_320x320"_s), 1);
        QVERIFY(requests.urls.size() > 10);
        QCOMPARE(requests.urls.removeDuplicates(), 0);
    }

    void brokenTheme()
    {
        QByteArray binary(200000, '\0');
        for (qsizetype i = 0; i < binary.size(); ++i)
            binary[i] = char(i * 7 + i / 251);
        QByteArray many = "<interface>";
        for (int i = 0; i < 20000; ++i)
            many += "<widget class=\"text\" name=\"n\"><property><string>a</string>";
        const std::pair<const char *, QByteArray> documents[] = {
            {"empty", {}},
            {"binary", binary},
            {"cut", "<widget class=\"text\" name=\"n\"><property><rect>[1,2"},
            {"comment", "<!-- never ends <widget name=\"a\">"},
            {"line", "<widget name=\"" + QByteArray(2000000, 'x') + "\">"},
            {"many", many},
            {"quotes<'", "<widget name=\"it's\"><string>\"'<</string>"},
            {"../up", "<widget name=\"up\">"},
        };
        Window window;
        QByteArray catalogue = "<interface><width>wide</width>";
        for (const auto &[name, text] : documents) {
            catalogue += "<widget class=\"window\" name=\"" + QByteArray(name) + "\"/>";
            window.files.write(u"theme/"_s + QLatin1String(name) + u".xml"_s, text);
        }
        window.write("theme/theme.xml", theme(catalogue));
        window.write("theme/widget.xml", catalogue);
        window.write("theme/image.xml", binary + "<image id=\"i\">../../secret.png</image>");
        window.openTheme();
        auto *list = window.model("LvWidget");
        QCOMPARE(list->rowCount(), int(std::size(documents)));
#ifdef __SANITIZE_ADDRESS__
        constexpr int most = 200'000;
#else
        constexpr int most = 20'000;
#endif
        for (int row = 0; row < list->rowCount(); ++row) {
            QElapsedTimer clock;
            clock.start();
            const QString path = list->index(row, 0).data().toString();
            window.skin->openDocument(path);
            QVERIFY2(clock.elapsed() < most, qPrintable(path));
            QCOMPARE(window.js(u"document.compatMode"_s).toString(), u"BackCompat"_s);
        }
        for (const auto &[name, text] : documents)
            QCOMPARE(window.files.read(u"theme/"_s + QLatin1String(name) + u".xml"_s), text);
    }

    void render()
    {
        const TestFiles files;
        QProcess program;
        program.start(QStringLiteral(QUILLMERE_PROGRAM),
                      {u"render"_s, kExample, u"wnd_volume"_s, u"wnd_network_setup"_s, u"wnd_nowhere"_s,
                       u"--out"_s, files.path(u"out"_s), u"--size"_s, u"1024x576"_s});
        QVERIFY(program.waitForFinished(60000));
        QCOMPARE(program.exitCode(), 1);
        QVERIFY(program.readAllStandardOutput().contains("[1/3] wnd_volume"));
        const QByteArray complaints = program.readAllStandardError();
        QVERIFY(complaints.contains("wnd_network_setup: no document\n"));
        QVERIFY(complaints.contains("wnd_nowhere: no document\n"));
        QCOMPARE(QDir(files.path(u"out"_s)).entryList(QDir::Files).join(u' '), u"wnd_volume.png"_s);
        const QImage picture(files.path(u"out/wnd_volume.png"_s));
        QCOMPARE(picture.size(), QSize(1024, 576));
        QVERIFY(picture.pixelColor(20, 300).lightness() < 80);

        program.start(QStringLiteral(QUILLMERE_PROGRAM), {u"render"_s, kExample});
        QVERIFY(program.waitForFinished(10000));
        QCOMPARE(program.exitCode(), 2);
    }

    // A window whose title has translations and whose colour has states.
    void renderReceiver()
    {
        const TestFiles files;
        files.write(u"theme/theme.xml"_s,
                    "<config><file_widget>widget.xml</file_widget><file_i18n>lang.xml</file_i18n>"
                    "<file_color>color.xml</file_color></config>");
        files.write(u"theme/widget.xml"_s, "<interface><widget class=\"window\" name=\"w\"/></interface>");
        files.write(u"theme/color.xml"_s, "<color name=\"own\">#102030</color>");
        files.write(u"theme/lang.xml"_s, "<l><language id=\"Long\">long.xml</language></l>");
        files.write(u"theme/long.xml"_s, "<language name=\"Long\"><tran id=\"i\">MMMMMMMM</tran></language>");
        files.write(u"theme/w.xml"_s,
                    "<interface><widget class=\"text\" name=\"w\"><property><string>i</string>"
                    "<rect>[0,0,300,40]</rect><backcolor>[own,#405060,own]</backcolor>"
                    "<forecolor>[#ffffff]</forecolor></property></widget></interface>");
        const auto render = [&](const QStringList &more) {
            QProcess program;
            program.start(QStringLiteral(QUILLMERE_PROGRAM),
                          QStringList{u"render"_s, files.path(u"theme"_s), u"--out"_s, files.path(u"out"_s),
                                      u"--view"_s, u"receiver"_s} +
                              more);
            return program.waitForFinished(60000) ? program.exitCode() : -1;
        };
        QCOMPARE(render({u"--language"_s, u"Nowhere"_s}), 2);
        const std::tuple<QStringList, QColor, bool> cases[] = {
            {{}, QColor(0x10, 0x20, 0x30), false},
            {{u"--state"_s, u"2"_s}, QColor(0x40, 0x50, 0x60), false},
            {{u"--language"_s, u"Long"_s}, QColor(0x10, 0x20, 0x30), true}};
        for (const auto &[options, colour, isLong] : cases) {
            QCOMPARE(render(options), 0);
            const QImage picture(files.path(u"out/w.png"_s));
            QCOMPARE(picture.pixelColor(299, 39), colour);
            QCOMPARE(picture.pixelColor(300, 39), QColor(Qt::black));
            bool ink = false;
            for (int x = 40; x < 60; ++x)
                ink = ink || picture.pixelColor(x, 9).lightness() > 150;
            QCOMPARE(ink, isLong);
        }
    }

    // Without a display, into a folder where something lies in the way.
    void renderNames()
    {
        const TestFiles files;
        const QByteArray window =
            "<widget class=\"text\" name=\"w\"><property><rect>[0,0,9,9]</rect></property>";
        QByteArray catalogue;
        for (const char *name : {"a/b", "a_b", "A_B", "e\x1b]0;x\x07"}) {
            catalogue += QByteArray("<widget class=\"window\" name=\"") + name + "\"/>";
            files.write(u"theme/%1.xml"_s.arg(QLatin1String(name)), window);
        }
        files.write(u"theme/theme.xml"_s, theme(catalogue));
        files.write(u"theme/widget.xml"_s, catalogue);
        files.write(u"outside"_s, "outside");
        files.write(u"out/kept"_s);
        for (const char *name : {"out/a_b.png", "out/a_b-2.png"})
            QVERIFY(QFile::link(files.path(u"outside"_s), files.path(QLatin1String(name))));

        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QLatin1String(display));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(QUILLMERE_PROGRAM),
                      {u"render"_s, files.path(u"theme"_s), u"--out"_s, files.path(u"out"_s)});
        QVERIFY(program.waitForFinished(60000));
        const QByteArray said = program.readAllStandardOutput() + program.readAllStandardError();
        QVERIFY2(program.exitCode() == 0, said.constData());
        QVERIFY(said.contains("[4/4] e?]0;x? -> "));
        QVERIFY(!said.contains('\x1b') && !said.contains('\x07'));
        QCOMPARE(files.read(u"outside"_s), QByteArray("outside"));
        QCOMPARE(
            QDir(files.path(u"out"_s)).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks).join(u' '),
            u"a_b-2.png A_B-3.png a_b.png e_]0;x_.png kept"_s);
        QCOMPARE(QImage(files.path(u"out/a_b-2.png"_s)).size(), QSize(1024, 576));
    }
};

WINDOW_TEST_MAIN(TestPreview)
#include "tst_preview.moc"
