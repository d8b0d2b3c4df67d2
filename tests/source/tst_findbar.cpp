#include "source/forms/FindBar.h"
#include "source/forms/SourceBox.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// A source with its bar, and the keys one presses there.
struct Shown
{
    explicit Shown(const QString &text) : box(u"txtSnippet"_s, u"Source"_s), bar(box)
    {
        box.resize(500, 300);
        box.setText(text);
        box.show();
        box.activateWindow();
        if (!QTest::qWaitForWindowActive(&box))
            qFatal("The window does not become active");
    }
    QLineEdit *text() const { return bar.findChild<QLineEdit *>(u"txtFind"_s); }
    void choose(const char *choice, bool on) const
    {
        bar.findChild<QToolButton *>(QLatin1String(choice))->setChecked(on);
    }
    // What the bar says, and what is selected.
    QString state() const
    {
        return u"%1|%2+%3"_s.arg(bar.findChild<QLabel *>(u"lblFind"_s)->text())
            .arg(box.selectionStart())
            .arg(box.selectionLength());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(text(), key, modifiers);
    }

    SourceBox box;
    FindBar bar;
};

} // namespace

class TestFindBar : public QObject
{
    Q_OBJECT

private slots:
    void finds_data()
    {
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("mindsCase");
        QTest::addColumn<bool>("wholeWords");
        QTest::addColumn<QList<qsizetype>>("places");
        const auto find = [](const char *what, const QString &in, const FindText &looked,
                             const QList<qsizetype> &places) {
            QTest::newRow(what) << in << looked.text << looked.mindsCase << looked.wholeWords << places;
        };
        find("nothing", u"abc"_s, {u""_s}, {});
        find("any case", u"aB Ab\r\nab"_s, {u"ab"_s}, {0, 3, 7});
        find("this case", u"aB Ab\r\nab"_s, {u"Ab"_s, true}, {3});
        find("no overlap", u"aaaaa"_s, {u"aa"_s}, {0, 2});
        find("words", u"wnd wnd_a awnd <wnd>wnd2 wnd"_s, {u"WND"_s, false, true}, {0, 16, 25});
        find("a word behind half of one", u"aa a"_s, {u"a"_s, true, true}, {3});
        find("no word", u"a<b <b"_s, {u"<"_s, true, true}, {1, 4});
        find("begins a word", u"<wnd <wnd2"_s, {u"<wnd"_s, true, true}, {0});
        find("other letters", u"\u00e4x \u00c4"_s, {u"\u00e4"_s, false, true}, {3});
    }

    void finds()
    {
        QFETCH(QString, in);
        QFETCH(QString, text);
        QFETCH(bool, mindsCase);
        QFETCH(bool, wholeWords);
        QTEST(findAll(in, {text, mindsCase, wholeWords}), "places");
    }

    void typesAndGoesOn()
    {
        Shown shown(u"one two\r\nTwo twofold\r\ntwo"_s);
        shown.box.select(5, 0);
        const QRect lines = shown.box.viewport()->geometry();
        shown.bar.open();
        QVERIFY(shown.text()->hasFocus());
        QVERIFY(shown.box.viewport()->geometry().top() >= lines.top() + shown.bar.height());
        QTest::keyClicks(shown.text(), u"tw"_s);
        QCOMPARE(shown.state(), u"2 of 4|9+2"_s);
        shown.press(Qt::Key_O);
        QCOMPARE(shown.state(), u"2 of 4|9+3"_s);
        shown.press(Qt::Key_F);
        QCOMPARE(shown.state(), u"1 of 1|13+4"_s);
        shown.press(Qt::Key_Backspace);
        QCOMPARE(shown.state(), u"2 of 4|9+3"_s); // back to where looking began
        shown.press(Qt::Key_Return);
        shown.press(Qt::Key_Return);
        QCOMPARE(shown.state(), u"4 of 4|22+3"_s);
        shown.press(Qt::Key_Return);
        QCOMPARE(shown.state(), u"1 of 4, from the top|4+3"_s);
        shown.press(Qt::Key_Enter, Qt::ShiftModifier);
        QCOMPARE(shown.state(), u"4 of 4, from the end|22+3"_s);
        shown.choose("chkFindWord", true);
        QCOMPARE(shown.state(), u"3 of 3|22+3"_s);
        shown.choose("chkFindCase", true);
        shown.press(Qt::Key_Return);
        QCOMPARE(shown.state(), u"1 of 2, from the top|4+3"_s);
        // No key of the bar is one of the text.
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Tab})
            shown.press(key);
        QCOMPARE(shown.box.selectionStart(), 4);
        shown.text()->setText(u"nowhere"_s);
        QCOMPARE(shown.state(), u"No match|4+0"_s);
        QTest::keyClick(shown.text(), Qt::Key_Escape);
        QVERIFY(shown.box.hasFocus() && !shown.bar.isVisible());
        QCOMPARE(shown.box.viewport()->geometry(), lines);
    }

    // The count follows what is typed in the text, and the next place is one of the text as it is now.
    void followsTheText()
    {
        Shown shown(u"a b a"_s);
        shown.box.select(0, 1);
        shown.bar.open();
        QCOMPARE(shown.state(), u"1 of 2|0+1"_s);
        shown.box.setFocus();
        QTest::keyClicks(&shown.box, u"aa"_s);
        QVERIFY(shown.bar.next());
        QCOMPARE(shown.state(), u"3 of 3|5+1"_s);
        shown.box.setText(u"none"_s);
        QTRY_COMPARE(shown.state(), u"No match|0+0"_s);
        shown.box.setText(u"x\r\ny"_s);
        shown.box.select(0, 4);
        shown.bar.open(); // of several lines nothing is taken
        QCOMPARE(shown.text()->text(), u"a"_s);
    }

    // Marks stand where the text is, and go with the bar.
    void marks()
    {
        Shown shown(u"    mmm"_s);
        shown.box.select(0, 0);
        const auto colour = [&] {
            const QPoint at = shown.box.placeOf(5).center();
            return shown.box.viewport()->grab().toImage().pixelColor(at.x() + 1,
                                                                     shown.box.placeOf(5).top() + 1);
        };
        const QColor plain = colour();
        shown.bar.open();
        shown.text()->setText(u"mm"_s);
        shown.box.select(0, 0);
        QVERIFY(colour() != plain);
        QTest::keyClick(shown.text(), Qt::Key_Escape);
        QCOMPARE(colour(), plain);
    }
};

QTEST_MAIN(TestFindBar)
#include "tst_findbar.moc"
