#include "browser/forms/WebBrowser.h"
#include "receiver/ReceiverPage.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

struct Pixel
{
    int x, y;
    const char *colour; // "" for the ground
};

// A block of class text with these properties, [10,10,100,60] where nothing else is said.
QString block(const QString &properties, const QString &inside = {})
{
    const QString rect = properties.contains(u"<rect>"_s) ? QString() : u"<rect>[10,10,100,60]</rect>"_s;
    return u"<widget class=\"text\" name=\"a\"><property>"_s + rect + properties + u"</property>"_s +
           (inside.isEmpty() ? inside : u"<children>"_s + inside + u"</children>"_s) + u"</widget>"_s;
}

QString back(const QString &colours)
{
    return u"<backcolor>["_s + colours + u"]</backcolor>"_s;
}

const QString kFrame = u"<imgs><mode>multiple</mode><t_img>t</t_img><b_img>b</b_img><l_img>l</l_img>"
                       "<r_img>r</r_img><lt_img>lt</lt_img><rt_img>rt</rt_img><lb_img>lb</lb_img>"
                       "<rb_img>rb</rb_img></imgs>"_s;

} // namespace

class TestReceiver : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Of one colour each; edges have a first column, or row, of white.
        const auto draw = [this](const QString &name, QSize size, const QColor &colour,
                                 const QRect &white = {}) {
            QImage picture(size, QImage::Format_ARGB32);
            picture.fill(colour);
            QPainter(&picture).fillRect(white, Qt::white);
            QVERIFY(picture.save(m_folder.filePath(name + u".png"_s)));
            m_sizes.insert(name, size);
        };
        draw(u"lt"_s, {10, 8}, Qt::red);
        draw(u"rt"_s, {6, 4}, Qt::blue);
        draw(u"lb"_s, {4, 6}, Qt::yellow);
        draw(u"rb"_s, {12, 10}, Qt::cyan);
        draw(u"t"_s, {7, 3}, Qt::darkRed, {0, 0, 1, 3});
        draw(u"b"_s, {7, 5}, Qt::darkBlue, {0, 0, 1, 5});
        draw(u"l"_s, {2, 7}, Qt::darkYellow, {0, 0, 2, 1});
        draw(u"r"_s, {4, 7}, Qt::darkCyan, {0, 0, 4, 1});
        draw(u"wide"_s, {300, 20}, Qt::darkMagenta);
        draw(u"key"_s, {20, 20}, QColor(0, 255, 0));
        m_browser.setThemeFolder(m_folder.path());
        m_browser.resize(200, 120);
        m_browser.show();
    }

    void pixels_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("hidden");
        QTest::addColumn<QList<Pixel>>("pixels");
        const auto row = [](const char *name, const QString &window, const QList<Pixel> &pixels,
                            int state = 1, bool hidden = false) {
            QTest::newRow(name) << window << state << hidden << pixels;
        };
        const QString three = block(back(u"red,#00FF01,BLUE"_s));
        row("state 1", three,
            {{10, 10, "#ff0000"}, {109, 69, "#ff0000"}, {9, 10, ""}, {110, 69, ""}, {10, 70, ""}});
        row("state 2", three, {{50, 50, "#00ff01"}}, 2);
        row("a name in other letters is none", three, {{50, 50, ""}}, 3);
        row("the last one stands for the rest", block(back(u"red,blue"_s)), {{50, 50, "#0000ff"}}, 3);
        row("names of the browser", block(back(u"navy"_s)), {{50, 50, ""}});
        row("nothing is carried over", three + block(u"<rect>[120,10,20,20]</rect>"_s),
            {{125, 15, ""}, {50, 50, "#ff0000"}});
        row("key colours",
            three + block(back(u"GUI_trans"_s)) + block(back(u"#00Ff00"_s)) + block(back(u"key"_s)) +
                block(u"<imgs><mode>single</mode><img>key</img></imgs>"_s),
            {{50, 50, "#ff0000"}, {10, 10, "#00ff00"}});
        row("inside its parent, cut there",
            block(back(u"red"_s), block(u"<rect>[90,50,30,30]</rect>"_s + back(u"blue"_s))),
            {{99, 59, "#ff0000"}, {100, 60, "#0000ff"}, {110, 60, ""}, {100, 70, ""}});
        row("not behind what is no block of its own",
            u"<style name=\"s\"><property><rect>[0,0,200,120]</rect>"_s + back(u"blue"_s) +
                u"</property></style><!-- "_s + three + u" -->"_s + block(u"<rect>[1,2,3]</rect>"_s, three),
            {{50, 50, ""}});
        row("single", block(back(u"red"_s) + u"<imgs><mode>single</mode><img>wide</img></imgs>"_s),
            {{10, 10, "#800080"}, {109, 29, "#800080"}, {110, 29, ""}, {109, 30, "#ff0000"}});
        const QString both =
            block(u"<imgs><mode>single</mode><img>wide</img></imgs><unfocus_img>key</unfocus_img>"_s);
        row("without focus", both, {{10, 10, "#00ff00"}, {50, 10, ""}});
        row("with focus", both, {{10, 10, "#800080"}}, 2);
        row("hidden", block(back(u"red"_s) + u"<state>hide</state>"_s, three), {{50, 50, ""}, {25, 25, ""}});
        row("hidden, but shown", block(back(u"red"_s) + u"<state> HIDE</state>"_s), {{50, 50, "#7f0000"}}, 1,
            true);
        // The block is 100 x 60 at 10, 10.
        row("frame", block(back(u"green"_s) + kFrame),
            {{10, 10, "#ff0000"},  {19, 17, "#ff0000"},  {104, 10, "#0000ff"}, {103, 10, "#800000"},
             {109, 13, "#0000ff"}, {10, 69, "#ffff00"},  {13, 64, "#ffff00"},  {98, 60, "#00ffff"},
             {109, 69, "#00ffff"}, {20, 10, "#ffffff"},  {21, 12, "#800000"},  {27, 10, "#ffffff"},
             {21, 13, "#008001"},  {14, 69, "#ffffff"},  {15, 65, "#000080"},  {15, 64, "#008001"},
             {10, 18, "#ffffff"},  {11, 19, "#808000"},  {10, 25, "#ffffff"},  {12, 20, "#008001"},
             {106, 14, "#ffffff"}, {109, 15, "#008080"}, {105, 20, "#008001"}, {60, 40, "#008001"}});
        row("a piece that is missing takes no room",
            block(u"<imgs><mode>multiple</mode><t_img>t</t_img><lt_img>nothing</lt_img></imgs>"_s),
            {{10, 10, "#ffffff"}, {11, 10, "#800000"}, {109, 10, "#800000"}, {50, 13, ""}});
    }

    // Against values worked out by hand.
    void pixels()
    {
        QFETCH(const QString, window);
        QFETCH(const int, state);
        QFETCH(const bool, hidden);
        QFETCH(const QList<Pixel>, pixels);
        ReceiverOptions options;
        options.state = state;
        options.hiddenBlocks = hidden;
        write(window, options);
        QString other;
        const auto isShown = [&] {
            const QImage shot = m_browser.grab().toImage();
            other.clear();
            for (const Pixel &pixel : pixels) {
                const QColor expected =
                    *pixel.colour ? QColor(QLatin1String(pixel.colour)) : QColor(Qt::black);
                const QColor colour = shot.pixelColor(pixel.x, pixel.y);
                if (colour != expected)
                    other += u"%1, %2 is %3. "_s.arg(pixel.x).arg(pixel.y).arg(colour.name());
            }
            return other.isEmpty();
        };
        // Frames come from another process, some time after the page says that it is drawn.
        QVERIFY2(QTest::qWaitFor(isShown, 5000), qPrintable(other));
    }

    void texts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("alignment");
        QTest::addColumn<int>("across"); // -1, 0, 1: left, centre, right
        QTest::addColumn<int>("down");
        const QString across[] = {u"left"_s, u"hcentre"_s, u"right"_s},
                      down[] = {u"top"_s, u"vcentre"_s, u"bottom"_s};
        for (int x = 0; x < 3; ++x) {
            for (int y = 0; y < 3; ++y)
                QTest::addRow("%d, %d", x, y) << u"HH"_s << across[x] + u" | "_s + down[y] << x - 1 << y - 1;
        }
        QTest::newRow("none") << u"HH"_s << QString() << -1 << -1;
        QTest::newRow("letters, the last one counts") << u"HH"_s << u"right|LEFT|Bottom"_s << -1 << 1;
        QTest::newRow("right to left") << u"\u05d0\u05d1"_s << u"left"_s << -1 << -1;
    }

    // Where the ink is: the block is [20,10,160,100].
    void texts()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, alignment);
        QFETCH(const int, across);
        QFETCH(const int, down);
        const QRect ink = inkOf(text, alignment, {});
        const QRect room(20, 10, 160, 100);
        QVERIFY(room.contains(ink));
        const QPoint before = ink.topLeft() - room.topLeft(), behind = room.bottomRight() - ink.bottomRight();
        QCOMPARE(across, before.x() < 8 ? -1 : behind.x() < 8 ? 1 : 0);
        QCOMPARE(down, before.y() < 12 ? -1 : behind.y() < 12 ? 1 : 0);
        QVERIFY(across != 0 || std::abs(before.x() - behind.x()) <= 2);
    }

    void textIsNeverMarkup()
    {
        const QRect plain = inkOf(u"HH"_s, u"left"_s, {});
        ReceiverTheme theme;
        theme.translation = [](const QString &source) {
            return source == u"Hello" ? u"<b>H\nH</b> &amp; url('x')"_s : QString();
        };
        const QRect strange = inkOf(u"Hello"_s, u"left"_s, theme);
        QVERIFY(strange.width() > 3 * plain.width()); // all its letters, in one line
        QVERIFY(strange.height() < 2 * plain.height());
        QCOMPARE(inkOf(u"HH"_s, u"left"_s, theme), plain); // what has no translation stays
    }

    // Only fonts, only from the theme, and each once a document.
    void fonts()
    {
        QTemporaryDir other;
        const auto write = [](const QString &path, const QByteArray &bytes) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        };
        const QByteArray font("\0\1\0\0rest", 8);
        write(m_folder.filePath(u"good.ttf"_s), font);
        write(m_folder.filePath(u"open.otf"_s), "OTTOrest");
        write(m_folder.filePath(u"none.ttf"_s), "words");
        write(other.filePath(u"outside.ttf"_s), font);
        QVERIFY(QFile::link(other.filePath(u"outside.ttf"_s), m_folder.filePath(u"link.ttf"_s)));
        write(m_folder.filePath(u"large.ttf"_s), font);
        QVERIFY(QFile::resize(m_folder.filePath(u"large.ttf"_s), (16 << 20) + 1));
        QList<PageFont> fonts;
        for (const QString &name : {u"good.ttf"_s, u"open.otf"_s, u"none.ttf"_s, u"link.ttf"_s,
                                    u"large.ttf"_s, u"../x.ttf"_s, u"nowhere.ttf"_s})
            fonts.append({u"f%1"_s.arg(fonts.size()), m_folder.filePath(name)});
        fonts.append({u"f9"_s, other.filePath(u"outside.ttf"_s)});
        PageFonts page;
        page.set(fonts);
        QVERIFY(page.scripts().isEmpty()); // no theme
        page.forget();
        page.setThemeFolder(m_folder.path());
        const QStringList scripts = page.scripts();
        QCOMPARE(scripts.size(), 2);
        QVERIFY(scripts[0].contains(QLatin1String(font.toBase64())) && scripts[0].contains(u"'f0'"_s));
        QVERIFY(page.scripts().isEmpty());
        page.forget();
        QCOMPARE(page.scripts(), scripts);
    }

    void inItsOwnFont()
    {
        const QString mono = u"/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf"_s;
        if (!QFile::copy(mono, m_folder.filePath(u"mono.ttf"_s)))
            QSKIP("There is no font to try");
        ReceiverTheme theme;
        theme.font = [](const QString &) { return ReceiverTheme::Font{u"mono"_s, u"20"_s, {}}; };
        const QRect before = inkOf(u"iiiiiiii"_s, u"left"_s, theme);
        m_browser.setFonts({{u"mono"_s, m_folder.filePath(u"mono.ttf"_s)}});
        const QRect own = inkOf(u"iiiiiiii"_s, u"left"_s, theme);
        QVERIFY(own.width() > before.width() + 20);
        m_browser.beginDocument(); // a document without it
        QCOMPARE(inkOf(u"iiiiiiii"_s, u"left"_s, theme), own);
    }

    // Depth and number cost no more than the text.
    void deepAndMany()
    {
        QString deep, closing;
        for (int i = 0; i < 10000; ++i) {
            deep += u"<widget name=\"a\"><property><rect>[1,0,5,5]</rect>"_s + back(u"red"_s) +
                    u"</property><children>"_s;
            closing += u"</children></widget>"_s;
        }
        ReceiverOptions options;
        options.cutsChildren = false;
        const QImage shot = shown(deep + closing, options);
        QCOMPARE(shot.pixelColor(199, 4), QColor(Qt::red));
        QCOMPARE(shot.pixelColor(199, 5), QColor(Qt::black));
    }

