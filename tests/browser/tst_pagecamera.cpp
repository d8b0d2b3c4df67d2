#include "app/WindowFixture.h"

#include "browser/forms/PageCamera.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize kSize(320, 240);

// The picture of a browser that has come to rest.
QImage pictureAtRest(const QString &folder, const QString &page)
{
    WebBrowser wb;
    wb.setAttribute(Qt::WA_DontShowOnScreen);
    wb.resize(kSize);
    wb.setThemeFolder(folder);
    wb.show();
    QSignalSpy drawn(&wb, &WebBrowser::drawn);
    wb.write(page);
    if (!drawn.wait(20000))
        qFatal("The page is not drawn");
    const auto ask = [&](const QString &script, const auto &answer) {
        wb.page()->runJavaScript(script, QWebEngineScript::ApplicationWorld, answer);
    };
    ask(u"Promise.allSettled(Array.from(document.images).map(function(i){return i.decode()}))"
        ".then(function(){window.__decoded=true;})"_s,
        [](const QVariant &) {});
    const auto isDecoded = std::make_shared<bool>(false);
    const auto decodes = [&] {
        ask(u"window.__decoded"_s, [isDecoded](const QVariant &is) { *isDecoded = is.toBool(); });
        return *isDecoded;
    };
    if (!QTest::qWaitFor(decodes, 20000))
        qFatal("The pictures of the page do not come");
    QImage last;
    int same = 0;
    const auto isAtRest = [&] {
        const QImage now = wb.grab().toImage();
        same = now == last ? same + 1 : 0;
        last = now;
        return same > 10;
    };
    if (!QTest::qWaitFor(isAtRest, 20000))
        qFatal("The page does not come to rest");
    return last;
}

} // namespace

