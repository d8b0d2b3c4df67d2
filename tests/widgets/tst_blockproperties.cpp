#include "widgets/BlockProperties.h"

#include <QTest>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QString rowsAsLines(const QList<ListRows::Row> &rows)
{
    QString lines;
    for (const ListRows::Row &row : rows)
        lines += row.text + u'=' + row.sub(1) + u'\n';
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
            const auto block = GetProperty(QString::fromLatin1(one.source), u"a"_s);
            QCOMPARE(block ? block->segment : u"-"_s, QLatin1String(one.segment));
            QCOMPARE(rowsAsLines(block ? block->rows : QList<ListRows::Row>()), QLatin1String(one.rows));
        }
    }

    void writesBack()
    {
        const QString block = u" name=\"a\">\r\n <property>  <rect>[1]</rect></property>\r\n"_s;
        const QString source = QString(u"<W" + block + u"<X" + block.toUpper() + u"end");
        auto cut = GetProperty(source, u"a"_s);
        cut->rows[0].subItems[0] = u"$1\\1&amp;"_s;
        const QString rebuilt = u"\"a\">\r\n <property>\r\n<rect>$1\\1&amp;</rect>\r\n"_s;
        QCOMPARE(
            SaveProperty(source, cut->segment, cut->rows),
            QString(u"<W name=" + rebuilt + u"</property>\r\n<X NAME=" + rebuilt + u"</PROPERTY>\r\nend"));
        QCOMPARE(SaveProperty(source, QString(), cut->rows), source);
        QCOMPARE(SaveProperty(source, u"end"_s, cut->rows), source); // no property in it
    }
};

QTEST_APPLESS_MAIN(TestBlockProperties)
#include "tst_blockproperties.moc"
