#include "markup/LiteralTwins.h"
#include "markup/mndIni.h"

#include <QTest>

using namespace quillmere;

class TestMndIni : public QObject
{
    Q_OBJECT

private slots:
    void cutsField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("separators");
        QTest::addColumn<int>("index1");
        QTest::addColumn<int>("index2");
        QTest::addColumn<QString>("field");
        const auto row = [](const char *name, QStringView text, QStringView separator1,
                            QStringView separator2, int index1, int index2, QStringView field) {
            QTest::newRow(name) << text.toString()
                                << QStringList{separator1.toString(), separator2.toString()} << index1
                                << index2 << field.toString();
        };
        row("between markers", u"a<config>x</config>y<config>z", u"<config>", u"</config>", 1, 0, u"x");
        row("first element", u" <img a>", u"<", u">", 1, 0, u"img a");
        row("only in another case", u"<CONFIG>x", u"<config>", u"", 1, 0, u"");
        row("cut at another case too", u"<A>x<a>y", u"<a>", u"", 1, 0, u"x");
        row("second absent", u"<a>x", u"<a>", u"</a>", 1, 0, u"x");
        row("second only in another case", u"<a>x</A>", u"<a>", u"</a>", 1, 0, u"x</A>");
        row("second with too few pieces", u"<a>x</a>y", u"<a>", u"</a>", 1, 2, u"x</a>y");
        row("first with too few pieces", u"<a>x", u"<a>", u"</a>", 2, 0, u"");
        row("piece at the end is empty", u"a,b,", u",", u"", 2, 0, u"");
        row("empty text", u"", u"", u"", 0, 0, u"");
        row("empty first separator", u"x,y", u"", u",", 0, 1, u"y");
        row("negative index", u"x,y", u",", u"", -1, 0, u"");
    }

    void cutsField()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, separators);
        QFETCH(int, index1);
        QFETCH(int, index2);
        QTEST(SplitField(text, separators[0], separators[1], index1, index2), "field");
    }

    void cutsFieldLikeItsSteps()
    {
        QRandomGenerator random(5);
        const QStringList tokens = QStringLiteral("a A < > / b").split(u' ');
        for (int round = 0; round < 20000; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(20));
            const QString first = twins::randomText(random, tokens, random.bounded(1, 3));
            const QString second = twins::randomText(random, tokens, random.bounded(3));
            const int index1 = random.bounded(4);
            const int index2 = random.bounded(4);
            QVERIFY2(SplitField(text, first, second, index1, index2) ==
                         twins::splitField(text, first, second, index1, index2),
                     qPrintable(QStringLiteral("%1 | %2 | %3 | %4 | %5")
                                    .arg(text, first, second)
                                    .arg(index1)
                                    .arg(index2)));
        }
    }

    void stripsControlCharsLikeItsSteps()
    {
        QRandomGenerator random(1);
        QStringList tokens = QStringLiteral("a b").split(u' ');
        for (const char16_t code : {0, 1, 9, 10, 13, 31, 32, 32, 33, 127, 160})
            tokens += QString(QChar(code));
        for (int round = 0; round < 5000; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(14));
            QString actual = text;
            const QString returned = StripControlChars(actual);
            QVERIFY2(actual == twins::stripControlChars(text), qPrintable(twins::shown(text)));
            QCOMPARE(returned, actual);
        }
    }

    void closesUpEqualsLikeItsSteps()
    {
        QRandomGenerator random(7);
        QStringList tokens = QStringLiteral("= = = a \t \r\n \u00A0").split(u' ');
        for (const int blanks : {1, 2, 50, 99, 100, 101, 199, 200, 201, 330})
            tokens += QString(blanks, u' ');
        for (int round = 0; round < 600; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(12));
            QString actual = text;
            CloseUpEquals(actual);
            QVERIFY2(actual == twins::closeUpEquals(text),
                     qPrintable(twins::shown(text) + u'\n' + twins::shown(actual)));
        }
    }
};

QTEST_APPLESS_MAIN(TestMndIni)
#include "tst_mndini.moc"
