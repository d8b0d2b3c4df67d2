#include "theme/NearestNames.h"

#include "files/TestFiles.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// The whole table, without a band.
int apartStepByStep(const QString &one, const QString &other)
{
    const QString a = one.toLower(), b = other.toLower();
    std::vector<std::vector<int>> table(size_t(a.size()) + 1, std::vector<int>(size_t(b.size()) + 1));
    for (size_t i = 0; i < table.size(); ++i) {
        for (size_t j = 0; j < table[i].size(); ++j) {
            if (i == 0 || j == 0) {
                table[i][j] = int(i + j);
                continue;
            }
            table[i][j] = std::min(
                {table[i - 1][j - 1] + (a[i - 1] != b[j - 1]), table[i - 1][j] + 1, table[i][j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
        }
    }
    return table.back().back();
}

} // namespace

class tst_nearestnames : public QObject
{
    Q_OBJECT

private slots:
    void apart();
    void nearest_data();
    void nearest();
};

void tst_nearestnames::apart()
{
    QRandomGenerator random(7);
    const auto word = [&] {
        QString text;
        for (int size = random.bounded(9); size > 0; --size)
            text += QChar(u"abAB_"[random.bounded(5)]);
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        const QString a = word(), b = word();
        const int most = random.bounded(4);
        QCOMPARE(lettersApart(a, b, most), std::min(apartStepByStep(a, b), most + 1));
    }
}

void tst_nearestnames::nearest_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("nearest");

    const auto row = [](const char *name, const QStringList &nearest) {
        QTest::newRow(name) << QString::fromLatin1(name) << nearest;
    };
    row("bg_dimm", {u"bg_dim"_s});
    row("BG_dim", {u"bg_dim"_s});
    row("gb_dim", {u"bg_dim"_s});
    row("icon_0", {u"icon_1"_s, u"icon_2"_s, u"Icon_3"_s});
    row("bg_dim", {});
    row("x", {});
    row("something else", {});
}

void tst_nearestnames::nearest()
{
    QFETCH(QString, name);
    QFETCH(QStringList, nearest);

    const TestFiles files;
    files.write(u"theme.xml"_s, "<config><file_image>i.xml</file_image></config>");
    QByteArray images;
    for (const char *id : {"bg_dim", "bg_main", "icon_1", "icon_2", "Icon_3", "q"})
        images += QByteArray("<image id=\"") + id + "\">x.png</image>";
    files.write(u"i.xml"_s, images);
    ThemeSources sources;
    sources.folder = files.folder();
    QStringList found = nearestNames(*ThemeIndex::build(sources), NameKind::Image, name);
    found.sort(Qt::CaseInsensitive);
    QCOMPARE(found, nearest);
}

QTEST_GUILESS_MAIN(tst_nearestnames)
#include "tst_nearestnames.moc"
