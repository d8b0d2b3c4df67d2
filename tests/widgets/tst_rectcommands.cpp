#include "widgets/LiteralRects.h"
#include "widgets/RectCommands.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillmere;

namespace {

QString randomText(QRandomGenerator &random)
{
    static const char *tokens[] = {"<rect>[",
                                   "<RECT>[",
                                   "]</rect>",
                                   "]</Rect>",
                                   "0,100,500,400",
                                   "0,125,625,500",
                                   "0,80,400,320",
                                   "1,2,3,4",
                                   "1,2,3",
                                   "-7,8,9,10",
                                   "5,5,5,5,5",
                                   "a,1,2,3",
                                   "<rect>[0,100,500,400]</rect>",
                                   "<rect>[0,125,625,500]</rect>",
                                   " ",
                                   "\r\n"};
    QString text = QStringLiteral("<rect>[0,0,500,400]</rect>");
    for (int n = random.bounded(20); n > 0; --n)
        text += QLatin1String(tokens[random.bounded(int(std::size(tokens)))]);
    return text;
}

} // namespace

class TestRectCommands : public QObject
{
    Q_OBJECT

private slots:
    void sameAsOneByOne();
    void scale_data();
    void scale();
    void move_data();
    void move();
};

void TestRectCommands::sameAsOneByOne()
{
    QRandomGenerator random(4711);
    for (int round = 0; round < 20000; ++round) {
        const QString text = randomText(random);
        const bool larger = round % 2;
        QString fast = text;
        QString slow = text;
        QCOMPARE(
            ScaleRects(fast, larger ? 5 : 4, larger ? 4 : 5, QStringLiteral("1280"), QStringLiteral("720")),
            ScaleResult::Scaled);
        literal::rewriteRects(slow, [larger](QStringList four) {
            for (QString &number : four)
                number = QString::number(number.toLongLong() * (larger ? 5 : 4) / (larger ? 4 : 5));
            return four;
        });
        QCOMPARE(fast, slow);

        fast = slow = text;
        const Axis axis = round % 3 ? Axis::Top : Axis::Left;
        MoveRects(fast, axis, 25);
        literal::rewriteRects(slow, [axis](QStringList four) {
            QString &moved = four[axis == Axis::Top ? 1 : 0];
            moved = QString::number(moved.toLongLong() + 25);
            return four;
        });
        QCOMPARE(fast, slow);
    }
}

void TestRectCommands::scale_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("scaled"); // by 0.8 on a screen of 1280 x 720
    QTest::newRow("whole results stay whole") << "[35,45,500,400]"
                                              << "[28,36,400,320]";
    QTest::newRow("cut, not rounded") << "[-9,9,501,400]"
                                      << "[-7,7,400,320]";
    QTest::newRow("fractions and blanks") << "[ 1.5,+2,500.0,400 ]"
                                          << "[1,1,400,320]";
    QTest::newRow("just wide enough") << "[0,0,125,13]"
                                      << "[0,0,100,10]";
    QTest::newRow("too narrow") << "[0,0,124,100]"
                                << "TooSmall";
    QTest::newRow("too low") << "[0,0,500,12]"
                             << "TooSmall";
    QTest::newRow("too wide") << "[0,0,1602,100]"
                              << "TooLarge";
    QTest::newRow("too high") << "[0,0,100,902]"
                              << "TooLarge";
    QTest::newRow("three numbers") << "[1,2,3]"
                                   << "Nothing";
    QTest::newRow("text") << "[a,2,300,400]"
                          << "Nothing";
    QTest::newRow("thirty digits") << "[100000000000000000000000000000,2,300,400]"
                                   << "Nothing";
}

void TestRectCommands::scale()
{
    QFETCH(const QString, first);
    QFETCH(const QString, scaled);
    QString text = u"<rect>" + first + u"</rect>";
    const QString before = text;
    const ScaleResult result = ScaleRects(text, 4, 5, QStringLiteral("1280"), QStringLiteral("720"));
    const QStringList names = {QStringLiteral("Nothing"), QStringLiteral("TooLarge"),
                               QStringLiteral("TooSmall")};
    if (result == ScaleResult::Scaled)
        QCOMPARE(text, QString(u"<rect>" + scaled + u"</rect>"));
    else
        QCOMPARE(names[int(result)], scaled);
    QVERIFY((text == before) == (result != ScaleResult::Scaled));
    QCOMPARE(ScaleRects(text, 4, 5, QStringLiteral("wide"), QStringLiteral("720")), ScaleResult::Nothing);
}

void TestRectCommands::move_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("moved"); // to the top, [10,20.9,30,40]
    QTest::newRow("down") << "5"
                          << "[10,25,30,40]";
    QTest::newRow("up, rounded down") << "-5.5"
                                      << "[10,14,30,40]";
    QTest::newRow("no number") << "5px"
                               << "[10,20.9,30,40]";
    QTest::newRow("nothing") << ""
                             << "[10,20.9,30,40]";
}

void TestRectCommands::move()
{
    QFETCH(const QString, answer);
    QFETCH(const QString, moved);
    QString text = QStringLiteral("<rect>[10,20.9,30,40]</rect>");
    qint64 distance = 0;
    if (wholeNumber(answer, distance))
        MoveRects(text, Axis::Top, distance);
    QCOMPARE(text, QString(u"<rect>" + moved + u"</rect>"));
}

QTEST_APPLESS_MAIN(TestRectCommands)

#include "tst_rectcommands.moc"
