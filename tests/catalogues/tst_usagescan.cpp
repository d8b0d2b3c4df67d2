#include "catalogues/LiteralScan.h"
#include "catalogues/UsageScan.h"
#include "platform/ListRows.h"
#include "platform/TestFiles.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;

namespace {

// The three lists that the scans mark, on documents of their own.
struct Theme
{
    explicit Theme(const QStringList &documents = {})
    {
        for (const QString &text : documents)
            windows.add(files.write(QStringLiteral("%1.xml").arg(windows.count()), text.toUtf8()));
    }
    void scan()
    {
        scanWindows(windows, images, colours, [](int, int) {});
    }
    static void fill(ListRows &rows, const QStringList &names)
    {
        for (const QString &name : names)
            rows.add({}, {name});
    }
    static QList<bool> checks(const ListRows &rows)
    {
        QList<bool> result;
        for (const ListRows::Row &row : rows.rows())
            result.append(row.checked);
        return result;
    }

    TestFiles files;
    ListRows windows{{QString()}, ListRows::Checks::Yes};
    ListRows images{{QString()}, ListRows::Checks::Yes};
    ListRows colours{{QString()}, ListRows::Checks::Yes};
};

// Few letters and all the markers, so that names and texts meet often; "k" and the Kelvin sign are one
// letter.
QString randomText(QRandomGenerator &random, int most)
{
    static const QString letters = QStringLiteral("aAbkK\u212a,,[]<>>");
    QString text;
    for (int size = random.bounded(most + 1); size > 0; --size)
        text += letters[random.bounded(letters.size())];
    return text;
}

} // namespace

class TestUsageScan : public QObject
{
    Q_OBJECT

private slots:
    void windows_data();
    void windows();
    void marksOfBefore();
    void asTheLiteralScans();
    void longNamesAndTexts();
};

void TestUsageScan::windows_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("image");
    QTest::addColumn<bool>("colour");
    const auto row = [](const char *document, const char *name, bool image, bool colour) {
        QTest::addRow("%s in %s", name, document)
            << QString::fromUtf8(document) << QString::fromUtf8(name) << image << colour;
    };
    row("<img>Logo</img>", "logo", true, false);
    row("<img> Logo</img>", "logo", false, false);
    row("<img>Logos</img>", "logo", false, false);
    row("Logo<", "logo", false, false);
    row("a>b<c<", "b<c", true, false);
    row("a>b>c<", "b>c", true, false);
    row("a><c", "", true, false);
    row("[Red]", "red", false, true);
    row("[a,red,RED,b]", "b", false, true);
    row(",a,b,", "a,b", false, true);
    row("]a[b,", "a,b", false, true);
    row("[a[b]", "a[b", false, false);
    row("red,blue", "red", false, false);
    row("[]", "", false, true);
    row("", "", false, false);
}

void TestUsageScan::windows()
{
    QFETCH(QString, document);
    QFETCH(QString, name);
    Theme theme({QStringLiteral("nothing"), document});
    theme.windows.add(theme.files.path(QStringLiteral("missing.xml")));
    theme.fill(theme.images, {name, name});
    theme.fill(theme.colours, {name, name});
    theme.scan();
    QFETCH(bool, image);
    QFETCH(bool, colour);
    QCOMPARE(theme.checks(theme.images), QList<bool>({image, image}));
    QCOMPARE(theme.checks(theme.colours), QList<bool>({colour, colour}));
    QCOMPARE(checkWindowsWith(name, theme.windows), int(image));
    QCOMPARE(theme.checks(theme.windows), QList<bool>({false, image, false}));
}

void TestUsageScan::marksOfBefore()
{
    Theme theme({QStringLiteral(">a<")});
    for (ListRows *rows : {&theme.images, &theme.colours}) {
        theme.fill(*rows, {QStringLiteral("x"), QStringLiteral("a"), QString()});
        rows->setChecked(0, true);
    }
    theme.scan();
    QCOMPARE(theme.checks(theme.images), QList<bool>({false, true, false}));
    QCOMPARE(theme.checks(theme.colours), QList<bool>({false, false, false}));
    theme.images.setChecked(0, true);
    QCOMPARE(checkNamesIn(QString(), theme.images), 0);
    QCOMPARE(checkNamesIn(QStringLiteral("bAb"), theme.images), 2);
    QCOMPARE(theme.checks(theme.images), QList<bool>({true, true, true}));
}

void TestUsageScan::asTheLiteralScans()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 400; ++round) {
        QStringList documents, images, colours;
        for (int i = 0; i < 3; ++i)
            documents.append(randomText(random, 200));
        for (int i = 0; i < 40; ++i) {
            images.append(randomText(random, 6));
            colours.append(randomText(random, 6));
        }
        Theme theme(documents);
        theme.fill(theme.images, images);
        theme.fill(theme.colours, colours);
        theme.scan();
        QCOMPARE(theme.checks(theme.images) + theme.checks(theme.colours),
                 literal::scan(documents, images, colours));

        ListRows names({QString()});
        theme.fill(names, images);
        checkNamesIn(documents[0], names);
        QCOMPARE(theme.checks(names), literal::namesIn(documents[0], images));
    }
}

// Rolling along a text with names of many lengths; the bound leaves room for a busy machine and the
// sanitizers.
void TestUsageScan::longNamesAndTexts()
{
    const QString longName(100000, u'x');
    const QString text = QString(2000000, u'x') + u'>' + longName + u'<';
    Theme theme({text, text + u'[' + longName + u']'});
    QStringList names = {longName, longName + u'<', longName + u','};
    for (int i = 0; i < 3000; ++i)
        names.append(QString(1 + i % 30, u'y') + QString::number(i));
    theme.fill(theme.images, names);
    theme.fill(theme.colours, names);
    QElapsedTimer timer;
    timer.start();
    theme.scan();
    QCOMPARE(theme.checks(theme.images).count(true), 1);
    QCOMPARE(theme.checks(theme.colours).count(true), 1);
    QCOMPARE(checkNamesIn(text, theme.images), 2);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_APPLESS_MAIN(TestUsageScan)
#include "tst_usagescan.moc"
