#include "TextTable.h"
#include "source/TextChanges.h"

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
        const QString one(3000, u'x'), other(3000, u'y');
        textTable(
            {"before", "after"},
            {{u"rects on both sides", u"<rect>[10,20,30,40]</rect> |word2 <rect>[10,20,30,40]</rect>",
              u"<rect>[8,16,24,32]</rect> |word2 <rect>[8,16,24,32]</rect>"},
             {u"colours on both sides", u"<a>[Red,x]</a><b>wo|rd</b><a>[navy,x]</a>",
              u"<a>[#FF0000,x]</a><b>wo|rd</b><a>[#000080,x]</a>"},
             {u"lines come above and go below", u"<a><b>\nx\n\n\n|y\n\n\nz", u"<a>\n<b>\nx\n|y\nz"},
             {u"blanks come before it", u"<a>\n|<b>", u"<a>\n     |<b>"},
             {u"inside blanks that go", u"<a>   |   <b>", u"<a>|<b>"},
             {u"what it stood in goes", u"aaaa <old>in|side</old> bbbb", u"aaaa <new>in|side</new> bbbb"},
             {u"at the end", u"<rect>[1,2]</rect> tail|", u"<rect>[11,12]</rect> tail|"},
             {u"more than is looked through", QString(u"<a>1</a>\n" + one + u"\n<a>1</a>w|w<a>1</a>"),
              QString(u"<a>2</a>\n" + other + u"\n<a>2</a>w|w<a>2</a>")}});
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
