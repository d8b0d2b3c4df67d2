#include "app/WindowFixture.h"

#include "controls/LateWork.h"
#include "controls/ListView.h"
#include "preview/forms/LateRender.h"
#include "widgets/forms/SourceTab.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTextBlock>
#include <QTextLayout>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// Many times what can be drawn within a key.
QString largeText(int blocks)
{
    QString text = u"<interface>\r\n"_s;
    for (int i = 0; i < blocks; ++i)
        text += u"<widget class=\"text\" style=\"default\" name=\"t%1\">\r\n<property>\r\n"
                "<string>Text %1</string>\r\n<rect>[%1,2,60,24]</rect>\r\n</property>\r\n"
                "</widget>\r\n"_s.arg(i);
    return text;
}

class LargeWindow : public QObject, public Window
{
public:
    explicit LargeWindow(int count = 9000)
    {
        find<QTabBar>("TabStrip4")->setCurrentIndex(8);
        // Twice: one long time is not believed at once.
        source->setText(largeText(count));
        source->setText(largeText(count));
        source->setFocus();
        source->select(source->text().indexOf(u"name=\"t7\""_s) + 6, 0);
    }

    QString block(int row) const { return blocks->index(row, 1).data().toString(); }
    bool isBehind() const { return find<SourceTab>("frYt(8)")->isBehind() || !label->text().isEmpty(); }
    bool isDrawing() const { return worker->activeThreadCount() > 0; }
    // Looks at every event, since a page may be made while another event keeps the window's thread busy.
    bool beginsToDraw()
    {
        m_sawDrawing = isDrawing();
        qApp->installEventFilter(this);
        const bool begins = QTest::qWaitFor([this] { return m_sawDrawing; }, 20000);
        qApp->removeEventFilter(this);
        return begins;
    }
    bool catchesUp() const
    {
        return QTest::qWaitFor([this] { return !isBehind(); }, 20000);
    }

    SourceBox *source = find<SourceBox>("txtSnippet");
    QAbstractItemModel *blocks = find<ListView>("lvBlock")->model();
    QLabel *label = find<QLabel>("lblPreview");
    QThreadPool *worker = skin->findChild<LateRender *>()->findChild<QThreadPool *>();
    QString html() const { return find<QWidget>("txtHtml")->property("plainText").toString(); }

private:
    bool eventFilter(QObject *, QEvent *) override
    {
        m_sawDrawing = m_sawDrawing || isDrawing();
        return false;
    }

    bool m_sawDrawing = false;
};

// Those of a line, which are made when it is shown.
QList<QTextLayout::FormatRange> coloursOf(const SourceBox &box, const QTextBlock &line)
{
    box.document()->documentLayout()->blockBoundingRect(line);
    return line.layout()->formats();
}

// Whether all lines of two boxes have the same colours.
bool haveSameColours(const SourceBox &a, const SourceBox &b)
{
    QTextBlock one = a.document()->begin(), other = b.document()->begin();
    while (one.isValid() && other.isValid() && coloursOf(a, one) == coloursOf(b, other)) {
        one = one.next();
        other = other.next();
    }
    return !one.isValid() && !other.isValid();
}

} // namespace

class TestLoad : public QObject
{
    Q_OBJECT

private slots:
    // By what it took the last two times: at once, begun at once elsewhere, or when typing pauses.
    void choosesWhen()
    {
        QString done;
        const auto add = [&done](QChar what) { return [&done, what] { done += what; }; };
        LateWork work(15, add(u'n'), add(u'e'));
        for (const double milliseconds : {500.0, 10.0, 40.0, 500.0}) {
            work.measured(milliseconds, 1000);
            work.measured(milliseconds, 1000);
            done += work.changed(1000, LateWork::Wait::IfLong) ? u'-' : u'.';
            done += work.isWaiting() ? u'w' : u' ';
        }
        QCOMPARE(done, u"-wn. e- -w"_s);
    }