private:
    ReceiverTheme withRest(ReceiverTheme theme) const
    {
        theme.picture = [this](const QString &id) {
            return m_sizes.contains(id) ? m_folder.filePath(id + u".png"_s) : QString();
        };
        theme.sizeOf = [this](const QString &path) { return m_sizes.value(QFileInfo(path).baseName()); };
        theme.colour = [](const QString &name) {
            static const QHash<QString, QString> codes = {{u"red"_s, u"#FF0000"_s},
                                                          {u"blue"_s, u"#0000FF"_s},
                                                          {u"green"_s, u"#008001"_s},
                                                          {u"key"_s, u"#FF00FF"_s}};
            return codes.value(name);
        };
        return theme;
    }

    void write(const QString &window, const ReceiverOptions &options, const ReceiverTheme &theme = {})
    {
        QSignalSpy drawn(&m_browser, &WebBrowser::drawn);
        m_browser.write(receiverPage(Outline(window), withRest(theme), options));
        if (!drawn.wait(20000))
            qFatal("The page does not come");
    }

    QImage shown(const QString &window, const ReceiverOptions &options, const ReceiverTheme &theme = {})
    {
        write(window, options, theme);
        QImage last, now = m_browser.grab().toImage();
        for (int same = 0; same < 3; same = now == last ? same + 1 : 0) {
            last = now;
            QTest::qWait(20);
            now = m_browser.grab().toImage();
        }
        return now;
    }

    QRect inkOf(const QString &text, const QString &alignment, const ReceiverTheme &theme)
    {
        const QString window =
            block(u"<rect>[20,10,160,100]</rect><forecolor>[#FFFFFF]</forecolor><string>"_s + text +
                  u"</string><alignment>"_s + alignment + u"</alignment>"_s);
        const QImage shot = shown(window, {}, theme);
        QRect ink;
        for (int y = 0; y < shot.height(); ++y) {
            for (int x = 0; x < shot.width(); ++x) {
                if (shot.pixelColor(x, y).lightness() > 128)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    }

    QTemporaryDir m_folder;
    QHash<QString, QSize> m_sizes;
    WebBrowser m_browser;
};

int main(int argc, char **argv)
{
    WebBrowser::prepare();
    QApplication app(argc, argv);
    TestReceiver test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_receiver.moc"
