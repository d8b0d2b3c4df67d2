#include "markup/Comments.h"
#include "markup/FormatXML.h"
#include "markup/InsertCode.h"
#include "markup/LiteralDifference.h"
#include "markup/LiteralTwins.h"
#include "markup/Matching.h"
#include "markup/TagWidget.h"
#include "markup/mndIni.h"

#include <QTest>

#include <algorithm>

using namespace quillmere;
using S = QStringView;

// Each routine is held to its slow form on random text; the rows are for what both might have wrong.
class TestMarkup : public QObject
{
    Q_OBJECT

private:
    static QStringList list(S tokens) { return tokens.toString().split(u'|'); }

    template <typename Routine, typename Twin>
    static void compare(Routine routine, Twin twin, const QStringList &tokens, int rounds, int longest)
    {
        QRandomGenerator random(9);
        for (int round = 0; round < rounds; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(longest));
            QString actual = text;
            const QString returned = routine(actual);
            QCOMPARE(QString(text + u" -> " + actual), QString(text + u" -> " + twin(text)));
            QCOMPARE(returned, actual);
        }
    }

private slots:
    void replacesAllInTurn()
    {
        const QStringList tokens = list(u"a|B|b|A|k|\u212a|<|");
        QRandomGenerator random(61);
        for (int round = 0; round < 5000; ++round) {
            QString actual = twins::randomText(random, tokens, random.bounded(40));
            QString expected = actual;
            QList<Replacement> pairs;
            for (int pair = random.bounded(4); pair >= 0; --pair)
                pairs.append({twins::randomText(random, tokens, random.bounded(4)),
                              twins::randomText(random, tokens, random.bounded(4))});
            for (const Replacement &pair : pairs)
                replaceIgnoringCase(expected, pair.from, pair.to);
            QCOMPARE(replaceAllIgnoringCase(actual, pairs), expected);
        }
    }

    void comparesLines()
    {
        QRandomGenerator random(33);
        for (int round = 0; round < 5000; ++round) {
            const QString from = twins::randomText(random, list(u"a\n|b\n|c\r\n"), random.bounded(20));
            const QString to = twins::randomText(random, list(u"a\r\n|b\n|d\n"), random.bounded(20));
            const qsizetype context = random.bounded(3);
            const LineDifference difference = compareLines(from, to, context);
            QStringList a = QString(from).remove(u'\r').split(u'\n'),
                        b = QString(to).remove(u'\r').split(u'\n');
            a.removeLast();
            b.removeLast();
            QCOMPARE(a.size() - difference.gone, literal::commonLines(a, b));
            QCOMPARE(literal::applied(difference, a), b);
        }
    }

    void findsLikeTheLibrary()
    {
        QRandomGenerator random(20);
        const QStringList tokens = list(u"a|A|b|B|k|<|=|-| |@|`|[|\u00E4|\u00C4|\u0416|\u0436|\u212A|\u00DF");
        for (int round = 0; round < 20000; ++round) {
            const QString text = twins::randomText(random, tokens, random.bounded(1, 30));
            const QString from = twins::randomText(random, tokens, random.bounded(1, 4));
            const QString to = twins::randomText(random, tokens, random.bounded(5));
            QString replaced = text;
            const QString call = text + u" | " + from + u" | " + to + u" -> ";
            replaceIgnoringCase(replaced, from, to);
            QCOMPARE(QString(call + replaced),
                     QString(call + QString(text).replace(from, to, Qt::CaseInsensitive)));
            const QStringList pieces = text.split(from, Qt::KeepEmptyParts, Qt::CaseInsensitive);
            QVERIFY2(std::ranges::equal(splitIgnoringCase(text, from), pieces), qPrintable(call));
            QVERIFY2(std::ranges::equal(splitExact(text, from), text.split(from)), qPrintable(call));
        }
    }

    void finds()
    {
        QCOMPARE(indexOfIgnoringCase(u"<A><a>", u"<a>", 1), 3);
        QCOMPARE(indexOfIgnoringCase(u"\u212A", u"k", -3), 0); // the Kelvin sign
        QCOMPARE(indexOfIgnoringCase(u"ss", u"\u00DF"), -1);
        QCOMPARE(indexOfIgnoringCase(u"\U00010400", u"\U00010428"), -1);
        QCOMPARE(indexOfIgnoringCase(u"ab", u"a", 9) + indexOfExact(u"ab", u"a", 9), -2);
        QCOMPARE(indexOfIgnoringCase(u"", u"") + indexOfExact(u"", u""), -2);
        QCOMPARE(indexOfIgnoringCase(u"ab", u"", 1) + indexOfExact(u"ab", u"", 1), 2);
        QCOMPARE(indexOfExact(u"abAb", u"A", -3), 2);
        QCOMPARE(splitIgnoringCase(u"", u"a") + splitExact(u"", u"a"), QList<S>());
        QCOMPARE(splitIgnoringCase(u"ab", u"") + splitExact(u"ab", u""), QList<S>({u"ab", u"ab"}));
        QString text = QStringLiteral("ab,AB,cd"); // replaced with pieces of the text itself
        replaceIgnoringCase(text, S(text).first(2), S(text).last(3));
        QCOMPARE(replaceIgnoringCase(text, S(), u"x"), QStringLiteral(",cd,,cd,cd"));
    }

    void rewrites()
    {
        const auto tag = [](S document) { return GetTagWidget(document, u"N"); };
        QCOMPARE(tag(u"<x name=\"N\"/><widget name=\"M\"/><WIDGET a=\"1\" name=\"N\"><img/></widget>"),
                 QStringLiteral("<widget a=\"1\" name=\"N\"><img/>"));
        QCOMPARE(tag(u"<widget name=\"N\"></widget><widget />"), QStringLiteral("<widget />"));
        QCOMPARE(tag(u"<widget name=\"n\"/>"), QString());
        const auto rewritten = [](QString (*routine)(QString &), const char *text) {
            QString copy = QString::fromLatin1(text);
            return routine(copy);
        };
        QCOMPARE(rewritten(GetRemoveComment, "a<!--x-->b<!--X-->c<!--y-->"), QStringLiteral("abc<!--y-->"));
        QCOMPARE(rewritten(GetRemoveComment, "a<!-->b<!--->c"), QStringLiteral("ab<!--->c"));
        QCOMPARE(rewritten(RemoveComment, "<!--y-->a<!--x"), QStringLiteral("a<!--x"));
        QCOMPARE(rewritten(RemoveComment, "a-->b<!--c-->d-->"), QStringLiteral("ab<!--cd"));
        QCOMPARE(rewritten(FormatXML,
                           "<?xml?>\n\t<Widget  name>\n\n   <string/> <IMG/>\r\n\t\t<Property></widget>"),
                 QStringLiteral("<?xml?>\r\n<widget name>\r\n     <string></string>      <img></img>\r\n"
                                "<property></widget>"));
    }

    void wrapsSelection()
    {
        const TextSelection inside = InsertCode({QStringLiteral("abcd"), 1, 2}, u"<i>", u"</i>");
        QVERIFY(inside.text == u"a<i>bc</i>d" && inside.start == 4 && inside.length == 2);
        QCOMPARE(InsertCode({QStringLiteral("abcd"), 3, 9}, u"<i>", u"</i>").text,
                 QStringLiteral("abc<i>d</i>"));
        QCOMPARE(InsertCode({QStringLiteral("abcd"), 9, -1}, u"<i>", u"</i>").text,
                 QStringLiteral("abcd<i></i>"));
        QCOMPARE(InsertCode({QStringLiteral("abcd"), -2, 0}, u"<i>", u"</i>").text,
                 QStringLiteral("<i></i>abcd"));
    }

    void cutsField()
    {
        QCOMPARE(SplitField(u"a<b>x</b>y<b>z", u"<b>", u"</b>", 1, 0), QStringLiteral("x"));
        QCOMPARE(SplitField(u"<B>x", u"<b>", u"", 1, 0), QString());
        QCOMPARE(SplitField(u"<B>x<b>y", u"<b>", u"", 1, 0), QStringLiteral("x"));
        QCOMPARE(SplitField(u"<b>x</B>", u"<b>", u"</b>", 1, 0), QStringLiteral("x</B>"));
        QCOMPARE(SplitField(u"<b>x</b>y", u"<b>", u"</b>", 1, 2), QStringLiteral("x</b>y"));
        QCOMPARE(SplitField(u"x,y", u"", u",", 0, 1), QStringLiteral("y"));
        QCOMPARE(SplitField(u"x,y", u",", u"", -1, 0), QString());
    }

    void cutsFieldLikeItsSteps()
    {
        QRandomGenerator random(5);
        const QStringList tokens = list(u"a|A|<|>|/|b");
        for (int round = 0; round < 20000; ++round) {
            const QString first = twins::randomText(random, tokens, random.bounded(1, 3));
            const QString second = twins::randomText(random, tokens, random.bounded(3));
            const int at[] = {random.bounded(4), random.bounded(4)};
            const QString text = twins::randomText(random, tokens, random.bounded(20));
            const QString call = QStringLiteral("%1 | %2 | %3 | ").arg(text, first, second);
            QCOMPARE(QString(call + SplitField(text, first, second, at[0], at[1])),
                     QString(call + twins::splitField(text, first, second, at[0], at[1])));
        }
    }

    void stripsLikeItsSteps()
    {
        QStringList tokens = list(u"a|b|\1|\t|\n|\r|\x1F| | |!|\x7F|\u00A0");
        compare(StripControlChars, twins::stripControlChars, tokens << QString(QChar()), 5000, 14);
        tokens = list(u"=|=|=|a|\t|\r\n|\u00A0");
        for (const int blanks : {1, 2, 50, 99, 100, 101, 199, 200, 201, 330})
            tokens += QString(blanks, u' ');
        compare(CloseUpEquals, twins::closeUpEquals, tokens, 600, 12);
    }

    void removesCommentsLikeItsSteps()
    {
        for (const S tokens :
             {u"<!--|-->|<|!|-|>|a|A", u"<!--|<!--|a|-->|-->|<!--a-->|<!--A-->|<!--b|b",
              u"<!--a-->|<!--b-->|<!|--|-->|<!--|a", u"<!--a-->|<!--b-->|--|>|<!--|<!--",
              u"--|>|-->|-|<!|<!--|----->>|<!--a-->", u"<!--a-->|<!--b-->|<!--<!--a-->|<!|<!-|-|--|>|->|a",
              u"<!--a-->|<!--b-->|<!--a|<!--b|<!--<!--a-->|a-->"}) {
            compare(GetRemoveComment, twins::getRemoveComment, list(tokens), 2000, 20);
            compare(RemoveComment, twins::removeComment, list(tokens), 12000, 20);
        }
        compare(RemoveComment, twins::removeComment,
                list(u"<!--a-->|<!--b-->|<!|--|>|<!--|a|b|<!--a|<!--<!--b-->"), 12, 900);
    }

    void formatsLikeItsSteps()
    {
        const QStringList blanks = list(u" |\t|\r\n|\n|\r|a");
        const QStringList tags =
            list(u"<|>|widget|</|<?|<property>|<PROPERTY>|<img/>|<IMG/>|<String/>|<widget|"
                 u"<Widget|<widget|<wid|get|<\u017Ftring/>|<str\u0130ng/>");
        const QStringList chains = list(u"<widget|<Widget|<WIDGET|</|<?|<property>|<a|<widgets");
        compare(FormatXML, twins::formatXml, blanks, 800, 30);
        compare(FormatXML, twins::formatXml, blanks + tags, 1000, 25);
        compare(FormatXML, twins::formatXml, blanks + tags, 3, 4000);
        compare(FormatXML, twins::formatXml, chains + chains + list(u" |\t"), 1000, 14);
    }
};

QTEST_APPLESS_MAIN(TestMarkup)
#include "tst_markup.moc"
