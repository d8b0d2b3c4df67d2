#include "markup/LiteralTwins.h"
#include "widgets/BlockProperties.h"

#include <QTest>

using namespace quillmere;

namespace {

QString rowsAsLines(const std::optional<BlockProperties> &block)
{
    QString lines;
    for (const ListRows::Row &row : block ? block->rows : QList<ListRows::Row>())
        lines += row.text + u'=' + row.sub(1) + u'\n';
    return lines;
}

// The scan, a character at a time.
QString literalRows(const QString &properties)
{
    QString lines, buffer;
    bool found = false;
    for (qsizetype i = 0; i < properties.size(); ++i) {
        const bool slash = properties[i] == u'/';
        const bool ofTag = slash && (properties.mid(i, 2) == u"/>" || (i > 0 && properties[i - 1] == u'<'));
        found = ofTag || (slash && found);
        if (!ofTag)
            buffer += properties[i];
        if (found) {
            const QStringList parts = twins::splitField(buffer, QStringLiteral("<"), {}, 1, 0).split(u'>');
            lines += parts.value(0) + u'=' + parts.value(1) + u'\n';
            buffer.clear();
        }
    }
    return lines;
}

} // namespace

class TestBlockProperties : public QObject
{
    Q_OBJECT

private slots:
    void cuts()
    {
        const struct
        {
            const char *source, *segment, *rows; // "-": nothing is captured
        } cases[] = {{"<widget name=\"a\"><property>\r\n<b>[1,2]</b><img/></property></property>",
                      "\"a\"><property>\r\n<b>[1,2]</b><img/>", "b=[1,2]\nimg=\n"},
                     {"a <property><b>1</b></property>", "-", ""}, // the name outside quotes only
                     {"\"a\"><widget name=\"b\"><property></property>", "-", ""},
                     {"\"a\"/></property>", "\"a\"/>", ""},                // no property
                     {"\"a\"<property><b>1</b></widget>", "", "b=1\n=\n"}, // never closed
                     {"class=\"a\" name=\"a\"<property><b>1</b></property>",
                      "\"a\" name=\"a\"<property><b>1</b>", "b=1\n"}};
        for (const auto &one : cases) {
            const auto block = GetProperty(QString::fromLatin1(one.source), QStringLiteral("a"));
            QCOMPARE(block ? block->segment : QStringLiteral("-"), QLatin1String(one.segment));
            QCOMPARE(rowsAsLines(block), QLatin1String(one.rows));
        }
    }

    void scansLikeTheTwin()
    {
        QRandomGenerator random(36);
        const QStringList tokens =
            QStringLiteral("<|>|/|<|>|</|/>|//|<b>|</b>|x|\r\n|[1,2]|\u212a").split(u'|');
        for (int round = 0; round < 20000; ++round) {
            const QString properties = twins::randomText(random, tokens, 1 + random.bounded(14));
            const QString source = u"\"n\"<property>" + properties + u"</property>";
            QCOMPARE(rowsAsLines(GetProperty(source, QStringLiteral("n"))), literalRows(properties));
        }
    }

    void writesBack()
    {
        const QString block = QStringLiteral(" name=\"a\">\r\n <property>  <rect>[1]</rect></property>\r\n");
        const QString source = QString(u"<W" + block + u"<X" + block.toUpper() + u"end");
        auto cut = GetProperty(source, QStringLiteral("a"));
        cut->rows[0].subItems[0] = QStringLiteral("$1\\1&amp;");
        const QString rebuilt = QStringLiteral("\"a\">\r\n <property>\r\n<rect>$1\\1&amp;</rect>\r\n");
        QCOMPARE(
            SaveProperty(source, cut->segment, cut->rows),
            QString(u"<W name=" + rebuilt + u"</property>\r\n<X NAME=" + rebuilt + u"</PROPERTY>\r\nend"));
        QCOMPARE(SaveProperty(source, QString(), cut->rows), source);
        QCOMPARE(SaveProperty(source, QStringLiteral("end"), cut->rows), source); // no property in it
    }
};

QTEST_APPLESS_MAIN(TestBlockProperties)
#include "tst_blockproperties.moc"
