#include "controls/ListColumns.h"
#include "controls/ListFilter.h"
#include "controls/ListView.h"
#include "rows/ListRows.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include <algorithm>
#include <memory>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// A list in a window of its own.
struct Shown
{
    explicit Shown(int width = 400, ListRows::Checks checks = ListRows::Checks::Yes)
        : rows({u"Nama"_s, u"Status"_s, u"More"_s}, checks), list(u"lvSome"_s, u"Some"_s, rows, &window)
    {
        window.setObjectName(u"frmSome"_s);
        window.resize(width, 300);
        list.setGeometry(window.rect());
        list.setColumnShares({2, 1, 1});
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("The window does not become active");
    }
    void clickHeader(int column)
    {
        const int middle = list.header()->sectionViewportPosition(column) + list.columnWidth(column) / 2;
        QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {},
                          {middle, list.header()->height() / 2});
    }
    void drag(int column, int by)
    {
        QWidget *header = list.header()->viewport();
        const QPoint edge(list.header()->sectionViewportPosition(column) + list.columnWidth(column) - 1, 5);
        QTest::mousePress(header, Qt::LeftButton, {}, edge);
        QTest::mouseMove(header, edge + QPoint(by / 2, 0));
        QTest::mouseMove(header, edge + QPoint(by, 0));
        QTest::mouseRelease(header, Qt::LeftButton, {}, edge + QPoint(by, 0));
    }
    QList<int> widths() const { return {list.columnWidth(0), list.columnWidth(1), list.columnWidth(2)}; }
    // What a tooltip over the cell says.
    QString toolTip(int row, int column)
    {
        QToolTip::hideText();
        const QPoint at = list.visualRect(rows.index(row, column)).center();
        QHelpEvent event(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
        QApplication::sendEvent(list.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }

    ListRows rows;
    QWidget window;
    ListView list;
};

// Row numbers from the top down, as a person sees the rows.
QList<int> seen(const ListView &list)
{
    QList<int> rows;
    for (int y = 0; list.indexAt({5, y}).isValid(); y += list.visualRect(list.indexAt({5, y})).height())
        rows.append(list.indexAt({5, y}).row());
    return rows;
}

} // namespace

