#include "gallery/ContentNames.h"
#include "gallery/PictureDifference.h"
#include "gallery/SheetLayout.h"
#include "gallery/SheetText.h"

#include "files/TestFiles.h"

#include <QTest>

#include <vector>

using namespace quillmere;
using namespace Qt::StringLiterals;

class tst_sheets : public QObject
{
    Q_OBJECT

private slots:
    void layout_data()
    {
        QTest::addColumn<int>("windows");
        QTest::addColumn<int>("columns");
        QTest::addColumn<QSize>("whole"); // empty: none fits
        QTest::newRow("one") << 1 << 1 << QSize(344, 226);
        QTest::newRow("fewer than columns") << 2 << 4 << QSize(4 * 332 + 12, 226);
        QTest::newRow("a row and one") << 5 << 4 << QSize(4 * 332 + 12, 2 * 214 + 12);
        QTest::newRow("thousands") << 2000 << 4 << QSize(4 * 228 + 12, 500 * 155 + 12);
        QTest::newRow("one below the other") << 2000 << 1 << QSize(236, 2000 * 160 + 12);
        QTest::newRow("too many") << 1000000 << 4 << QSize();
    }

    void layout()
    {
        QFETCH(const int, windows);
        QFETCH(const int, columns);
        QFETCH(const QSize, whole);
        const auto made = SheetLayout::of(windows, columns, {1280, 720});
        QCOMPARE(made.has_value(), !whole.isEmpty());
        if (!made)
            return;
        QVERIFY(qint64(made->whole.width()) * made->whole.height() <= 60'000'000);
        QCOMPARE(made->whole.width() <= 4 * 332 + 12, true);
        const QPoint last = made->placeOf(windows - 1);
        QCOMPARE(last.x(), 12 + (windows - 1) % columns * (made->picture.width() + 12));
        QCOMPARE(last.y() + made->cell().height() + 12, made->whole.height());
        if (windows < 2000)
            QCOMPARE(made->whole, whole);
    }

    void difference()
    {
        const std::vector<quint32> before = {0xff000000, 0xffffffff, 0xff102030, 0x00000000},
                                   after = {0xff000000, 0xfffffffe, 0xff102030, 0xff000000};
        std::vector<quint32> marked(before.size());
        QCOMPARE(pictureDifference(before, after, marked), 2);
        QCOMPARE(marked[0], 0xffc0c0c0);
        QCOMPARE(marked[1], 0xffe00000);
        QVERIFY(marked[2] != 0xffe00000);
        QCOMPARE(marked[3], 0xffe00000);
        QCOMPARE(pictureDifference(before, before, marked), 0);
    }

    // Nothing of a theme becomes markup, or leads elsewhere.
    void texts()
    {
        const QString name = u"<b>\"&'</b>"_s;
        const QByteArray sheet =
            sheetBegin(name, 3) + sheetCell(name, {}, name) + sheetCell(name, "png", {}) + sheetEnd();
        const QByteArray report = comparisonReport(
            name, name, {{name, {}, 7, u"a#%.png"_s, u"a\"b.png"_s, {}}, {name, name, 0, {}, {}, {}}}, 5);
        for (const QByteArray &text : {sheet, report}) {
            QVERIFY(!text.contains("<b>"));
            QVERIFY(!text.contains("&'"));
            for (const char *way : {"http:", "https:", "<script", "<a ", "href"})
                QVERIFY2(!text.contains(way), way);
        }
        QVERIFY(sheet.contains("repeat(3,"));
        QVERIFY(sheet.contains("data:image/png;base64,cG5n\""));
        QVERIFY(report.contains("src=\"./a%23%25.png\""));
        QVERIFY(report.contains("src=\"./a%22b.png\""));
        QVERIFY(report.contains("7 pixels differ"));
        QVERIFY(report.contains("2 of 5 windows"));
    }

    void contents()
    {
        const TestFiles files;
        for (const char *name : {"one/a.png", "two/b.png"})
            files.write(QLatin1String(name), "same");
        files.write(u"two/c.png"_s, "other");
        files.write(u"two/d.svg"_s, "same");
        files.write(u"two/e'.png"_s, "same");
        QVERIFY(QFile::link(files.path(u"one/a.png"_s), files.path(u"two/link.png"_s)));
        ContentNames one(files.path(u"one"_s)), two(files.path(u"two"_s));
        const QString name = one.of(files.path(u"one/a.png"_s));
        QVERIFY(name.startsWith(u'/'));
        QCOMPARE(two.of(files.path(u"two/b.png"_s)), name);
        QCOMPARE(two.pathOf(name), files.path(u"two/b.png"_s));
        QVERIFY(two.of(files.path(u"two/c.png"_s)) != name);
        QVERIFY(two.of(files.path(u"two/d.svg"_s)) != name);
        QVERIFY(one.certain() && two.certain());
        for (const char *unsure : {"two/link.png", "two/none.png", "two/e'.png", "one/a.png"}) {
            two.of(files.path(QLatin1String(unsure)));
            QVERIFY2(!two.certain(), unsure);
        }
        QVERIFY(two.certain());
    }
};

QTEST_GUILESS_MAIN(tst_sheets)
#include "tst_sheets.moc"
