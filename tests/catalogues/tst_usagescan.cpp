#include "catalogues/UsageScan.h"
#include "files/TestFiles.h"
#include "rows/ListRows.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

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
            windows.add(files.write(u"%1.xml"_s.arg(windows.count()), text.toUtf8()));
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
    void marks()
    {
        const QStringList names = {u"Logo"_s, u"red"_s, u"x"_s, QString()};
        Theme theme({u"<img>logo</img> <img> x </img> [a,RED,red]"_s, QString()}, names);
        theme.windows.add(theme.files.path(u"missing.xml"_s));
        theme.images.setChecked(2, true);
        theme.colours.setChecked(2, true);
        theme.scan();
        QCOMPARE(checks(theme.images), QList<bool>({true, false, false, false}));
        QCOMPARE(checks(theme.colours), QList<bool>({false, true, false, false}));

        QCOMPARE(checkNamesIn(QString(), {&theme.images}), QList({0}));
        QCOMPARE(checkNamesIn(u"aXa"_s, {&theme.images}), QList({2})); // the empty name stands everywhere
        QCOMPARE(checks(theme.images), QList<bool>({true, false, true, true}));

        theme.windows.setChecked(1, true);
        QCOMPARE(checkWindowsWith(u"LOGO"_s, theme.windows, [](int, int) {}), 1);
        QCOMPARE(checks(theme.windows), QList<bool>({true, false, false}));
    }
};

QTEST_APPLESS_MAIN(TestUsageScan)
#include "tst_usagescan.moc"
