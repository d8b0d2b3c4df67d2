#include "platform/ListRows.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace quillmere;

namespace {

QStringList captions()
{
    return {QStringLiteral("Nama"), QStringLiteral("Status")};
}

} // namespace

class TestListRows : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheRulesOfAModel();
    void subItemsNeedNoColumn();
    void checkMarks();
};

void TestListRows::keepsTheRulesOfAModel()
{
    ListRows rows(captions(), ListRows::Checks::Yes);
    const QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
    rows.add(QStringLiteral("a"));
    rows.add(QStringLiteral("b"), {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    rows.setText(0, QStringLiteral("c"));
    rows.setSub(0, 1, QStringLiteral("4"));
    rows.setChecked(1, true);
    rows.remove(0);
    QCOMPARE(rows.count(), 1);
    QCOMPARE(rows.text(0), QStringLiteral("b"));
    QVERIFY(rows.isChecked(0));
    rows.assign({{QStringLiteral("d"), {}, false}, {QStringLiteral("e"), {}, true}});
    QVERIFY(rows.isChecked(1));
    QCOMPARE(rows.index(0, 1).data().toString(), QString());
    QVERIFY(!rows.index(0, 1).data(Qt::ToolTipRole).isValid());
    QCOMPARE(rows.index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("<qt>d</qt>"));
    QVERIFY(!rows.setData(rows.index(0, 0), QStringLiteral("typed")));
    rows.clear();
    QVERIFY(rows.isEmpty());
}

void TestListRows::subItemsNeedNoColumn()
{
    ListRows rows(captions());
    rows.add(QStringLiteral("a"));
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    rows.setSub(0, 4, QStringLiteral("far"));
    QCOMPARE(rows.sub(0, 4), QStringLiteral("far"));
    QCOMPARE(rows.sub(0, 2), QString());
    QCOMPARE(rows.sub(0, 9), QString());
    // Whoever looks rows up by a hidden sub-item has to hear of it.
    QCOMPARE(changed.count(), 1);
    QVERIFY(changed.at(0).at(0).toModelIndex().isValid());
}

void TestListRows::checkMarks()
{
    ListRows rows(captions(), ListRows::Checks::Yes);
    rows.add(QStringLiteral("a"));
    QSignalSpy ticked(&rows, &ListRows::checkChanged);
    QVERIFY(rows.setData(rows.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(rows.isChecked(0));
    QCOMPARE(ticked.count(), 1);
    rows.setChecked(0, true);
    rows.assign({{QStringLiteral("b"), {}, true}});
    rows.clear();
    QCOMPARE(ticked.count(), 1);

    ListRows plain(captions());
    plain.add(QStringLiteral("a"));
    QVERIFY(!plain.index(0, 0).data(Qt::CheckStateRole).isValid());
    QVERIFY(!plain.setData(plain.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!plain.flags(plain.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
}

QTEST_APPLESS_MAIN(TestListRows)
#include "tst_listrows.moc"
