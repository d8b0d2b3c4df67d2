#include "stage/LinkedWindow.h"

using namespace quillmere;
using namespace Qt::StringLiterals;

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
        QVERIFY(window.source->caretPosition() < window.nth(u"[1,2"_s, 0));
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

        // Whatever comes before it, it is the same block, until another text comes.
        window.source->rewrite(window.source->text().insert(window.nth(u"      <widget"_s, 0),
                                                            u"      <widget name=\"new\"></widget>\r\n"_s));
        QCOMPARE(window.rows(), u"4"_s);
        window.source->undo();
        QTRY_COMPARE(window.rows(), u"3"_s);
        window.source->setText(LinkedWindow::text);
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