    void drawsWhenTypingPauses()
    {
        LargeWindow window;
        QVERIFY(!window.isBehind());
        const QSignalSpy reset(window.blocks, &QAbstractItemModel::modelReset);
        const QSignalSpy drawn(window.blocks, &QAbstractItemModel::dataChanged);
        QTest::keyClicks(window.source, u"xy"_s);
        QCOMPARE(drawn.count(), 0);
        QVERIFY(window.isBehind());
        QCOMPARE(window.block(7), u"t7"_s);
        QVERIFY(window.catchesUp());
        QVERIFY(drawn.count() == 1 || drawn.count() == 2); // a row for each key, or for both
        QCOMPARE(reset.count(), 0);
        QCOMPARE(window.block(7), u"xyt7"_s);
        QVERIFY(window.js(u"document.getElementById('xyt7') != null"_s).toBool());

        // The same as drawn at once.
        const QString rows = rowsAsText(window.blocks);
        const QString html = window.html();
        window.skin->BuildWidgetHtml(window.source->text());
        QCOMPARE(rowsAsText(window.blocks), rows);
        QVERIFY(window.html() == html);

        // A key gives up what is under way, and so does another document.
        for (int key = 0; key < 3; ++key) {
            QTest::keyClicks(window.source, u"z"_s);
            QVERIFY(window.beginsToDraw());
        }
        QTest::keyClicks(window.source, u"z"_s);
        QVERIFY(window.catchesUp());
        QCOMPARE(window.block(7), u"xyzzzzt7"_s);
        QVERIFY(window.html().contains(window.block(7)));

        QTest::keyClicks(window.source, u"w"_s);
        QVERIFY(window.beginsToDraw());
        window.source->setText(u"<widget name=\"other\">"_s);
        QVERIFY(QTest::qWaitFor([&] { return !window.isDrawing(); }, 20000) && window.catchesUp());
        QCoreApplication::processEvents(); // in which the page of the one before would come
        QCOMPARE(window.blocks->rowCount(), 1);

        // The window may go while its page is made.
        window.source->setText(largeText(9000));
        QTest::keyClicks(window.source, u"w"_s);
        QVERIFY(window.beginsToDraw());
    }

    void catchesUpFirst()
    {
        LargeWindow window(14000); // so many that no drawing is kept, which would make the next one quick
        QTest::keyClicks(window.source, u"a"_s);
        window.choose("mnuCblock");
        QVERIFY(QGuiApplication::clipboard()->text().contains(u"at7\r\n"_s));
        QTest::keyClicks(window.source, u"b"_s);
        window.choose("mnuV(1)");
        QCOMPARE(window.block(7), u"abt7"_s);

        // A block above has gone since the list was made; the tick is meant for the block of that name.
        window.source->select(0, window.source->text().indexOf(u"<widget class=\"text\" "_s, 40));
        QTest::keyClick(window.source, Qt::Key_Delete);
        QCOMPARE(window.block(1), u"t1"_s);
        window.blocks->setData(window.blocks->index(2, 0), Qt::Checked, Qt::CheckStateRole);
        QCOMPARE(window.block(1), u"t2"_s);
        QCOMPARE(window.blocks->index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QVERIFY(window.catchesUp());
        QTRY_COMPARE_WITH_TIMEOUT(window.style(u"t2"_s, u"display"_s), u"none"_s, 20000);
    }

    // Its page is drawn while its text is made ready, and is there with it.
    void opensALargeWindow()
    {
        LargeWindow window(100);
        window.skin->openDocument(window.write("large.xml", largeText(14000).toUtf8()));
        QCOMPARE(window.blocks->rowCount(), 14000);
        QVERIFY(!window.find<SourceTab>("frYt(8)")->isBehind());
        QVERIFY(window.html().contains(u"Text 13999<"_s));
    }

    void setsPropertiesOfTheNewestText()
    {
        LargeWindow window;
        emit window.find<ListView>("lvBlock")->rowOpened(7);
        QWidget *dialog = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets())
            dialog = top->objectName() == u"frmWidget" && top->isVisible() ? top : dialog;
        QVERIFY(dialog);
        auto *properties = dialog->findChild<ListView *>(u"lvBlock"_s);
        properties->setCurrentIndex(properties->model()->index(0, 0));
        emit properties->rowOpened(0);
        dialog->findChild<QLineEdit *>(u"txtTxt"_s)->setText(u"set"_s);
        window.source->select(window.source->text().indexOf(u"<rect>[7,"_s) + 7, 0);
        QTest::keyClicks(window.source, u"555"_s);
        dialog->findChild<QPushButton *>(u"cmdTxt"_s)->click();
        QVERIFY(window.source->text().contains(
            u"name=\"t7\">\r\n<property>\r\n<string>set</string>\r\n<rect>[5557,2,60,24]</rect>"_s));
    }

    void smallWindowAtOnce()
    {
        LargeWindow window;
        window.source->setText(largeText(100).left(4000));
        const int rows = window.blocks->rowCount();
        QTest::keyClicks(window.source, u"<widget name=\"n\">"_s);
        QCOMPARE(window.blocks->rowCount(), rows + 1);
        QVERIFY(!window.isBehind());
    }

