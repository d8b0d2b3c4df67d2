#include "rows/ListRows.h"
#include "rows/RowOrder.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

class TestListRows : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheRulesOfAModel()
    {
        ListRows rows(QStringList(2), ListRows::Checks::Yes);
        const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
        rows.add(u"a"_s);
        rows.add(u"b"_s, {u"1"_s, u"2"_s, u"3"_s});
        rows.setSub(0, 1, u"4"_s);
        // Whoever looks rows up by a sub-item that has no column has to hear of it.
        rows.setSub(0, 4, u"far"_s);
        QCOMPARE(changed.count(), 2);
        QVERIFY(changed.at(1).at(0).toModelIndex().isValid());
        QCOMPARE(rows.sub(0, 2) + rows.sub(0, 4) + rows.sub(0, 9), u"far"_s);
        rows.setChecked(1, true);
        QCOMPARE(changed.count(), 3);
        rows.remove(0);
        QCOMPARE(rows.count(), 1);
        QVERIFY(rows.text(0) == u"b" && rows.isChecked(0));
        rows.assign({{u"d"_s, {}, false}, {u"e"_s, {}, true}});
        QCOMPARE(rows.index(0, 1).data().toString(), QString());
        QVERIFY(!rows.index(0, 1).data(Qt::ToolTipRole).isValid());
        QCOMPARE(rows.index(0, 0).data(Qt::ToolTipRole).toString(), u"<qt>d</qt>"_s);
        QVERIFY(!rows.setData(rows.index(0, 0), u"typed"_s));
        rows.clear();
        QVERIFY(rows.isEmpty());
    }

    void checkMarks()
    {
        ListRows rows(QStringList(1), ListRows::Checks::Yes), plain(QStringList(1));
        rows.add(u"a"_s);
        plain.add(u"a"_s);
        const QSignalSpy ticked(&rows, &ListRows::checkChanged);
        QVERIFY(rows.setData(rows.index(0, 0), Qt::Checked, Qt::CheckStateRole));
        rows.setChecked(0, true);
        rows.assign({{u"b"_s, {}, true}});
        QVERIFY(rows.isChecked(0));
        QCOMPARE(ticked.count(), 1);
        QVERIFY(!plain.index(0, 0).data(Qt::CheckStateRole).isValid());
        QVERIFY(!plain.setData(plain.index(0, 0), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(!plain.flags(plain.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
    }

    void sorts_data()
    {
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QList<int>>("up");
        QTest::addColumn<QList<int>>("down");
        const auto sort = [](const char *what, const QStringList &cells, const QList<int> &up,
                             const QList<int> &down) { QTest::newRow(what) << cells << up << down; };
        sort("none", {}, {}, {});
        sort("numbers", {u"10"_s, u"-2"_s, u""_s, u"1.5"_s, u"9"_s}, {2, 1, 3, 4, 0}, {0, 4, 3, 1, 2});
        sort("letter case", {u"b"_s, u"A"_s, u"B"_s, u"a"_s}, {1, 3, 0, 2}, {0, 2, 1, 3});
        sort("no numbers", {u"nan"_s, u"10"_s, u"inf"_s, u""_s}, {3, 1, 2, 0}, {0, 2, 1, 3});
        sort("equal", {u"7"_s, u"7.0"_s, u"07"_s}, {0, 1, 2}, {0, 1, 2});
    }

    void sorts()
    {
        QFETCH(QStringList, cells);
        QTEST(sortedRows(cells, Qt::AscendingOrder), "up");
        QTEST(sortedRows(cells, Qt::DescendingOrder), "down");
    }

    // Whoever follows the signals ends up with the same rows.
    void tellsWhatIsUpdated()
    {
        ListRows rows(QStringList(2), ListRows::Checks::Yes);
        const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const auto shown = [&rows](int row) -> QString {
            return rows.text(row) + u'|' + rows.sub(row, 1) + (rows.isChecked(row) ? u"!" : u"");
        };
        QStringList followed;
        connect(&rows, &ListRows::rowsInserted, this, [&](const QModelIndex &, int first, int last) {
            for (int row = first; row <= last; ++row)
                followed.insert(row, shown(row));
        });
        connect(&rows, &ListRows::rowsRemoved, this,
                [&](const QModelIndex &, int first, int last) { followed.remove(first, last - first + 1); });
        connect(&rows, &ListRows::dataChanged, this, [&](const QModelIndex &first, const QModelIndex &last) {
            for (int row = first.row(); row <= last.row(); ++row)
                followed[row] = shown(row);
        });
        QRandomGenerator random(5);
        for (int round = 0; round < 2000; ++round) {
            QList<ListRows::Row> next;
            for (int row = random.bounded(7); row > 0; --row)
                next.append({QString::number(random.bounded(2)), {QString::number(random.bounded(2))}});
            rows.update(next);
            QStringList expected;
            for (const ListRows::Row &row : std::as_const(next))
                expected.append(row.text + u'|' + row.sub(1));
            QCOMPARE(followed, expected);
            QCOMPARE(rows.count(), next.size());
            if (!rows.isEmpty())
                rows.setChecked(int(random.bounded(rows.count())), true);
        }
    }
};

QTEST_APPLESS_MAIN(TestListRows)
#include "tst_listrows.moc"
