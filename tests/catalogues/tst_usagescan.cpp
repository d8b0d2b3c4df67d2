#include "catalogues/UsageScan.h"
#include "files/TestFiles.h"
#include "rows/ListRows.h"

#include <QTest>

using namespace quillmere;

namespace {

QList<bool> checks(const ListRows &rows)
{
    QList<bool> result;
    for (const ListRows::Row &row : rows.rows())
        result.append(row.checked);
    return result;
}

// The three lists that the scans mark, on documents of their own.
struct Theme
{
    Theme(const QStringList &documents, const QStringList &names)
    {
        for (const QString &text : documents)
            windows.add(files.write(QStringLiteral("%1.xml").arg(windows.count()), text.toUtf8()));
        for (const QString &name : names) {
            images.add({}, {name});
            colours.add({}, {name});
        }
    }
    void scan()
    {
        scanWindows(windows, images, colours, [](int, int) {});
    }

    TestFiles files;
    ListRows windows{{QString()}};
    ListRows images{{QString()}};
    ListRows colours{{QString()}};
};

} // namespace

class TestUsageScan : public QObject
{
    Q_OBJECT

private slots:
    void marks();
};

void TestUsageScan::marks()
{
    const QStringList names = {QStringLiteral("Logo"), QStringLiteral("red"), QStringLiteral("x"), QString()};
    Theme theme({QStringLiteral("<img>logo</img> <img> x </img> [a,RED,red]"), QString()}, names);
    theme.windows.add(theme.files.path(QStringLiteral("missing.xml")));
    theme.images.setChecked(2, true);
    theme.colours.setChecked(2, true);
    theme.scan();
    QCOMPARE(checks(theme.images), QList<bool>({true, false, false, false}));
    QCOMPARE(checks(theme.colours), QList<bool>({false, true, false, false}));

    QCOMPARE(checkNamesIn(QString(), {&theme.images}), QList({0}));
    QCOMPARE(checkNamesIn(QStringLiteral("aXa"), {&theme.images}),
             QList({2})); // the empty name stands everywhere
    QCOMPARE(checks(theme.images), QList<bool>({true, false, true, true}));

    theme.windows.setChecked(1, true);
    QCOMPARE(checkWindowsWith(QStringLiteral("LOGO"), theme.windows, [](int, int) {}), 1);
    QCOMPARE(checks(theme.windows), QList<bool>({true, false, false}));
}

QTEST_APPLESS_MAIN(TestUsageScan)
#include "tst_usagescan.moc"
