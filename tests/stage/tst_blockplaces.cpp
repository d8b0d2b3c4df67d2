#include "stage/BlockPlaces.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

// The x of a div's box is its number in the page, so that it is seen which div a block was given.
class TestBlockPlaces : public QObject
{
    Q_OBJECT

private slots:
    void divsOfBlocks_data()
    {
        QTest::addColumn<QString>("text");  // the names of blocks; "(" and ")" put them into a comment
        QTest::addColumn<QString>("divs");  // the ids of the page; "-" behind one that is not drawn
        QTest::addColumn<QString>("found"); // block=div
        QTest::newRow("one name twice") << u"a b a"_s << u"a b a"_s << u"0=0 1=1 2=2"_s;
        QTest::newRow("in a comment") << u"a ( a ) b a"_s << u"a b a"_s << u"0=0 2=1 3=2"_s;
        QTest::newRow("hidden") << u"a b c"_s << u"a b- c"_s << u"0=0 2=2"_s;
        QTest::newRow("one of two was swallowed") << u"a b a c"_s << u"a b c"_s << u"1=1 3=2"_s;
        QTest::newRow("divs of the theme's own") << u"a b"_s << u"x a  b"_s << u"0=1 1=3"_s;
        QTest::newRow("an entity") << u"a&amp;b c"_s << u"a&b c"_s << u"0=0 1=1"_s;
        QTest::newRow("of another page") << u"a b"_s << u"c d"_s << QString();
    }

    void divsOfBlocks()
    {
        QFETCH(QString, text);
        QFETCH(QString, divs);
        QFETCH(QString, found);
        QString markup;
        for (const QString &name : text.split(u' '))
            markup += name == u"("   ? u"<!--"_s
                      : name == u")" ? u"-->"_s
                                     : u"<widget name=\"%1\">\n"_s.arg(name);
        QList<PagePlace> places;
        for (QString id : divs.split(u' ')) {
            const bool isDrawn = !id.endsWith(u'-');
            const QRectF box(double(places.size()), 0, 10, 10);
            places.append({id.remove(u'-'), isDrawn ? box : QRectF(), isDrawn ? box : QRectF()});
        }
        QStringList is;
        for (const Place &place : placesOfBlocks(Outline(markup), places))
            is.append(u"%1=%2"_s.arg(place.block).arg(place.box.x()));
        QCOMPARE(is.join(u' '), found);
    }

    void badAnswers()
    {
        for (const QString &answer : {QString(), u"[]"_s, u"[[\"a\"],[1,2]]"_s, u"{"_s})
            QVERIFY(placesOf(answer).isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestBlockPlaces)
#include "tst_blockplaces.moc"
