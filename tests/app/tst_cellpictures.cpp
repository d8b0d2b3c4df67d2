#include "OwnWork.h"
#include "app/CellTest.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace quillmere;

// Which pictures a page gets, and when.
class TestCellPictures : public CellTest
{
    Q_OBJECT

private slots:
    void init() { begin(); }

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

private:
    void link(const char *target, const char *name) const
    {
        QFile::remove(path(name));
        QVERIFY(QFile::link(path(target), path(name)));
    }
    // Whether these places, and no others, get red.
    bool reddens(const Attempts &attempts, const Names &places) const
    {
        return waitFor([&] { return redPlaces(*m_wb, attempts) == places; }, 10000);
    }
};

WINDOW_TEST_MAIN(TestCellPictures)
#include "tst_cellpictures.moc"
