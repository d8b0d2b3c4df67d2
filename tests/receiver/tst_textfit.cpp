#include "browser/forms/TextMeasurer.h"
#include "browser/forms/WebBrowser.h"
#include "receiver/TextFit.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QString kFont = u"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"_s;

} // namespace

class tst_textfit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void asDrawn_data();
    void asDrawn();
    void tooMuch();

private:
    QRect inkOf(const QString &window, const ReceiverTheme &theme);

    QTemporaryDir m_folder;
    QList<PageFont> m_fonts;
    WebBrowser m_browser;
    std::unique_ptr<TextMeasurer> m_measurer;
};

void tst_textfit::initTestCase()
{
    if (!QFile::copy(kFont, m_folder.filePath(u"sans.ttf"_s)))
        QSKIP("There is no font to try");
    m_fonts = {{u"font-a"_s, m_folder.filePath(u"sans.ttf"_s)}};
    m_browser.setThemeFolder(m_folder.path());
    m_browser.setFonts(m_fonts);
    m_measurer = std::make_unique<TextMeasurer>(m_folder.path(), m_fonts, textSheet());
    m_browser.resize(700, 400);
    m_browser.show();
}

void tst_textfit::asDrawn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("alignment");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("family");
    const auto row = [](const char *name, const QString &text, const char *alignment, const char *size,
                        const char *style = "", const char *family = "font-a") {
        QTest::newRow(name) << text << QString::fromLatin1(alignment) << QString::fromLatin1(size)
                            << QString::fromLatin1(style) << QString::fromLatin1(family);
    };
    row("plain", u"Channel lists"_s, "left|top", "22");
    row("right", u"Channel lists"_s, "right|bottom", "22");
    row("centre", u"Channel lists"_s, "hcentre|vcentre", "33");
    row("bold", u"Channel lists"_s, "left", "30", "bold");
    row("italic", u"fjall Tuff"_s, "hcentre", "60", "italic");
    row("bold italic", u"Tuff"_s, "hcentre", "60", "Bold Italic");
    row("another font", u"Channel"_s, "left", "40", "", "");
    row("right to left", u"\u0642\u0627\u0626\u0645\u0629 \u0627\u0644"_s, "left", "40");
    row("out of its line", u"\u0627\u0644\u0631\u0627\u062f\u064a\u0648"_s, "hcentre", "34", "bold", "");
    row("letters of several fonts", u"\u4e00 A\u0302gj"_s, "left|bottom", "40");
    row("no size", u"AVAVA"_s, "left|bottom", "");
    row("a part of a pixel", u"AVAVATa To Wonderful iiiiiii"_s, "left|bottom", "17.3");
    row("blanks", u"  a  b  "_s, "right", "20");
    row("entities", u"a &amp; <b>"_s, "left", "20");
}

// The ink that the page shows is where the measures say it is.
void tst_textfit::asDrawn()
{
    QFETCH(const QString, text);
    QFETCH(const QString, alignment);
    QFETCH(const QString, size);
    QFETCH(const QString, style);
    QFETCH(const QString, family);
    ReceiverTheme looks;
    looks.font = [&](const QString &) { return ReceiverTheme::Font{family, size, style}; };
    looks.translation = [&](const QString &) { return text; };
    const QSize room(500, 200);
    const QString window =
        u"<widget class=\"text\" name=\"a\"><property><rect>[100,100,%1,%2]</rect><forecolor>[#FFFFFF]"
        "</forecolor><string>text</string><alignment>%3</alignment></property></widget>"_s.arg(room.width())
            .arg(room.height())
            .arg(alignment);
    const auto texts = textsInRooms(Outline(window), looks);
    QCOMPARE(texts.size(), 1u);
    const SetText set{shownText(texts[0].set.source, looks.translation), texts[0].set.font};
    const auto extent = m_measurer->measure({set}).texts.value(set);
    QVERIFY(extent);
    const auto aligned = texts[0].set.alignment;
    const double x = 100 + (room.width() - double(extent->width)) * int(aligned.across) / 2,
                 y = 100 + (room.height() - double(extent->height)) * int(aligned.down) / 2;
    const QRect ink = inkOf(window, looks);
    constexpr double soft = 2; // pixels of the edge of a letter
    QCOMPARE_LE(std::abs(ink.left() - (x + double(extent->left))), soft);
    QCOMPARE_LE(std::abs(ink.right() + 1 - (x + double(extent->right))), soft);
    QCOMPARE_LE(std::abs(ink.top() - (y + double(extent->top))), soft);
    QCOMPARE_LE(std::abs(ink.bottom() + 1 - (y + double(extent->bottom))), soft);
}

// What a theme may have instead of texts and fonts costs no more than it is worth.
void tst_textfit::tooMuch()
{
    const QString bomb = m_folder.filePath(u"bomb.ttf"_s);
    QFile file(bomb);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\0\1\0\0", 4) + QByteArray(1 << 20, '\xff'));
    file.close();
    TextMeasurer measurer(m_folder.path(), m_fonts + QList<PageFont>{{u"font-bomb"_s, bomb}}, textSheet());
    const SetText huge{QString(1 << 20, u'w'), {}}, plain{u"w"_s, u"font-family:font-bomb,sans-serif"_s};
    QList<SetText> texts = {huge, plain};
    for (int i = 0; i < 5000; ++i)
        texts.append({u"Text "_s + QString::number(i), u"font-size:9999px"_s});
    const TextMeasures measures = measurer.measure(texts);
    QCOMPARE(measures.families, QSet<QString>{u"font-a"_s});
    QCOMPARE(measures.texts.size(), texts.size());
    QVERIFY(!measures.texts.value(huge));
    for (qsizetype i = 1; i < texts.size(); ++i)
        QVERIFY(measures.texts.value(texts.at(i)));

    // A browser that does not answer in time is given up, and others are not tried for ever.
    measurer.setPatience(0);
    for (const auto &extent : measurer.measure(texts).texts)
        QVERIFY(!extent);
    struct Enough
    {
    };
    measurer.setPatience(10000);
    QVERIFY_EXCEPTION_THROWN(measurer.measure(texts, [](qsizetype, qsizetype) { throw Enough(); }), Enough);
    QVERIFY(measurer.measure({plain}).texts.value(plain)); // and goes on after that
}

QRect tst_textfit::inkOf(const QString &window, const ReceiverTheme &theme)
{
    QSignalSpy drawn(&m_browser, &WebBrowser::drawn);
    m_browser.write(receiverPage(Outline(window), theme));
    if (!drawn.wait(20000))
        qFatal("The page does not come");
    QImage last, now = m_browser.grab().toImage();
    for (int same = 0; same < 3; same = now == last ? same + 1 : 0) {
        last = now;
        QTest::qWait(20);
        now = m_browser.grab().toImage();
    }
    QRect ink;
    for (int y = 0; y < now.height(); ++y) {
        for (int x = 0; x < now.width(); ++x) {
            if (now.pixelColor(x, y).lightness() > 64)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

int main(int argc, char **argv)
{
    WebBrowser::prepare();
    QApplication app(argc, argv);
    tst_textfit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_textfit.moc"