class TestPageCamera : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QImage large(3000, 2000, QImage::Format_RGB32);
        QRandomGenerator random(1);
        random.fillRange(reinterpret_cast<quint32 *>(large.bits()), large.sizeInBytes() / 4);
        QVERIFY(large.save(m_files.path(u"large.png"_s)));
    }

    void pictures_data()
    {
        QTest::addColumn<QString>("markup");
        QTest::addColumn<bool>("isMarked");
        const auto row = [](const char *name, const QString &markup, bool isMarked = true) {
            QTest::newRow(name) << markup << isMarked;
        };
        const QString box =
            u"<style>div{position:fixed;width:9px;height:7px;background:#f00;%1}</style><div></div>"_s;
        row("at the upper edge", box.arg(u"top:0;left:0;width:90%"_s));
        row("at the lower edge", box.arg(u"bottom:0;height:10%"_s));
        row("height of the view", box.arg(u"top:0;height:50vh}@media(height:240px){div{width:50px}"_s));
        row("above all", box.arg(u"top:0;left:0;width:100%;z-index:2147483647"_s));
        row("text", u"<p style='font-size:40px;margin:0'>Some <b>words</b> in a page"_s);
        row("margins",
            u"<style>html{margin:20px;background:#0f0}body{background:#00f;height:50%}</style>x"_s);
        row("rule of its own",
            u"<style>html::after{content:'after';position:absolute;top:0;left:9px}</style>"_s);
        row("both rules", u"<style>html::before,html::after{content:'own'}</style>"_s, false);
        row("no root", u"<style>html{display:none}</style>"_s, false);
        row("filter", u"<style>html{filter:invert(1)}body{background:#123}</style>"_s, false);
        row("no marks", u"<style>:root:not(#q_q#q_q#q_q#q_q#q_q)::after{display:none!important}</style>x"_s,
            false);
        row("large picture",
            u"<img width=320 height=240 src='quillmere:%1'>"_s.arg(m_files.path(u"large.png"_s)));
        row("large background",
            u"<style>body{background:url('%1')}</style>"_s.arg(m_files.path(u"large.png"_s)));
        row("missing picture", u"<img src='quillmere:/nowhere.png' width=30 height=30>"_s);
    }

    void pictures()
    {
        QFETCH(const QString, markup);
        QFETCH(const bool, isMarked);
        const QString page = u"<html><body style='margin:0'>"_s + markup;
        PageCamera camera(m_files.folder(), kSize);
        QImage taken;
        camera.take(page, [&](const QImage &picture) { taken = picture; });
        QTRY_VERIFY_WITH_TIMEOUT(!taken.isNull(), 20000);
        QCOMPARE(camera.unmarked(), isMarked ? 0 : 1);
        QCOMPARE(taken, pictureAtRest(m_files.folder(), page));
    }

    // The mark below leaves the page as it is, the corner that the other one would cover too.
    void below()
    {
        const QString page =
            u"<html><body style='margin:0;overflow:hidden'><div style='position:absolute;left:0;top:0;"
            "width:400px;height:300px;background:#123'>text</div>"_s;
        PageCamera camera(m_files.folder(), kSize, PageCamera::Mark::Below);
        for (int turn = 0; turn < 2; ++turn) {
            QImage taken;
            camera.take(page, [&](const QImage &picture) { taken = picture; });
            QTRY_VERIFY_WITH_TIMEOUT(!taken.isNull(), 20000);
            QCOMPARE(taken, pictureAtRest(m_files.folder(), page));
        }
        QCOMPARE(camera.unmarked(), 0);
    }

    void smaller()
    {
        PageCamera camera(m_files.folder(), kSize, PageCamera::Mark::Below);
        camera.setLeastWidth(kSize.width() / 3);
        const QSize half = kSize / 2;
        for (const QString &colour : {u"#ff0000"_s, u"#0000ff"_s}) {
            QImage taken;
            camera.take(u"<html><body><div style='position:absolute;left:%1px;top:0;width:%1px;height:%2px;"
                        "background:%3'></div>"_s.arg(half.width())
                            .arg(half.height())
                            .arg(colour),
                        [&](const QImage &picture) { taken = picture; });
            QTRY_VERIFY_WITH_TIMEOUT(!taken.isNull(), 20000);
            QCOMPARE(taken.size(), half);
            const int x = half.width() / 2, y = half.height() / 2;
            QCOMPARE(taken.pixelColor(x, y - 1), QColor(colour));
            QCOMPARE(taken.pixelColor(half.width() - 1, 0), QColor(colour));
            QCOMPARE(taken.pixelColor(x - 1, 0), QColor(Qt::white));
            QCOMPARE(taken.pixelColor(x, y), QColor(Qt::white));
        }
        QCOMPARE(camera.unmarked(), 0);
    }

    // So many that the small ones stand in the page themselves: one twice, one too large for it, some that
    // are missing or none.
    void manyPictures()
    {
        QString rules, body;
        for (int i = 0; i < 40; ++i) {
            QImage image(i == 7 ? QSize(200, 100) : QSize(6, 6), QImage::Format_RGB32);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    image.setPixel(x, y, qRgb(x * 97 * i, y * 41, (x * y * 7919 + i * 5) % 256));
            }
            const QString path = m_files.path(u"many_%1.png"_s.arg(i));
            if (i == 9)
                m_files.write(u"many_9.png"_s, "no picture");
            else if (i != 5)
                QVERIFY(image.save(path));
            rules += u"#d%1,#d%1_{background:url('%2')}"_s.arg(i).arg(path);
            for (const QString &end : {u""_s, i % 2 ? u"_"_s : u"no"_s})
                body +=
                    u"<div id='d%1%2' style='float:left;width:20px;height:11px'>url</div>"_s.arg(i).arg(end);
        }
        const QString page = u"<html><head><style>"_s + rules + u"</style></head><body>"_s + body;
        PageCamera camera(m_files.folder(), kSize);
        QImage taken;
        camera.take(page, [&](const QImage &picture) { taken = picture; });
        QTRY_VERIFY_WITH_TIMEOUT(!taken.isNull(), 20000);
        QCOMPARE(taken, pictureAtRest(m_files.folder(), page));
    }

    // One page after the other looks as each does alone, whether it is written over the one before or not.
    void after()
    {
        const auto pageOf = [](const QString &rules, const QString &body) -> QString {
            return u"<html><head><title>Tes Skin</title><style>"_s + rules + u"</style></head><body>"_s +
                   body + u"<body></html>"_s;
        };
        const QString box = u"<div style=\"position:fixed;left:%1px;top:0;width:40px;height:30px\">x</div>"_s;
        const QStringList pages = {
            pageOf(u"div{background:#f00}"_s, box.arg(0)),
            pageOf(u"div{background:#00f}html::after{content:'own';position:fixed;top:0}"_s, box.arg(3)),
            pageOf(u"div{background:url('%1')}"_s.arg(m_files.path(u"large.png"_s)),
                   box.arg(5) + box.arg(60)),
            pageOf(u"body{height:900px;scroll-snap-type:y mandatory}"_s, u"<input autofocus><p>p</p>"_s),
            pageOf(u"div{background:#0ff}"_s, box.arg(7))};
        PageCamera camera(m_files.folder(), kSize);
        QList<QImage> taken;
        for (const QString &page : pages)
            camera.take(page, [&](const QImage &picture) { taken.append(picture); });
        QTRY_COMPARE_WITH_TIMEOUT(taken.size(), pages.size(), 20000);
        for (qsizetype i = 0; i < pages.size(); ++i)
            QCOMPARE(taken[i], pictureAtRest(m_files.folder(), pages[i]));
    }

    // Each gets its own picture, in order, whatever the one before has done.
    void order()
    {
        PageCamera camera(m_files.folder(), kSize);
        QList<QRgb> taken;
        const auto use = [&](const QImage &picture) {
            taken.append(picture.isNull() ? 0 : picture.pixel(40, 0));
        };
        const auto pageOf = [](const QString &colour) -> QString {
            return u"<body bgcolor="_s + colour + u'>';
        };
        camera.take(pageOf(u"#ff0000"_s), use);
        camera.take(u"<p>"_s.repeated(400000), use); // too large
        camera.take(pageOf(u"#00ff00"_s), [&](const QImage &picture) {
            use(picture);
            camera.take(pageOf(u"#ffff00"_s), use);
        });
        camera.take(pageOf(u"#0000ff"_s), use);
        QVERIFY(taken.isEmpty()); // later
        QTRY_COMPARE_WITH_TIMEOUT(taken, (QList<QRgb>{0xffff0000, 0, 0xff00ff00, 0xff0000ff, 0xffffff00}),
                                  20000);

        taken.clear();
        camera.take(pageOf(u"#ff0000"_s), [](const QImage &) { qFatal("It was to be forgotten"); });
        camera.forget();
        camera.setSize({100, 50});
        camera.take(pageOf(u"#00ffff"_s), [&](const QImage &picture) {
            use(picture);
            QCOMPARE(picture.size(), QSize(100, 50));
            camera.forget();
        });
        camera.take(pageOf(u"#ff0000"_s), [](const QImage &) { qFatal("It was to be forgotten"); });
        QTRY_COMPARE_WITH_TIMEOUT(taken, QList<QRgb>{0xff00ffff}, 20000);
    }

private:
    const TestFiles m_files;
};

WINDOW_TEST_MAIN(TestPageCamera)
#include "tst_pagecamera.moc"
