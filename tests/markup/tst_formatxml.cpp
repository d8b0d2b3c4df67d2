#include "markup/FormatXML.h"
#include "markup/LiteralTwins.h"

#include <QTest>

using namespace quillmere;

class TestFormatXml : public QObject
{
    Q_OBJECT

private:
    static void compareWithSteps(const QString &text)
    {
        QString actual = text;
        const QString returned = FormatXML(actual);
        const QString expected = twins::formatXml(text);
        QVERIFY2(actual == expected, qPrintable(twins::shown(text) + u'\n' + twins::shown(actual) + u'\n' +
                                                twins::shown(expected)));
        QCOMPARE(returned, actual);
    }

private slots:
    void formats_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("formatted");
        const auto row = [](const char *name, QStringView text, QStringView formatted) {
            QTest::newRow(name) << text.toString() << formatted.toString();
        };
        row("a document",
            u"<?xml?>\n\t<Widget  name=\"a\">\n\n   <string/> <IMG/>\r\n\t\t<Property>x</property></widget>",
            u"<?xml?>\r\n<widget name=\"a\">\r\n     <string></string>      "
            u"<img></img>\r\n<property>x</property></widget>");
        row("a CR LF is one line break", u"a\r\nb", u"a\r\nb");
        row("four broken blank lines", u"a\n \n \n \nb", u"a\r\nb");
        row("five broken blank lines", u"a\n \n\t \n \n \nb", u"a\r\n\r\nb");
        row("blank before a line break stays", u"  a  \n  b", u" a \r\nb");
        row("a CR alone", u"a\rb\r\t\nc", u"a\rb\r\r\nc");
        row("tab inside a tag", u"<wid\tget\t ><im\tg/>", u"<widget >     <img></img>");
        row("every second widget is passed over", u"<Widget<Widget<Widget<Widget </a>",
            u"<widget     <Widget<widget<widget </a>");
        row("a passed over one gets its turn", u"<widget<Widget<a", u"<widget<widget     <a");
        row("empty", u"", u"");
    }

    void formats()
    {
        QFETCH(QString, text);
        compareWithSteps(text);
        QTEST(FormatXML(text), "formatted");
    }

    void formatsRandomTextLikeItsSteps_data()
    {
        QTest::addColumn<QStringList>("tokens");
        QTest::addColumn<int>("rounds");
        QTest::addColumn<int>("longest");
        const QStringList blanks{QStringLiteral(" "),  QStringLiteral("\t"), QStringLiteral("\r\n"),
                                 QStringLiteral("\n"), QStringLiteral("\r"), QStringLiteral("a")};
        const QStringList tags =
            QStringLiteral("< > widget </ <? <property> <PROPERTY> <img/> <IMG/> <String/> "
                           "<widget <Widget <widget <wid get <\u017Ftring/> <str\u0130ng/>")
                .split(u' ');
        const QStringList chains =
            QStringLiteral("<widget <Widget <WIDGET </ <? <property> <a <widgets").split(u' ');
        QTest::newRow("blanks") << blanks << 800 << 30;
        QTest::newRow("tags") << blanks + tags << 1000 << 25;
        QTest::newRow("chains") << chains + chains + QStringList{QStringLiteral(" "), QStringLiteral("\t")}
                                << 1000 << 14;
        QTest::newRow("long") << blanks + tags << 3 << 4000;
    }

    void formatsRandomTextLikeItsSteps()
    {
        QFETCH(QStringList, tokens);
        QFETCH(int, rounds);
        QFETCH(int, longest);
        QRandomGenerator random(42);
        for (int round = 0; round < rounds && !QTest::currentTestFailed(); ++round)
            compareWithSteps(twins::randomText(random, tokens, random.bounded(longest)));
    }
};

QTEST_APPLESS_MAIN(TestFormatXml)
#include "tst_formatxml.moc"
