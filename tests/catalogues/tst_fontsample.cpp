#include "catalogues/FontSample.h"
#include "files/TestFiles.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class tst_fontsample : public QObject
{
    Q_OBJECT

private slots:
    void letters()
    {
        UsedLetters letters;
        letters.add(u"<tran id=\"Yes\">Ja, schön. Да! \u05dc\u05d0 2\u00bd \U0001f600 \U00010400"_s);
        letters.add(u"Ä ö да"_s);
        QCOMPARE(letters.lines(), (QStringList{u"Äö"_s, u"Дад"_s, u"\u05d0\u05dc"_s, u"\U00010400"_s}));

        // Of a script with thousands of letters the most used ones stand for it.
        UsedLetters many;
        QString all;
        for (char16_t letter = 0x4e00; letter < 0x5e00; ++letter)
            all += QChar(letter);
        many.add(all);
        many.add(u"\u5dff"_s);
        QCOMPARE(many.lines().size(), 1);
        QCOMPARE(many.lines().first().size(), 48);
        QVERIFY(many.lines().first().endsWith(u'\u5dff'));
    }

    void page()
    {
        const auto rules = [](const QString &size, const QString &style) {
            const QString page =
                fontSamplePage({u"a.ttf"_s, size, style}, {u"f"_s, u"#fff"_s, u"#000"_s}, {});
            return page.section(u"sans-serif;"_s, 1).section(u'}', 0, 0);
        };
        QCOMPARE(rules(u" 24 "_s, u"Bold Italic"_s), u"font-size:24px;font-style:italic;font-weight:bold;"_s);
        QCOMPARE(rules(u"1e9"_s, u"normal"_s), u"font-size:200px;"_s);
        for (const QString &size : {u"-3"_s, u"nan"_s, u"large;}"_s, QString()})
            QCOMPARE(rules(size, {}), QString());
    }

    void whyNot_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("why"); // its end
        QTest::newRow("a file") << u"theme/font/a.ttf"_s << QString();
        QTest::newRow("other letters") << u"theme/FONT/A.TTF"_s << QString();
        QTest::newRow("no name") << u"theme/font/"_s << u"names no file."_s;
        QTest::newRow("missing") << u"theme/font/b.ttf"_s << u"There is no font file \"b.ttf\"."_s;
        QTest::newRow("outside") << u"theme/font/../../out.ttf"_s << u"\"out.ttf\" is outside the theme."_s;
        QTest::newRow("outside, missing") << u"theme/../no.ttf"_s << u"\"no.ttf\" is outside the theme."_s;
        QTest::newRow("a link that leaves") << u"theme/font/l.ttf"_s << u"\"l.ttf\" is outside the theme."_s;
        QTest::newRow("17 MB") << u"theme/font/big.ttf"_s << u"\"big.ttf\" is larger than 16 MB."_s;
    }

    void whyNot()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, why);
        const TestFiles files;
        files.write(u"theme/font/a.ttf"_s);
        QVERIFY(QFile::resize(files.write(u"theme/font/big.ttf"_s), 17LL * 1024 * 1024));
        QVERIFY(QFile::link(files.write(u"out.ttf"_s), files.path(u"theme/font/l.ttf"_s)));
        const QString said = whyNoFont(files.path(path), files.path(u"theme"_s));
        QVERIFY2(said.endsWith(why) && said.isEmpty() == why.isEmpty(), qPrintable(said));
    }
};

QTEST_GUILESS_MAIN(tst_fontsample)
#include "tst_fontsample.moc"
