#include "markup/InsertCode.h"
#include "markup/LiteralTwins.h"
#include "markup/Matching.h"
#include "markup/TagWidget.h"

#include <QTest>

using namespace quillmere;

class TestMatching : public QObject
{
    Q_OBJECT

private slots:
    void findsIgnoringCase_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("marker");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("exact");
        const auto row = [](const char *name, QStringView text, QStringView marker, int from, int at,
                            int exact) {
            QTest::newRow(name) << text.toString() << marker.toString() << from << at << exact;
        };
        row("anchor in front", u"a<b <Widget x", u"<widget ", 0, 4, -1);
        row("anchor behind", u"name Name=\"", u"NAME=\"", 0, 5, -1);
        row("anchor too near the start", u"=id=", u"ID=", 0, 1, -1);
        row("no anchor", u"aAbAB", u"ab", 0, 1, -1);
        row("marker without letters", u"a--->", u"-->", 0, 2, 2);
        row("behind the match", u"<A><a>", u"<a>", 1, 3, 3);
        row("outside ASCII", u"x\u00C4\u0416y", u"\u00E4\u0436", 0, 1, -1);
        row("not a case pair", u"@[`{", u"`{", 0, 2, 2);
        row("kelvin sign is a k", u"\u212A", u"k", 0, 0, -1);
        row("sharp s is not two", u"ss", u"\u00DF", 0, -1, -1);
        row("units of a pair keep their case", u"\U00010400", u"\U00010428", 0, -1, -1);
        row("cut at the end", u"<widget", u"<widget ", 0, -1, -1);
        row("empty text", u"", u"", 0, -1, -1);
        row("empty marker", u"ab", u"", 1, 1, 1);
        row("from before the text", u"ab", u"A", -3, 0, -1);
        row("from behind the text", u"ab", u"a", 9, -1, -1);
    }

    void findsIgnoringCase()
    {
        QFETCH(QString, text);
        QFETCH(QString, marker);
        QFETCH(int, from);
        QTEST(int(indexOfIgnoringCase(text, marker, from)), "position");
        QTEST(int(indexOfExact(text, marker, from)), "exact");
    }

    void splits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QStringList>("pieces");
        QTest::addColumn<QStringList>("exactPieces");
        const auto row = [](const char *name, const char *text, const char *separator, const char *pieces,
                            const char *exactPieces) {
            const auto list = [](const char *joined) { return QString::fromLatin1(joined).split(u'|'); };
            QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(separator) << list(pieces)
                                << list(exactPieces);
        };
        row("mixed case", "a<B>c<b>d", "<b>", "a|c|d", "a<B>c|d");
        row("at both ends", "<b>x<b>", "<b>", "|x|", "|x|");
        row("without overlap", "aaa", "aa", "|a", "|a");
        row("separator absent", "ab", ",", "ab", "ab");
        row("empty separator", "ab", "", "ab", "ab");
        QTest::newRow("empty text") << QString() << QStringLiteral("a") << QStringList() << QStringList();
    }

    void splits()
    {
        QFETCH(QString, text);
        QFETCH(QString, separator);
        const auto strings = [](const QList<QStringView> &views) {
            QStringList list;
            for (const QStringView view : views)
                list += view.toString();
            return list;
        };
        QTEST(strings(splitIgnoringCase(text, separator)), "pieces");
        QTEST(strings(splitExact(text, separator)), "exactPieces");
    }

    void replacesLikeTheLibrary()
    {
        QRandomGenerator random(20);
        const QStringList tokens = QStringLiteral("a A b B < = - \u00E4 \u00C4").split(u' ');
        for (int round = 0; round < 20000; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(30));
            const QString from = twins::randomText(random, tokens, random.bounded(1, 4));
            const QString to = twins::randomText(random, tokens, random.bounded(5));
            QString expected = text;
            expected.replace(from, to, Qt::CaseInsensitive);
            QString actual = text;
            replaceIgnoringCase(actual, from, to);
            QVERIFY2(actual == expected, qPrintable(QStringList({text, from, to, actual}).join(u'\n')));
        }
    }

    void replacesWithPiecesOfTheTextItself()
    {
        QString text = QStringLiteral("ab,AB,cd");
        const QStringView view = text;
        replaceIgnoringCase(text, view.first(2), view.last(3));
        QCOMPARE(text, QStringLiteral(",cd,,cd,cd"));
        replaceIgnoringCase(text, QStringView(), u"x");
        QCOMPARE(text, QStringLiteral(",cd,,cd,cd"));
    }

    void cutsOpeningTag_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("tag");
        const auto row = [](const char *name, QStringView document, QStringView tag) {
            QTest::newRow(name) << document.toString() << tag.toString();
        };
        row("self-closed", u"<x name=\"N\"/><widget name=\"M\"/><WIDGET a=\"1\" name=\"N\" />z",
            u"<widget a=\"1\" name=\"N\" />");
        row("first of two", u"<widget name=\"N\" b=\"1\"/><widget name=\"N\"/>",
            u"<widget name=\"N\" b=\"1\"/>");
        row("up to the first end inside", u"<widget name=\"N\"><img/></widget>",
            u"<widget name=\"N\"><img/>");
        row("no end", u"<widget name=\"N\"></widget><widget />", u"<widget />");
        row("other case", u"<widget name=\"n\"/>", u"");
        row("empty", u"", u"");
    }

    void cutsOpeningTag()
    {
        QFETCH(QString, document);
        QTEST(GetTagWidget(document, u"N"), "tag");
    }

    void wrapsSelection_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("selected");
        const auto row = [](const char *name, int start, int length, QStringView text, QStringView selected) {
            QTest::newRow(name) << start << length << text.toString() << selected.toString();
        };
        row("inside", 1, 2, u"a<i>bc</i>d", u"bc");
        row("nothing selected", 2, 0, u"ab<i></i>cd", u"");
        row("everything", 0, 4, u"<i>abcd</i>", u"abcd");
        row("beyond the end", 3, 9, u"abc<i>d</i>", u"d");
        row("behind the text", 9, 1, u"abcd<i></i>", u"");
        row("before the text", -2, 3, u"<i>abc</i>d", u"abc");
    }

    void wrapsSelection()
    {
        QFETCH(int, start);
        QFETCH(int, length);
        QFETCH(QString, text);
        const TextSelection result = InsertCode({QStringLiteral("abcd"), start, length}, u"<i>", u"</i>");
        QCOMPARE(result.text, text);
        QTEST(result.text.mid(result.start, result.length), "selected");
        QCOMPARE(result.start, qsizetype(text.indexOf(u'>') + 1));
    }
};

QTEST_APPLESS_MAIN(TestMatching)
#include "tst_matching.moc"
