#include "source/TextChanges.h"

#include <QTest>

using namespace quillmere;

namespace {

QString applied(QString text, const QList<TextChange> &changes)
{
    for (auto change = changes.crbegin(); change != changes.crend(); ++change)
        text.replace(change->start, change->length, change->text);
    return text;
}

} // namespace

class TestTextChanges : public QObject
{
    Q_OBJECT

private slots:
    // The caret is "|" in both texts.
    void caretStays_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
            QTest::newRow(name) << QString::fromUtf8(before) << QString::fromUtf8(after);
        };
        row("rects on both sides", "<rect>[10,20,30,40]</rect> |word2 <rect>[10,20,30,40]</rect>",
            "<rect>[8,16,24,32]</rect> |word2 <rect>[8,16,24,32]</rect>");
        row("colours on both sides", "<a>[Red,x]</a><b>wo|rd</b><a>[navy,x]</a>",
            "<a>[#FF0000,x]</a><b>wo|rd</b><a>[#000080,x]</a>");
        row("lines come above and go below", "<a><b>\nx\n\n\n|y\n\n\nz", "<a>\n<b>\nx\n|y\nz");
        row("blanks come before it", "<a>\n|<b>", "<a>\n     |<b>");
        row("inside blanks that go", "<a>   |   <b>", "<a>|<b>");
        row("what it stood in goes", "aaaa <old>in|side</old> bbbb", "aaaa <new>in|side</new> bbbb");
        row("at the end", "<rect>[1,2]</rect> tail|", "<rect>[11,12]</rect> tail|");
        const QByteArray one(3000, 'x'), other(3000, 'y');
        row("more than is looked through", QByteArray("<a>1</a>\n" + one + "\n<a>1</a>w|w<a>1</a>"),
            QByteArray("<a>2</a>\n" + other + "\n<a>2</a>w|w<a>2</a>"));
    }

    void caretStays()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        const qsizetype caret = before.indexOf(u'|'), wanted = after.indexOf(u'|');
        before.remove(caret, 1);
        after.remove(wanted, 1);
        const QList<TextChange> changes = changesBetween(before, after);
        QCOMPARE(applied(before, changes), after);
        QCOMPARE(caretAfter(changes, before, caret), wanted);
    }
};

QTEST_APPLESS_MAIN(TestTextChanges)
#include "tst_textchanges.moc"
