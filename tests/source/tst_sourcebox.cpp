#include "OwnWork.h"
#include "TextTable.h"
#include "source/forms/LineNumbers.h"
#include "source/forms/SourceBox.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

class Box : public SourceBox
{
public:
    Box() : SourceBox(u"box"_s, {})
    {
        resize(600, 400);
        show();
        setFocus();
    }
    using SourceBox::SourceBox;

    // The text with the caret as "|", or the selection between two of them; line breaks as "\n".
    QString shown() const
    {
        QString all = text();
        const qsizetype start = selectionStart(), length = selectionLength();
        if (length > 0)
            all.insert(start + length, u'|');
        all.insert(start, u'|');
        return all.replace(u"\r\n"_s, u"\n"_s);
    }
    // The same backwards.
    void show(QString text)
    {
        const qsizetype start = text.indexOf(u'|');
        const qsizetype end = text.indexOf(u'|', start + 1);
        text.remove(u'|');
        setText(text);
        select(start, end < 0 ? 0 : end - start - 1);
    }
    void show() { SourceBox::show(); }
    void type(const QString &keys) { QTest::keyClicks(this, keys); }
    void undoByKey() { QTest::keyClick(this, Qt::Key_Z, Qt::ControlModifier); }
    qsizetype longestLine() const
    {
        qsizetype most = 0;
        for (QTextBlock line = document()->begin(); line.isValid(); line = line.next())
            most = std::max<qsizetype>(most, line.length());
        return most;
    }
    QList<QTextLayout::FormatRange> coloursOf(int line) const
    {
        const QTextBlock shown = document()->findBlockByNumber(line);
        document()->documentLayout()->blockBoundingRect(shown); // a line is coloured when it is shown
        return shown.layout()->formats();
    }
    LineNumbers *numbers() const
    {
        return static_cast<LineNumbers *>(findChild<QWidget *>(u"lineNumbers"_s));
    }
};

QString megabyteLine()
{
    QString line;
    while (line.size() < 1'000'000)
        line += u"<widget name=\"n%1\"><rect>[%1,2,3,4]</rect> "_s.arg(line.size());
    return line;
}

} // namespace

class TestSourceBox : public QObject
{
    Q_OBJECT

private slots:
    // However wide the box is, and however often it becomes another width.
    void scrollsToTheEndOfTheWidestLineShown()
    {
        Box box;
        const QString wide = QString(200, u'w');
        const QString lines = QString(u"\r\nline"_s).repeated(50);
        box.setText(u"short\r\n"_s + wide + lines + wide + wide + lines);
        QApplication::processEvents();
        const QScrollBar *bar = box.horizontalScrollBar();
        const int whole = box.fontMetrics().horizontalAdvance(wide);
        const auto isAllOf = [&](int width) {
            const int reach = bar->maximum() + box.viewport()->width();
            return reach >= width && reach <= width + 20;
        };
        QVERIFY2(isAllOf(whole), qPrintable(QString::number(bar->maximum()))); // not of the one far below
        box.resize(900, 400);
        QVERIFY(isAllOf(whole));
        box.resize(300, 400);
        QVERIFY(isAllOf(whole));
        box.replace(7, 100, {}, 7);
        QApplication::processEvents();
        QVERIFY(isAllOf(whole / 2));
        box.stepBack();
        QApplication::processEvents();
        QVERIFY(isAllOf(whole));
    }

    void keepsOddCharacters_data()
    {
        textTable({"odd"}, {{u"CR", u"\r"},
                            {u"two CR", u"\r\r"},
                            {u"paragraph separator", u"\u2029"},
                            {u"line separator", u"\u2028"},
                            {u"frame", QString(QString(QChar(0xfdd0)) + QChar(0xfdd1))},
                            {u"object", u"\ufffc"},
                            {u"no-break space", u"\u00a0"}});
    }

    void keepsOddCharacters()
    {
        QFETCH(const QString, odd);
        Box box;
        const QString given = u"one"_s + odd + u"two\r\nthree"_s + odd;
        box.setText(given);
        QCOMPARE(box.text(), given);
        box.select(3, 0);
        box.type(u"x"_s);
        QTest::keyClick(&box, Qt::Key_Right);
        box.type(u"y"_s);
        const QString typed = u"onex"_s + odd[0] + u'y' + odd.mid(1) + u"two\r\nthree"_s + odd;
        QCOMPARE(box.text(), typed);

        // Commands, copying and undo have it too.
        box.rewrite(QString(typed).replace(u"three"_s, u"3"_s + odd));
        QCOMPARE(box.text(), QString(typed).replace(u"three"_s, u"3"_s + odd));
        box.undo();
        QCOMPARE(box.text(), typed);
        box.selectAll();
        box.cut();
        QCOMPARE(box.text(), QString());
        box.paste();
        QCOMPARE(box.text(), typed);
        box.select(0, 0);
        for (qsizetype key = 0; key < 5 + odd.size(); ++key)
            QTest::keyClick(&box, Qt::Key_Delete);
        QCOMPARE(box.text(), typed.mid(5 + odd.size()));
    }

