#include "markup/Comments.h"
#include "markup/FormatXML.h"
#include "markup/InsertCode.h"
#include "markup/Matching.h"
#include "markup/TagWidget.h"
#include "markup/mndIni.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;
using S = QStringView;

// Each routine is held to its slow form on random text elsewhere; this is for what both might have wrong.
class TestMarkup : public QObject
{
    Q_OBJECT

private slots:
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
        QString text = u"ab,AB,cd"_s; // replaced with pieces of the text itself
        replaceIgnoringCase(text, S(text).first(2), S(text).last(3));
        QCOMPARE(replaceIgnoringCase(text, S(), u"x"), u",cd,,cd,cd"_s);
    }

    void rewrites()
    {
        const auto tag = [](S document) { return GetTagWidget(document, u"N"); };
        QCOMPARE(tag(u"<x name=\"N\"/><widget name=\"M\"/><WIDGET a=\"1\" name=\"N\"><img/></widget>"),
                 u"<widget a=\"1\" name=\"N\"><img/>"_s);
        QCOMPARE(tag(u"<widget name=\"N\"></widget><widget />"), u"<widget />"_s);
        QCOMPARE(tag(u"<widget name=\"n\"/>"), QString());
        const auto rewritten = [](QString (*routine)(QString &), const char *text) {
            QString copy = QString::fromLatin1(text);
            return routine(copy);
        };
        QCOMPARE(rewritten(GetRemoveComment, "a<!--x-->b<!--X-->c<!--y-->"), u"abc<!--y-->"_s);
        QCOMPARE(rewritten(GetRemoveComment, "a<!-->b<!--->c"), u"ab<!--->c"_s);
        QCOMPARE(rewritten(RemoveComment, "<!--y-->a<!--x"), u"a<!--x"_s);
        QCOMPARE(rewritten(RemoveComment, "a-->b<!--c-->d-->"), u"ab<!--cd"_s);
        QCOMPARE(rewritten(FormatXML,
                           "<?xml?>\n\t<Widget  name>\n\n   <string/> <IMG/>\r\n\t\t<Property></widget>"),
                 u"<?xml?>\r\n<widget name>\r\n     <string></string>      <img></img>\r\n"
                 "<property></widget>"_s);
    }

    void wrapsSelection()
    {
        const TextSelection inside = InsertCode({u"abcd"_s, 1, 2}, u"<i>", u"</i>");
        QVERIFY(inside.text == u"a<i>bc</i>d" && inside.start == 4 && inside.length == 2);
        QCOMPARE(InsertCode({u"abcd"_s, 3, 9}, u"<i>", u"</i>").text, u"abc<i>d</i>"_s);
        QCOMPARE(InsertCode({u"abcd"_s, 9, -1}, u"<i>", u"</i>").text, u"abcd<i></i>"_s);
        QCOMPARE(InsertCode({u"abcd"_s, -2, 0}, u"<i>", u"</i>").text, u"<i></i>abcd"_s);
    }

    void cutsField()
    {
        QCOMPARE(SplitField(u"a<b>x</b>y<b>z", u"<b>", u"</b>", 1, 0), u"x"_s);
        QCOMPARE(SplitField(u"<B>x", u"<b>", u"", 1, 0), QString());
        QCOMPARE(SplitField(u"<B>x<b>y", u"<b>", u"", 1, 0), u"x"_s);
        QCOMPARE(SplitField(u"<b>x</B>", u"<b>", u"</b>", 1, 0), u"x</B>"_s);
        QCOMPARE(SplitField(u"<b>x</b>y", u"<b>", u"</b>", 1, 2), u"x</b>y"_s);
        QCOMPARE(SplitField(u"x,y", u"", u",", 0, 1), u"y"_s);
        QCOMPARE(SplitField(u"x,y", u",", u"", -1, 0), QString());
    }
};

QTEST_APPLESS_MAIN(TestMarkup)
#include "tst_markup.moc"
