#include "stage/SelectionAfter.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestSelectionAfter : public QObject
{
    Q_OBJECT

private slots:
    void follows_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QList<int>>("blocks");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QList<int>>("rows");
        const QString three = u"<widget name=\"a\"/>\n<widget name=\"a\"/>\n<widget name=\"c\"/>\n"_s;
        const auto row = [](const char *name, const QString &before, const QList<int> &blocks,
                            const QString &after, const QList<int> &rows) {
            QTest::newRow(name) << before << blocks << after << rows;
        };
        row("typed before", three, {2, 1}, u"<widget name=\"x\">"_s + three, {3, 2});
        row("name changed, and one in between", three, {2, 0, 1},
            u"<widget name=\"a1\"/>\n<widget name=\"a\"/>\n<style />\n<widget name=\"d\"/>\n"_s, {3, 0, 1});
        row("gone", three, {2, 1, 0}, u"<widget name=\"a\"/>\n<idget name=\"a\"/>\n<widget name=\"c\"/>\n"_s,
            {1, 0});
        row("moved, of one name", three, {2},
            u"<widget name=\"c\"/>\n<widget name=\"a\"/>\n<widget name=\"a\"/>\n"_s, {0});
        row("another text", three, {0, 2}, u"<style/>"_s, {});
        row("no such row", three, {7, -1, 0}, three, {0});
    }

    void follows()
    {
        QFETCH(QString, before);
        QFETCH(QList<int>, blocks);
        QFETCH(QString, after);
        QTEST(selectionAfter(Outline(before), blocks, Outline(after)), "rows");
    }
};

QTEST_APPLESS_MAIN(TestSelectionAfter)
#include "tst_selectionafter.moc"