    void indents_data()
    {
        // The back tab comes after the tab.
        textTable({"before", "tab", "backTab"},
                  {{u"lines", u"a\n|b\n  c|\nd", u"a\n|     b\n       c|\nd", u"a\n|b\n  c|\nd"},
                   {u"within a line", u"one t|w|o", u"     one t|w|o", u"one t|w|o"},
                   {u"up to the start of a line", u"|a\n\n|b", u"|     a\n\n|b", u"|a\n\n|b"},
                   {u"no selection", u"ab|c", u"ab   |c", u"ab   |c"}});
    }

    void indents()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, tab);
        QFETCH(const QString, backTab);
        Box box;
        box.setText(QString(before).remove(u'|').replace(u"\n"_s, u"\r\n"_s));
        const qsizetype start = before.indexOf(u'|');
        const auto breaks = [&](qsizetype to) { return QStringView(before).first(to).count(u'\n'); };
        const qsizetype end = before.indexOf(u'|', start + 1);
        box.select(start + breaks(start), end < 0 ? 0 : end - start - 1 + breaks(end) - breaks(start));
        QCOMPARE(box.shown(), before);
        QTest::keyClick(&box, Qt::Key_Tab);
        QCOMPARE(box.shown(), tab);
        QTest::keyClick(&box, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(box.shown(), backTab);
        if (end >= 0)
            box.undoByKey();
        box.undoByKey();
        QCOMPARE(box.text().replace(u"\r\n"_s, u"\n"_s), QString(before).remove(u'|'));
        QVERIFY(!box.document()->isUndoAvailable());

        Box tabbed;
        tabbed.setText(u"\tx\r\n   y"_s);
        tabbed.selectAll();
        QTest::keyClick(&tabbed, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(tabbed.text(), u"x\r\ny"_s);
    }

    void typingIsAStepOfItsOwn()
    {
        Box box;
        box.setText(u"one two"_s);
        box.select(0, 0);
        box.rewrite(u"ONE two"_s);
        box.select(3, 0); // where the command ended
        box.type(u"xy"_s);
        QCOMPARE(box.text(), u"ONExy two"_s);
        box.undoByKey();
        QCOMPARE(box.text(), u"ONE two"_s);
        box.undoByKey();
        QCOMPARE(box.text(), u"one two"_s);
        QVERIFY(!box.document()->isUndoAvailable());
    }

    void numbersAreWideEnough()
    {
        Box box;
        box.setText(QString(20000, u'\n'));
        QCOMPARE(box.numbers()->width(), box.numbers()->widthNeeded());
        QCOMPARE(box.viewport()->x(), box.numbers()->geometry().right() + 1);
        const int wide = box.numbers()->width();
        box.setText(u"x"_s);
        QVERIFY(box.numbers()->width() < wide);
    }

    void shortensLongLine()
    {
        const QString line = megabyteLine();
        const QString given = u"<a>\r\n"_s + line + u"\r\n<b>"_s;
        const auto isShort = [](const Box &box) { return box.longestLine() < 30000; };
        Box box;
        box.setText(given);
        QVERIFY(isShort(box));
        QCOMPARE(box.blockCount(), 3);
        QVERIFY(box.text() == given && !box.document()->isUndoAvailable());

        // A place in the hidden part is shown when it is asked for, and what is typed there comes to stand
        // there.
        const QString name = u"name=\"n500"_s;
        QString typed = given;
        const qsizetype at = typed.indexOf(name);
        const QSignalSpy changed(&box, &SourceBox::changed);
        box.select(at, name.size());
        QCOMPARE(box.textCursor().selectedText(), name);
        QCOMPARE(box.selectionStart(), at);
        QCOMPARE(box.selectionLength(), name.size());
        QCOMPARE(box.caretColumn(), at - 5 + name.size() + 1);
        QVERIFY(isShort(box) && box.text() == given && !box.document()->isModified());
        QCOMPARE(changed.count(), 0);
        box.type(u"Z"_s);
        typed.replace(at, name.size(), u"Z"_s);
        QVERIFY(box.text() == typed);
        box.select(typed.size() - 300000, 0);
        box.type(u"Y"_s);
        box.undoByKey();
        QVERIFY(box.text() == typed);
        box.undoByKey();
        QVERIFY(box.text() == given && !box.document()->isUndoAvailable());

        // A command changes the hidden part too, and the caret stays.
        box.select(at, 0);
        box.rewrite(QString(given).replace(u",2,3,4]"_s, u",22,33,44]"_s));
        QVERIFY(box.text() == QString(given).replace(u",2,3,4]"_s, u",22,33,44]"_s));
        QVERIFY(isShort(box));
        QVERIFY(box.text().mid(box.selectionStart()).startsWith(name));
        box.undoByKey();
        QVERIFY(box.text() == given);

        // Copied it is whole, and pasted it is shortened again, also bit by bit.
        box.selectAll();
        box.copy();
        Box other;
        other.paste();
        QVERIFY(other.text() == given && isShort(other));
        other.setText(QString());
        QGuiApplication::clipboard()->setText(QString(9000, u'x'));
        for (int i = 0; i < 10; ++i)
            other.paste();
        QVERIFY(isShort(other));
        QCOMPARE(other.text(), QString(90000, u'x'));
        QCOMPARE(other.selectionStart(), 90000);
    }

    void keyInLongLine()
    {
        Box box;
        box.setText(megabyteLine());
        box.select(500000, 0);
        box.grab();
        double most = 0;
        for (int key = 0; key < 10; ++key) {
            const double before = ownWork();
            box.type(u"x"_s);
            box.grab();
            most = std::max(most, ownWork() - before);
        }
        QVERIFY2(most < 250, qPrintable(QString::number(most))); // laid out as a whole it takes a second
    }

    void marksBlockAndBrackets()
    {
        Box box;
        box.setText(u"<x>\r\n<widget name=\"a\">\r\n<rect>\r\n</widget>\r\n<STYLE name=\"b\">\r\n</style>"_s);
        const auto marked = [&](const QString &before) {
            box.select(box.text().indexOf(before), 0);
            const LineRange lines = box.numbers()->marked();
            return u"%1-%2"_s.arg(lines.first).arg(lines.last);
        };
        QCOMPARE(marked(u"<x>"_s), u"0--1"_s);
        QCOMPARE(marked(u"rect"_s), u"1-3"_s);
        QCOMPARE(marked(u"/style"_s), u"4-5"_s);

        // The bar is seen beside these lines and no others.
        const QImage column = box.numbers()->grab().toImage();
        const auto barAt = [&](int line) {
            const QRect rect = box.cursorRect(QTextCursor(box.document()->findBlockByNumber(line)));
            return column.pixelColor(column.width() - 2, rect.center().y()) ==
                   box.palette().color(QPalette::Highlight);
        };
        for (int line = 0; line < 6; ++line)
            QCOMPARE(barAt(line), line >= 4);

        const auto brackets = [&](const QString &before) {
            box.select(box.text().indexOf(before), 0);
            QString all;
            for (const QTextEdit::ExtraSelection &mark : box.extraSelections()) {
                if (mark.cursor.hasSelection())
                    all += mark.cursor.selectedText() + QString::number(mark.cursor.positionInBlock());
            }
            return all;
        };
        QCOMPARE(brackets(u"<rect>"_s), u"<1>6"_s);
        QCOMPARE(brackets(u"rect>"_s), u"<1>6"_s);
        QCOMPARE(brackets(u"ect>"_s), QString());
        const QTextEdit::ExtraSelection line = box.extraSelections().value(0);
        QVERIFY(line.format.boolProperty(QTextFormat::FullWidthSelection));
    }

    void coloursOverLines()
    {
        Box box;
        box.setText(u"<a b=\"1\r\n2\r\n3\" c=\"4\">\r\n<!-- 5\r\n6 -->"_s);
        const auto colourAt = [&](int line, int position) {
            for (const QTextLayout::FormatRange &range : box.coloursOf(line)) {
                if (position >= range.start && position < range.start + range.length)
                    return range.format.foreground().color().name();
            }
            return QString();
        };
        QVERIFY(QTest::qWaitFor([&] { return !colourAt(4, 0).isEmpty(); }));
        const QString value = colourAt(0, 5), attribute = colourAt(0, 3), comment = colourAt(3, 0);
        QCOMPARE(QSet<QString>({value, attribute, comment, QString()}).size(), 4);
        QCOMPARE(colourAt(1, 0), value);
        QCOMPARE(colourAt(2, 0), value);
        QCOMPARE(colourAt(2, 3), attribute);
        QCOMPARE(colourAt(4, 0), comment);
        box.select(box.text().indexOf(u"1\r\n"_s), 0);
        box.type(u"\""_s); // the value ends here, and the lines below are something else
        QVERIFY(QTest::qWaitFor([&] { return colourAt(1, 0) == attribute; }));
    }

    // Whatever comes and goes between two looks at the same lines.
    void forgetsLinesNotLookedAt()
    {
        Box box;
        box.show(u"<a/>\r\n"_s.repeated(9000));
        const auto first = [&] { return box.document()->firstBlock().layout(); };
        const QList<QTextLayout::FormatRange> colours = box.coloursOf(0);
        QVERIFY(!colours.isEmpty() && first()->lineCount() == 1);
        const auto lookAtAll = [&] {
            for (int line = 0; line < box.document()->blockCount(); ++line)
                box.coloursOf(line);
        };
        lookAtAll();
        QVERIFY(first()->lineCount() == 0 && first()->formats().isEmpty());
        QCOMPARE(box.coloursOf(0), colours);
        for (int line = 8000; line > 10; --line)
            box.coloursOf(line % 1500);
        box.replace(12, 6 * 1000, u"<b/>\r\n<c/>"_s, 0); // some of them go
        lookAtAll();
        lookAtAll();
        QCOMPARE(box.coloursOf(0), colours);
    }

    void darkPalette()
    {
        Box box;
        box.setText(u"<a b=\"1\">text</a><!-- c -->"_s);
        const auto contrast = [](const QColor &a, const QColor &b) {
            const auto light = [](const QColor &colour) {
                const auto part = [](double c) {
                    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
                };
                return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
                       0.0722 * part(colour.blueF());
            };
            return (std::max(light(a), light(b)) + 0.05) / (std::min(light(a), light(b)) + 0.05);
        };
        for (const auto &[ground, ink] : {std::pair(Qt::black, Qt::white), std::pair(Qt::white, Qt::black)}) {
            QPalette palette = box.palette();
            palette.setColor(QPalette::Base, ground);
            palette.setColor(QPalette::Text, ink);
            box.setPalette(palette);
            const auto isReadable = [&] {
                const QList<QTextLayout::FormatRange> colours = box.coloursOf(0);
                return colours.size() > 5 &&
                       std::all_of(colours.begin(), colours.end(), [&](const auto &range) {
                           return contrast(range.format.foreground().color(), ground) >= 4.5;
                       });
            };
            QVERIFY(QTest::qWaitFor(isReadable));
        }
    }

    // The text that is kept from edit to edit is that of the document.
    void followsEdits_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 20; ++seed)
            QTest::addRow("%u", seed) << seed;
    }
    void followsEdits()
    {
        QFETCH(const quint32, seed);
        QRandomGenerator random(seed);
        const QString pieces[] = {u"a"_s,          u"\n"_s,           u"<tag>\nb\n"_s,
                                  u"\U0001F600"_s, u"\u00a0\u2028"_s, u"\n\n"_s};
        Box box;
        box.setText(seed % 2 ? u"one\r\ntwo\r\n\r\nthree"_s : u"one\ntwo\r\nthree\n"_s);
        box.textCursor().insertText(pieces[random.bounded(6)]);
        for (int edit = 0; edit < 200; ++edit) {
            QTextCursor cursor = box.textCursor();
            const auto anywhere = [&] { return int(random.bounded(box.document()->characterCount())); };
            cursor.setPosition(anywhere());
            if (random.bounded(3) == 0)
                cursor.setPosition(anywhere(), QTextCursor::KeepAnchor);
            const quint32 kind = random.bounded(8);
            if (kind == 0)
                box.undo();
            else if (kind == 1)
                box.redo();
            else if (kind == 2)
                box.rewrite(box.text().mid(random.bounded(5)) + pieces[random.bounded(6)]);
            else if (kind == 3)
                cursor.deletePreviousChar();
            else
                cursor.insertText(pieces[random.bounded(6)]);
            QStringList lines;
            for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next())
                lines.append(line.text());
            QCOMPARE(box.text(), lines.join(u"\r\n"_s));
            const int at = anywhere();
            cursor.setPosition(at);
            box.setTextCursor(cursor);
            QCOMPARE(box.caretPosition(), qsizetype(at + cursor.blockNumber()));
        }
    }
};

QTEST_MAIN(TestSourceBox)
#include "tst_sourcebox.moc"
