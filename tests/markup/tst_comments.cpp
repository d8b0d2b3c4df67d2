#include "markup/Comments.h"
#include "markup/LiteralTwins.h"

#include <QTest>

using namespace quillmere;

class TestComments : public QObject
{
    Q_OBJECT

private slots:
    void removes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("all");
        const auto row = [](const char *name, const char *text, const char *one, const char *all) {
            QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(one)
                                << QString::fromLatin1(all);
        };
        row("two alike in one go", "a<!--x-->b<!--X-->c<!--y-->", "abc<!--y-->", "abc");
        row("unterminated", "a<!--x", "a<!--x", "a<!--x");
        row("unterminated behind another", "<!--y-->a<!--x", "a<!--x", "a<!--x");
        row("shortest", "a<!-->b<!--->c", "ab<!--->c", "abc");
        row("stray end first", "a-->b<!--c-->d-->", "ab<!--cd", "ab<!--cd");
        row("stray end alone", "a-->b", "ab", "a-->b");
        row("copy inside a longer one", "<!--a--> <!--b<!--a--> c", " <!--b c", " <!--b c");
        row("opener joined", "<!<!--a-->--b-->c", "<!--b-->c", "c");
        row("closer joined", "<!--b<!--a-->c--<!--b<!--a-->>d", "c-->d", "c-->d");
        row("nothing", "", "", "");
    }

    void removes()
    {
        QFETCH(QString, text);
        QString one = text;
        GetRemoveComment(one);
        QTEST(one, "one");
        QTEST(RemoveComment(text), "all");
        QTEST(text, "all");
    }

    void removesFromRandomTextLikeItsSteps_data()
    {
        QTest::addColumn<QString>("tokens");
        QTest::addColumn<int>("rounds");
        QTest::addColumn<int>("longest");
        QTest::newRow("any") << "<!-- --> < ! - > a A" << 12000 << 24;
        QTest::newRow("copies in longer ones")
            << "<!-- <!-- a --> --> <!--a--> <!--A--> <!--b b" << 12000 << 16;
        QTest::newRow("joined openers") << "<!--a--> <!--b--> <! -- --> <!-- a" << 12000 << 16;
        QTest::newRow("joined closers") << "<!--a--> <!--b--> -- > <!-- <!--" << 12000 << 16;
        QTest::newRow("strays in strays") << "-- > --> - <! <!-- ----->> <!--a-->" << 12000 << 20;
        QTest::newRow("halves") << "<!--a--> <!--b--> <!--<!--a--> <! <!- - -- > -> a" << 12000 << 20;
        QTest::newRow("without strays") << "<!--a--> <!--b--> <!--a <!--b <!--<!--a--> a-->" << 12000 << 16;
        QTest::newRow("long") << "<!--a--> <!--b--> <! -- > <!-- a b <!--a <!--<!--b-->" << 12 << 900;
    }

    void removesFromRandomTextLikeItsSteps()
    {
        QFETCH(QString, tokens);
        QFETCH(int, rounds);
        QFETCH(int, longest);
        QRandomGenerator random(9);
        for (int round = 0; round < rounds; ++round) {
            const QString text = twins::randomText(random, tokens.split(u' '), random.bounded(longest));
            QString one = text;
            QCOMPARE(GetRemoveComment(one), twins::getRemoveComment(text));
            QString all = text;
            RemoveComment(all);
            const QString expected = twins::removeComment(text);
            QVERIFY2(all == expected, qPrintable(text + u'\n' + all + u'\n' + expected));
        }
    }
};

QTEST_APPLESS_MAIN(TestComments)
#include "tst_comments.moc"