    void coloursInPortions()
    {
        SourceBox box(u"box"_s, {}), plain(u"plain"_s, {});
        const QString text = largeText(3000);
        const auto isColoured = [&](const SourceBox &coloured) {
            const QTextBlock line = coloured.document()->lastBlock().previous();
            return line.userState() >= 0 && !coloursOf(coloured, line).isEmpty();
        };
        box.setText(text);
        plain.setText(text);
        QVERIFY(QTest::qWaitFor([&] { return isColoured(box) && isColoured(plain); }, 20000));
        const QSignalSpy changed(&box, &SourceBox::changed);
        const auto isComment = [&](const QTextBlock &line) {
            const auto formats = coloursOf(box, line);
            return formats.size() == 1 && formats[0].format.fontItalic();
        };
        const auto asComment = [&] { return isComment(box.document()->lastBlock().previous()); };
        QTest::keyClicks(&box, u"<!--"_s);
        QVERIFY(!asComment());
        // Some portions, and then the way back.
        QVERIFY(QTest::qWaitFor([&] { return isComment(box.document()->findBlockByNumber(100)); }, 20000));
        for (int key = 0; key < 4; ++key)
            QTest::keyClick(&box, Qt::Key_Backspace);
        QVERIFY(QTest::qWaitFor([&] { return haveSameColours(box, plain); }, 20000));
        QTest::keyClicks(&box, u"<!--"_s);
        QVERIFY(QTest::qWaitFor(asComment, 20000));
        QCOMPARE(changed.count(), 12); // colours are no change
        box.setText(QString());
        plain.setText(QString());
        box.setText(text);
        box.rewrite(QString(text).replace(u"Text"_s, u"\"T"_s));
        plain.setText(QString(text).replace(u"Text"_s, u"\"T"_s));
        QVERIFY(QTest::qWaitFor([&] { return isColoured(box) && isColoured(plain); }, 20000));
        QVERIFY(QTest::qWaitFor([&] { return haveSameColours(box, plain); }, 20000));
    }

    void cancelsScan()
    {
        Window window;
        QByteArray catalogue;
        for (int i = 0; i < 1000; ++i) // a second's work and more
            catalogue += "<widget class=\"window\" name=\"w\"/>";
        window.write(
            "theme/theme.xml",
            "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image></config>");
        window.write("theme/widget.xml", catalogue);
        window.write("theme/image.xml", "<image id=\"A\">a.png</image>");
        window.write("theme/w.xml", QByteArray(2000000, 'x') + "<img>A</img>");
        window.openTheme();
        auto *source = window.source();
        const auto bar = [&] { return window.skin->findChild<QWidget *>(u"barLongWork"_s); };
        for (const int way : {0, 1, 2}) {
            QTimer::singleShot(0, window.skin.get(), [&] { // comes when the bar is shown
                QVERIFY(bar());
                QTest::keyClicks(source, u"x"_s);
                if (way == 0)
                    QVERIFY(!window.skin->close());
                else if (way == 1)
                    QTest::keyClick(window.skin.get(), Qt::Key_Escape);
                else
                    QTest::mouseClick(window.find<QPushButton>("cmdCancelWork"), Qt::LeftButton);
            });
            window.choose("mnuSWidget");
            QVERIFY(!bar());
            QCOMPARE(window.said(), u"Cancelled."_s);
            QCOMPARE(window.shown("lvImage").left(1), u"/"_s);
            QVERIFY(source->document()->isEmpty() && window.skin->isVisible());
        }
        QTest::keyClicks(source, u"x"_s);
        QCOMPARE(source->text(), u"x"_s);
    }

    void asksBeforeAHugeWindow()
    {
        Window window;
        const QString small = window.write("theme/small.xml", "<small/>");
        const QByteArray line = "<string>" + QByteArray(75, 'x') + "</string>\n";
        const QString huge = window.write("theme/huge.xml", line.repeated(103000));
        window.skin->openDocument(small);
        window.turnTo(8);
        auto *source = window.source();
        QTest::keyClicks(source, u"typed"_s);
        const QString typed = source->text();
        const auto opens = [&](bool answer) {
            window.prompts.expectQuestion(
                u"Open"_s, QString(huge + u" has 9 MB and takes a while to open. Open it?"_s), answer);
            try {
                window.skin->openDocument(huge);
            } catch (const Cancelled &) {
                return false;
            }
            return answer;
        };
        QVERIFY(!opens(false));
        QTimer::singleShot(0, window.skin.get(), [&] { // comes when the bar is shown
            QTest::keyClick(window.skin.get(), Qt::Key_Escape);
        });
        QVERIFY(!opens(true));
        QCOMPARE(source->text(), typed);
        QTest::keyClick(source, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(source->text(), u"     <small/>"_s);

        // Its page is drawn beside the window.
        QVERIFY(opens(true));
        QCOMPARE(source->blockCount(), 103001);
        QVERIFY(!window.find<QLabel>("lblPreview")->text().isEmpty());
    }
};

WINDOW_TEST_MAIN(TestLoad)
#include "tst_load.moc"
