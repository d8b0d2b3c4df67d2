#include "app/WindowFixture.h"

#include "controls/ListView.h"

#include <QTextBlock>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QString kSource = u"<interface>\r\n"
                        "  <widget class=\"window\" name=\"main\">\r\n"
                        "    <property><rect>[0,0,400,300]</rect></property>\r\n"
                        "    <children>\r\n"
                        "      <widget class=\"text\" name=\"same\"><property><rect>[1,2,30,40]</rect>"
                        "</property></widget>\r\n"
                        "      <!-- <widget class=\"text\" name=\"off\"></widget> -->\r\n"
                        "      <widget class=\"text\" name=\"same\"><property><rect>[5,6,70,80]</rect>"
                        "</property></widget>\r\n"
                        "    </children>\r\n"
                        "  </widget>\r\n"
                        "</interface>\r\n"_s;

class LinkedWindow : public Window
{
public:
    LinkedWindow() : source(Window::source()), list(find<ListView>("lvBlock"))
    {
        turnTo(8);
        source->setText(kSource);
    }

    // The rows selected in the list, as text.
    QString rows() const
    {
        QStringList rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (list->selectionModel()->isRowSelected(row))
                rows.append(QString::number(row));
        }
        return rows.join(u',');
    }
    void click(int row, Qt::KeyboardModifiers keys = {}) const
    {
        const QModelIndex index = list->model()->index(row, 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, list->visualRect(index).center());
    }
    qsizetype nth(const QString &text, int n) const
    {
        qsizetype at = -1;
        for (int i = 0; i <= n; ++i)
            at = source->text().indexOf(text, at + 1);
        return at;
    }

    SourceBox *source;
    ListView *list;
};

} // namespace

class TestBlockLink : public QObject
{
    Q_OBJECT

private slots:
    void caretSelects_data()
    {
        QTest::addColumn<QString>("at"); // the caret stands before this
        QTest::addColumn<int>("nth");
        QTest::addColumn<QString>("rows");
        QTest::newRow("innermost") << u"rect>[1"_s << 0 << u"1"_s;
        QTest::newRow("second of the name") << u"name=\"same"_s << 1 << u"3"_s;
        QTest::newRow("between children") << u"</children"_s << 0 << u"0"_s;
        QTest::newRow("before its line's first letter") << u"      <widget class=\"text\""_s << 1 << u"3"_s;
        QTest::newRow("at the end of its line") << u"\r\n      <!--"_s << 0 << u"1"_s;
        QTest::newRow("in a comment") << u"\"off\""_s << 0 << u"2"_s;
        QTest::newRow("in none") << u"interface"_s << 0 << u""_s;
    }

    void caretSelects()
    {
        QFETCH(const QString, at);
        QFETCH(const int, nth);
        const LinkedWindow window;
        window.click(0);
        window.source->select(window.nth(at, nth), 0);
        QTEST(window.rows(), "rows");
        QVERIFY(window.list->hasFocus());
    }

    void listSelects()
    {
        const LinkedWindow window;
        QCOMPARE(window.rows(), QString());
        window.click(3);
        QCOMPARE(window.source->caretPosition(), window.nth(u"<widget"_s, 3));
        QVERIFY(window.list->hasFocus());
        window.click(1, Qt::ControlModifier);
        QCOMPARE(window.rows(), u"1,3"_s);
        QCOMPARE(window.source->caretPosition(), window.nth(u"<widget"_s, 3));
        window.click(3, Qt::ControlModifier);
        QCOMPARE(window.source->caretPosition(), window.nth(u"<widget"_s, 1));
        window.click(1);
        window.click(3, Qt::ShiftModifier);
        QCOMPARE(window.rows(), u"1,2,3"_s);

        // A double click leads to the first of the name and leaves the second selected.
        doubleClick(window.list, 3);
        QCOMPARE(window.source->textCursor().blockNumber(), 4);
        QCOMPARE(window.rows(), u"3"_s);
    }

    void typingFollows()
    {
        const LinkedWindow window;
        window.source->setFocus();
        window.source->select(window.nth(u"[5,6"_s, 0), 0);
        QCOMPARE(window.rows(), u"3"_s);
        QTest::keyClick(window.source, Qt::Key_Up);
        QCOMPARE(window.rows(), u"0"_s); // behind the comment
        QTest::keyClick(window.source, Qt::Key_Down);
        QTest::keyClick(window.source, Qt::Key_Space);
        window.choose("mnuV(1)"); // draws again
        QCOMPARE(window.rows(), u"3"_s);
        QVERIFY(window.source->hasFocus());

        window.source->setText(kSource);
        QCOMPARE(window.rows(), QString());
    }

    void offAndRemembered()
    {
        LinkedWindow window;
        const auto isChecked = [&] { return window.find<QAction>("mnuLink")->isChecked(); };
        QVERIFY(isChecked());
        window.turnTo(0);
        window.choose("mnuLink");
        window.turnTo(8);
        window.click(3);
        QCOMPARE(window.source->caretPosition(), qsizetype(0));
        window.source->select(window.nth(u"[1,2"_s, 0), 0);
        QCOMPARE(window.rows(), u"3"_s);
        window.start();
        QVERIFY(!isChecked());
    }
};

WINDOW_TEST_MAIN(TestBlockLink)
#include "tst_blocklink.moc"
