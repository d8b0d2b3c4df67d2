#include "rows/ListRows.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace quillmere;

class TestListRows : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheRulesOfAModel();
    void checkMarks();
    void tellsWhatIsUpdated();
};

void TestListRows::keepsTheRulesOfAModel()
{
    ListRows rows(QStringList(2), ListRows::Checks::Yes);
    const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    rows.add(QStringLiteral("a"));
    rows.add(QStringLiteral("b"), {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    rows.setSub(0, 1, QStringLiteral("4"));
    // Whoever looks rows up by a sub-item that has no column has to hear of it.
    rows.setSub(0, 4, QStringLiteral("far"));
    QCOMPARE(changed.count(), 2);
    QVERIFY(changed.at(1).at(0).toModelIndex().isValid());
    QCOMPARE(rows.sub(0, 2) + rows.sub(0, 4) + rows.sub(0, 9), QStringLiteral("far"));
    rows.setChecked(1, true);
    QCOMPARE(changed.count(), 3);
    rows.remove(0);
    QCOMPARE(rows.count(), 1);
    QVERIFY(rows.text(0) == u"b" && rows.isChecked(0));
    rows.assign({{QStringLiteral("d"), {}, false}, {QStringLiteral("e"), {}, true}});
    QCOMPARE(rows.index(0, 1).data().toString(), QString());
    QVERIFY(!rows.index(0, 1).data(Qt::ToolTipRole).isValid());
    QCOMPARE(rows.index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("<qt>d</qt>"));
    QVERIFY(!rows.setData(rows.index(0, 0), QStringLiteral("typed")));
    rows.clear();
    QVERIFY(rows.isEmpty());
}

// Whoever follows the signals ends up with the same rows.
void TestListRows::tellsWhatIsUpdated()
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

void TestListRows::checkMarks()
{
    ListRows rows(QStringList(1), ListRows::Checks::Yes), plain(QStringList(1));
    rows.add(QStringLiteral("a"));
    plain.add(QStringLiteral("a"));
    const QSignalSpy ticked(&rows, &ListRows::checkChanged);
    QVERIFY(rows.setData(rows.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    rows.setChecked(0, true);
    rows.assign({{QStringLiteral("b"), {}, true}});
    QVERIFY(rows.isChecked(0));
    QCOMPARE(ticked.count(), 1);
    QVERIFY(!plain.index(0, 0).data(Qt::CheckStateRole).isValid());
    QVERIFY(!plain.setData(plain.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!plain.flags(plain.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
}

QTEST_APPLESS_MAIN(TestListRows)
#include "tst_listrows.moc"