class TestListView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_home.path().toUtf8()); }
    void init() { QSettings().clear(); }

    void headersSort()
    {
        Shown shown;
        shown.rows.assign({{u"b"_s, {u"10"_s}}, {u"a"_s, {u"9"_s}}, {u"C"_s, {u"10"_s}}, {u"a"_s, {}}});
        const QList<int> file = {0, 1, 2, 3};
        QCOMPARE(seen(shown.list), file);
        shown.list.setCurrentIndex(shown.rows.index(2, 0));
        const struct
        {
            int column;
            QList<int> order;
        } clicks[] = {{0, {1, 3, 0, 2}}, {0, {2, 0, 1, 3}}, {0, file},
                      {1, {3, 1, 0, 2}}, {1, {0, 2, 1, 3}}, {0, {1, 3, 0, 2}}};
        for (const auto &[column, order] : clicks) {
            shown.clickHeader(column);
            QCOMPARE(seen(shown.list), order);
            QCOMPARE(shown.list.selectedRow(), 2);
        }
        // Each click and key finds the row that is seen.
        QTest::mouseClick(shown.list.viewport(), Qt::LeftButton, {},
                          shown.list.visualRect(shown.rows.index(1, 0)).center());
        QCOMPARE(shown.list.selectedRow(), 1);
        for (const int row : {3, 0, 2, 2}) {
            QTest::keyClick(&shown.list, Qt::Key_Down);
            QCOMPARE(shown.list.selectedRow(), row);
        }
        QTest::keyClick(&shown.list, Qt::Key_Home);
        QTest::keyClick(&shown.list, Qt::Key_Space);
        QVERIFY(shown.rows.isChecked(1));
        QTest::keyClick(&shown.list, Qt::Key_B);
        QCOMPARE(shown.list.selectedRow(), 0);
        shown.list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        QTest::mouseClick(shown.list.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                          shown.list.visualRect(shown.rows.index(3, 0)).center());
        QCOMPARE(shown.list.selectionModel()->selectedRows().size(), 2);
        QVERIFY(shown.list.selectionModel()->isRowSelected(3) &&
                shown.list.selectionModel()->isRowSelected(0));
    }

    // Whatever becomes of the rows, each is seen once, in its place, and is where the view says it is.
    void likeSortedByHand()
    {
        Shown shown;
        ListView &list = shown.list;
        QRandomGenerator random(11);
        bool isUp = true;
        for (int round = 0; round < 300; ++round) {
            const int count = shown.rows.count(), what = int(random.bounded(6));
            const QString text = QString::number(random.bounded(5));
            if (what == 0 || count == 0)
                shown.rows.add(text, {text});
            else if (what == 1 && count > 3)
                shown.rows.remove(int(random.bounded(count)));
            else if (what == 2)
                list.setRowHidden(int(random.bounded(count)), {}, random.bounded(2) != 0);
            else if (what == 3)
                shown.rows.edit(shown.rows.rows().mid(int(random.bounded(2))));
            else
                isUp = !isUp;
            list.sortBy(-1, Qt::AscendingOrder);
            list.sortBy(1, isUp ? Qt::AscendingOrder : Qt::DescendingOrder);
            if (what == 0) // not only what sorting does
                shown.rows.add(text, {text});
            QList<int> expected;
            for (int row = 0; row < shown.rows.count(); ++row) {
                QCOMPARE(list.isRowHidden(row, {}), list.QTreeView::isRowHidden(row, {}));
                if (!list.isRowHidden(row, {}))
                    expected.append(row);
            }
            std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
                const int first = shown.rows.sub(a, 1).toInt(), second = shown.rows.sub(b, 1).toInt();
                return isUp ? first < second : first > second;
            });
            const QList<int> now = seen(list);
            QCOMPARE(now, expected.first(now.size()));
            QVERIFY(now.size() == expected.size() || now.size() > 5);
            for (const int row : now)
                QCOMPARE(list.indexAt(list.visualRect(shown.rows.index(row, 1)).center()).row(), row);
        }
    }

    // One edited row stays under the eyes of who edits it; of many, each goes to its place.
    void editedRows()
    {
        Shown shown;
        shown.rows.assign({{u"a"_s, {}}, {u"b"_s, {}}, {u"c"_s, {}}});
        shown.list.sortBy(1, Qt::AscendingOrder);
        shown.rows.setSub(0, 1, u"z"_s);
        QCOMPARE(seen(shown.list), (QList<int>{0, 1, 2}));
        shown.rows.edit({{u"a"_s, {u"3"_s}}, {u"b"_s, {u"2"_s}}, {u"c"_s, {u"1"_s}}});
        QCOMPARE(seen(shown.list), (QList<int>{2, 1, 0}));
    }

    void scrollingStays()
    {
        Shown shown;
        QList<ListRows::Row> rows;
        for (int row = 0; row < 500; ++row)
            rows.append({QString::number((row * 37) % 500), {}});
        shown.rows.assign(rows);
        shown.list.setCurrentIndex(shown.rows.index(300, 0));
        const QRect before = shown.list.visualRect(shown.list.currentIndex());
        for (int click = 0; click < 3; ++click) {
            shown.clickHeader(0);
            QCOMPARE(shown.list.visualRect(shown.list.currentIndex()), before);
        }
        shown.list.verticalScrollBar()->setValue(7);
        shown.clickHeader(0);
        QCOMPARE(shown.list.verticalScrollBar()->value(), 7);
    }

    void filtersSorted()
    {
        Shown shown;
        ListFilter filter(shown.list);
        QList<ListRows::Row> rows;
        for (int row = 0; row < 20000; ++row)
            rows.append({u"x%1y"_s.arg(row), {QString::number(-row)}});
        shown.rows.assign(rows);
        shown.list.sortBy(1, Qt::AscendingOrder);
        filter.open();
        auto *text = filter.findChild<QLineEdit *>();
        text->setText(u"X1234"_s);
        QTRY_COMPARE(seen(shown.list).value(0), 12349);
        QTRY_VERIFY(shown.list.isRowHidden(19999, {}));
        QCOMPARE(seen(shown.list).size(), 11);
        text->clear();
        QTRY_VERIFY(!shown.list.isRowHidden(19999, {}));
        QCOMPARE(seen(shown.list).value(0), 19999);
    }

    // A width that is given stays, in the next window of the program too, and the others share the rest.
    void widths()
    {
        int chosen = 0;
        {
            Shown shown;
            const int whole = shown.list.viewport()->width();
            QCOMPARE(shown.widths(), (QList<int>{whole / 2, whole / 4, whole - whole / 2 - whole / 4}));
            shown.drag(0, 60);
            QCOMPARE(shown.widths().value(0), whole / 2 + 60);
            QCOMPARE(shown.widths().value(0) + shown.widths().value(1) + shown.widths().value(2), whole);
            chosen = shown.widths().value(0);
            shown.drag(2, 100);
            QVERIFY(shown.list.header()->length() > whole);
            QTRY_VERIFY(shown.list.horizontalScrollBar()->maximum() > 0);
        }
        Shown again(500);
        QCOMPARE(again.widths().value(0), chosen);
        QMenu menu;
        again.list.columns().addItems(menu);
        menu.findChild<QAction *>(u"mnuDefaultWidths"_s)->trigger();
        const int whole = again.list.viewport()->width();
        QCOMPARE(again.widths(), (QList<int>{whole / 2, whole / 4, whole - whole / 2 - whole / 4}));
        again.rows.add(QString(60, u'm'));
        again.list.resizeColumnToContents(0); // as a double click on the divider does
        QVERIFY(again.widths().value(0) > whole);
        QCOMPARE(Shown().widths().value(0), again.widths().value(0));
        QSettings().setValue(u"columns/frmSome/lvSome"_s, QList<QVariant>{-5, u"x"_s, 1 << 30});
        QVERIFY(Shown().list.header()->length() < 3000);
    }

    // A list that is filled behind another tab has its columns beside the scroll bar when it is seen.
    void filledBeforeShown()
    {
        QTabWidget tabs;
        tabs.addTab(new QWidget, u"First"_s);
        auto *page = new QWidget;
        tabs.addTab(page, u"Second"_s);
        ListRows rows({u"Nama"_s, u"Status"_s, u"More"_s}, ListRows::Checks::No);
        ListView list(u"lvSome"_s, u"Some"_s, rows, page);
        list.setColumnShares({16, 8, 5});
        list.resize(400, 200);
        tabs.resize(500, 300);
        tabs.show();
        for (int row = 0; row < 100; ++row)
            rows.add(u"a"_s, {u"b"_s, u"c"_s});
        tabs.setCurrentIndex(1);
        QTRY_VERIFY(list.verticalScrollBar()->isVisible());
        QCOMPARE(list.header()->length(), list.viewport()->width());
    }

    // A wide column gives way to one that is as narrow as any, so that nothing has to be scrolled.
    void narrowColumns()
    {
        Shown shown;
        shown.list.setColumnShares({30, 30, 1});
        shown.list.columns().layOut();
        shown.drag(0, 80);
        QCOMPARE(shown.list.header()->length(), shown.list.viewport()->width());
        QVERIFY(shown.widths().value(2) >= 16);
    }

    void tooltipsOfWhatIsCut()
    {
        Shown shown;
        shown.rows.assign({{u"short"_s, {u""_s, u"<b>"_s}}, {QString(90, u'm'), {u"two\nlines"_s}}});
        QCOMPARE(shown.toolTip(0, 0), QString());
        QCOMPARE(shown.toolTip(0, 2), QString());
        QVERIFY(shown.toolTip(1, 1).contains(u"two<br>lines"_s));
        QVERIFY(shown.toolTip(1, 0).contains(QString(90, u'm')));
        shown.list.setToolTip(u"All"_s);
        QCOMPARE(shown.toolTip(0, 0), u"All"_s);
    }

private:
    QTemporaryDir m_home;
};

QTEST_MAIN(TestListView)
#include "tst_listview.moc"
