#include "Failure.h"
#include "app/WindowFixture.h"

#include "asking/forms/MessagePrompts.h"
#include "catalogues/forms/ColourTab.h"

#include <QMessageBox>
#include <QScreen>

using namespace quillmere;

namespace {

const QString kSource =
    u"<widget class=\"text\" name=\"title\">\r\n <property>\r\n  <rect>[40,50,200,60]</rect>\r\n"
    "  <string>Hello</string>\r\n "
    "<forecolor>[white,b]</forecolor><mode>own</mode></property>\r\n</widget>\r\n"
    "<widget class=\"box\" name=\"a::[b]'c\"><property><rect_2>[1,2,3,4]</rect_2></property>\r\n</widget>\r\n"
    "<widget class=\"bare\" name=\"none\">\r\n</widget>\r\n<widget name=\"last\">"_s;

// A dialog beside the main window, by name.
class Dialog
{
public:
    explicit Dialog(const char *name) : widget(dialogNamed(name)) {}
    template <typename Kind>
    Kind *find(const char *name) const
    {
        return childOf<Kind>(*widget, name);
    }
    void click(const char *button) const { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    QString rows(const char *list) const { return rowsAsText(find<ListView>(list)->model()); }
    QLineEdit *line(const char *box) const
    {
        auto *combo = widget->findChild<QComboBox *>(QLatin1String(box));
        return combo ? combo->lineEdit() : find<QLineEdit>(box);
    }
    void type(const char *box, const QString &text) const
    {
        line(box)->selectAll();
        QTest::keyClicks(line(box), text);
    }

    QWidget *widget;
};

SourceBox *openSource(const Window &window, const QString &text)
{
    auto *source = window.source();
    window.turnTo(8);
    source->setText(text);
    return source;
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void blockMoves()
    {
        const Window window;
        SourceBox *source = openSource(window, kSource);
        auto *blocks = window.find<ListView>("lvBlock");
        doubleClick(blocks, 0);
        const Dialog dialog("frmWidget");
        QVERIFY(dialog.widget->isVisible() && !dialog.widget->isModal());
        QCOMPARE(dialog.widget->windowTitle(), u" Property :: title :: text"_s);
        QCOMPARE(dialog.rows("lvBlock"), u"rect | [40,50,200,60]\nstring | Hello\n"
                                         "forecolor | [white,b]\nmode | own\n"_s);
        QCOMPARE(window.source(), source); // the main window's own is still the one found
        QTRY_VERIFY(source->hasFocus());

        doubleClick(dialog.find<ListView>("lvBlock"), 0);
        dialog.type("txtL", u"1x2.3"_s); // whole numbers only
        QTest::keyClick(dialog.line("txtL"), Qt::Key_Return);
        QCOMPARE(window.style(u"title"_s, u"left"_s), u"123px"_s);
        QVERIFY(source->text().startsWith(
            u"<widget class=\"text\" name=\"title\">\r\n <property>\r\n<rect>[123,50,200,60]</rect>\r\n"
            "<string>Hello</string>\r\n<forecolor>[white,b]</forecolor>\r\n<mode>own</mode>\r\n</property>"_s));

        source->undo();
        QCOMPARE(source->text(), kSource);
        QVERIFY(!source->document()->isUndoAvailable());
        QVERIFY(dialog.rows("lvBlock").startsWith(u"rect | [40,"_s));
        dialog.click("cmdRec"); // the row is still selected
        QVERIFY(source->text().contains(u"[123,"_s));

        // Another block without properties: the list stays, and nothing is written back.
        const QString before = source->text();
        doubleClick(blocks, 2);
        QCOMPARE(dialog.widget->windowTitle(), u" Property :: none :: bare"_s);
        QVERIFY(dialog.rows("lvBlock").startsWith(u"rect | [123,"_s));
        dialog.find<QPushButton>("cmdRec")->click();
        QCOMPARE(source->text(), before);

        // A name that divides the caption; a property that is shown in the boxes of the rectangle and never
        // set.
        doubleClick(blocks, 1);
        doubleClick(dialog.find<ListView>("lvBlock"), 0);
        dialog.type("txtH", u"9"_s);
        dialog.click("cmdRec");
        QVERIFY(source->text().contains(u"<rect_2>[1,2,3,4]</rect_2>\r\n</property>"_s));
        source->setText(QString(kSource).replace(QLatin1String("[1,2,3,4]"), QLatin1String("[5]")));
        QCOMPARE(dialog.rows("lvBlock"), u"rect_2 | [5]\n"_s);
    }

    void editors()
    {
        const Window window;
        const SourceBox *source = openSource(window, kSource);
        doubleClick(window.find<ListView>("lvBlock"), 0);
        const Dialog dialog("frmWidget");
        const struct
        {
            const char *frame, *box, *shown, *typed, *button, *element;
        } editors[] = {
            {"frRect", "txtH", "60", "-7", "cmdRec", "<rect>[40,50,200,-7]</rect>\r\n"},
            {"frTxt", "txtTxt", "Hello", "a&b", "cmdTxt", "<string>a&b</string>\r\n"},
            {"frColor", "cmbColor(1)", "b", "navy", "cmdColor", "<forecolor>[white,navy,]</forecolor>\r\n"},
            {"frCombo", "CmbVal", "own", "sing", "CmdCombo", "<mode>sing</mode>\r\n"}};
        for (int row = 0; row < 4; ++row) {
            const auto &editor = editors[row];
            doubleClick(dialog.find<ListView>("lvBlock"), row);
            for (const auto &other : editors)
                QCOMPARE(dialog.find<QWidget>(other.frame)->isVisible(), other.frame == editor.frame);
            QCOMPARE(dialog.line(editor.box)->text(), QLatin1String(editor.shown));
            dialog.type(editor.box, QLatin1String(editor.typed));
            dialog.find<QPushButton>(editor.button)->click();
            QVERIFY2(source->text().contains(QLatin1String(editor.element)), qPrintable(source->text()));
        }
    }

    void oneKeyOrClickSets_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("suggestion"); // the first one is chosen
        QTest::addColumn<QString>("element"); // of the source afterwards
        QTest::newRow("choice") << 3 << QByteArray("CmbVal") << "SIN" << false << "<mode>SIN</mode>";
        QTest::newRow("all but the case")
            << 3 << QByteArray("CmbVal") << "Single" << false << "<mode>Single</mode>";
        QTest::newRow("suggestion") << 3 << QByteArray("CmbVal") << "sin" << true << "<mode>single</mode>";
        QTest::newRow("colour") << 2 << QByteArray("cmbColor(0)") << "Red" << false
                                << "<forecolor>[Red,b,]</forecolor>";
        QTest::newRow("suggested colour")
            << 2 << QByteArray("cmbColor(0)") << "Red" << true << "<forecolor>[red,b,]</forecolor>";
    }

    // With the keys and clicks of a person, which the list of suggestions gets first.
    void oneKeyOrClickSets()
    {
        QFETCH(const int, row);
        QFETCH(const QByteArray, box);
        QFETCH(const QString, typed);
        QFETCH(const bool, suggestion);
        QFETCH(const QString, element);
        for (const bool byMouse : {false, true}) {
            const Window window;
            window.write("theme/theme.xml", "<config><file_color>c.xml</file_color></config>");
            window.write("theme/c.xml",
                         "<color name=\"red\">#FF0000</color><color name=\"dark red\">#800000</color>");
            window.openTheme();
            const SourceBox *source = openSource(window, kSource);
            doubleClick(window.find<ListView>("lvBlock"), 0);
            const Dialog dialog("frmWidget");
            doubleClick(dialog.find<ListView>("lvBlock"), row);
            const bool colour = row == 2;
            dialog.type(box.constData(), typed);
            QWidget *popup = QApplication::activePopupWidget();
            QVERIFY(popup);
            if (suggestion)
                QTest::keyClick(popup, Qt::Key_Down);
            if (byMouse) {
                auto *set = dialog.find<QPushButton>(colour ? "cmdColor" : "CmdCombo");
                const QPoint place = set->mapToGlobal(set->rect().center());
                QTest::mouseClick(popup, Qt::LeftButton, {}, popup->mapFromGlobal(place));
            } else {
                QTest::keyClick(popup, Qt::Key_Return);
            }
            QVERIFY(!popup->isVisible());
            QVERIFY2(source->text().contains(element), qPrintable(source->text()));
        }
    }

    void replaceList()
    {
        Window window;
        SourceBox *source = openSource(window, u"a A b\r\nc"_s);
        window.choose("mnuTReplace");
        const Dialog dialog("frmReplace");
        const auto add = [&](const QString &find, const QString &replace) {
            dialog.line("Text1")->setText(find);
            dialog.line("Text2")->setText(replace);
            dialog.click("Command1");
        };
        add(u"c"_s, u"d"_s);
        add(u"A"_s, u" b"_s);
        add(u"b\n"_s, u"e"_s);
        auto *finds = dialog.find<ListView>("List1");
        QTest::mouseClick(finds->viewport(), Qt::LeftButton, {},
                          finds->visualRect(finds->model()->index(0, 0)).center());
        QCOMPARE(dialog.line("Text2")->text(), u"d"_s);
        QCOMPARE(dialog.find<ListView>("List2")->selectedRow(), 0);
        const QString before = dialog.rows("List1") + dialog.rows("List2");
        dialog.click("Command2"); // the edited pair goes to the end
        QCOMPARE(dialog.rows("List1"), u"A\nb\r\n\nc\n"_s);
        const QString after = dialog.rows("List1") + dialog.rows("List2");
        childOf<QAction>(*finds, "mnuRowsUndo")->trigger(); // both lists, in one step
        QCOMPARE(dialog.rows("List1") + dialog.rows("List2"), before);
        childOf<QAction>(*finds, "mnuRowsRedo")->trigger();
        QCOMPARE(dialog.rows("List1") + dialog.rows("List2"), after);
        dialog.click("Command7"); // nothing is selected
        QVERIFY(!source->document()->isUndoAvailable());
        dialog.click("Command6");
        dialog.click("Command7");
        QCOMPARE(source->text(), u" b  b ed"_s);
        source->undo();
        QCOMPARE(source->text(), u"a A b\r\nc"_s);
        QVERIFY(!source->document()->isUndoAvailable());

        const QString question = u"Benar akan menyimapn text replace?"_s;
        window.prompts.expectQuestion(u"Simpan Text"_s, question, true);
        window.prompts.expectMessage(u"Simpan Text"_s, u"Tersimpan"_s);
        dialog.click("Command4");
        QCOMPARE(window.read("replace.ini"),
                 "[REPLACE]\r\nTotal = 3\r\nTextFind1=A\r\nReplace1= b\r\nTextFind2=b \r\nReplace2=e\r\n"
                 "TextFind3=c\r\nReplace3=d\r\n");
        QCOMPARE(dialog.rows("List1") + dialog.rows("List2"), u"A\nb\nc\nb\ne\nd\n"_s);
        finds->setCurrentIndex(finds->model()->index(1, 0));
        dialog.click("Command3");
        dialog.click("Command3"); // no row is current any more
        QCOMPARE(dialog.rows("List1") + dialog.rows("List2"), u"A\nc\nb\nd\n"_s);
        window.prompts.expectQuestion(u"Simpan Text"_s, question, false);
        dialog.click("Command4");
        QCOMPARE(dialog.rows("List1"), u"A\nb\nc\n"_s);

        // A file that cannot be written: one message, the list stays.
        const QString list = window.path("replace.ini");
        QVERIFY(QFile::remove(list) && QDir().mkdir(list));
        const QString reason = failureOf([&] { window.disk.saveOwn(list, QString()); });
        QVERIFY(reason.contains(list));
        window.prompts.expectQuestion(u"Simpan Text"_s, question, true);
        window.prompts.expectMessage(u"Quillmere"_s, reason);
        dialog.click("Command4");
        QCOMPARE(dialog.rows("List1"), u"A\nb\nc\n"_s);
    }

    void findsAndReplaces()
    {
        Window window;
        SourceBox *source = openSource(window, u"Ab ab\r\nAB"_s);
        QTest::keyClick(window.skin.get(), Qt::Key_F3); // nothing to look for yet: the dialog opens
        const Dialog dialog("frmReplace");
        QTRY_COMPARE(QApplication::activeWindow(), dialog.widget);
        dialog.type("Text1", u"b a"_s);
        QTest::keyClick(dialog.line("Text1"), Qt::Key_Escape);
        QCOMPARE(dialog.line("Text1")->text(), QString());
        dialog.type("Text1", u"ab"_s);
        source->select(0, 1);
        const auto selection = [&] { return std::pair(source->selectionStart(), source->selectionLength()); };
        dialog.click("Command13"); // behind the selection
        QCOMPARE(selection(), std::pair(qsizetype(3), qsizetype(2)));
        // The box has the focus of its window, and the dialog keeps the keyboard: Enter finds the next.
        QCOMPARE(window.skin->focusWidget(), source);
        QVERIFY(dialog.widget->isActiveWindow());
        QTest::keyClick(dialog.widget->windowHandle(), Qt::Key_Return);
        QCOMPARE(selection(), std::pair(qsizetype(7), qsizetype(2)));
        QCOMPARE(source->text(), u"Ab ab\r\nAB"_s);
        window.skin->activateWindow();
        window.prompts.expectMessage(u"Find ab"_s, u"End of find ab"_s);
        QTest::keyClick(source, Qt::Key_F3);
        QCOMPARE(selection(), std::pair(qsizetype(0), qsizetype(0)));

        source->select(4, 3);
        dialog.line("Text2")->setText(u"x\ny"_s);
        dialog.click("Command12");
        QCOMPARE(source->text(), u"Ab ax\r\nyAB"_s);
        QCOMPARE(selection(), std::pair(qsizetype(4), qsizetype(4)));
        dialog.click("Command9");
        QCOMPARE(source->text(), u"x\r\ny ax\r\nyx\r\ny"_s);
        QVERIFY(dialog.widget->isVisible());
    }

    // By the keys of the main window: the bar is the source's alone, F3 is its as long as the dialog is not
    // open, and lines are counted from 1.
    void findsInSource()
    {
        Window window;
        SourceBox *source = openSource(window, u"one\r\ntwo\r\none"_s);
        window.turnTo(3);
        window.find<ListView>("lvColor")->setFocus();
        QTest::keySequence(window.find<ListView>("lvColor"), QKeySequence::Find);
        auto *text = window.find<QLineEdit>("txtFind");
        QVERIFY(!text->isVisible());
        window.turnTo(8);
        source->select(0, 3);
        QTest::keySequence(window.find<ListView>("lvBlock"), QKeySequence::Find);
        QVERIFY(text->hasFocus());
        QCOMPARE(text->text(), u"one"_s);
        QTest::keyClick(text, Qt::Key_F3);
        QCOMPARE(source->selectionStart(), 10);
        QTest::keyClick(text, Qt::Key_Escape);
        QVERIFY(source->hasFocus());
        QTest::keyClick(source, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(source->selectionStart(), 0);
        const struct
        {
            QString answer;
            qsizetype caret;
        } lines[] = {{u"2"_s, 5}, {u" 99 "_s, 10}, {u"-3"_s, 0}, {u"x"_s, 0}};
        for (const auto &[answer, caret] : lines) {
            window.prompts.expectInput(u"Go to Line"_s, u"Line, 1 to 3:"_s, answer);
            QTest::keySequence(source, QKeySequence(Qt::CTRL | Qt::Key_G));
            QCOMPARE(source->caretPosition(), caret);
        }
    }

    // Whatever a theme or a search puts into a box: its buttons can be reached.
    void boxesFitTheScreen()
    {
        QWidget window;
        window.show();
        MessagePrompts prompts(&window);
        const QString texts[] = {QString(200'000, u'x'), u"a\n"_s.repeated(5000), u"word "_s.repeated(40'000),
                                 u"short"_s};
        for (const QString &text : texts) {
            const auto answer = [&] {
                QWidget *box = QApplication::activeModalWidget();
                const QRect screen = box->screen()->availableGeometry();
                QVERIFY(screen.width() >= box->width() && screen.height() >= box->height());
                for (const QPushButton *button : box->findChildren<QPushButton *>())
                    QVERIFY(box->rect().contains(button->geometry()));
                const auto *message = qobject_cast<QMessageBox *>(box);
                if (message && text == u"short")
                    QCOMPARE(message->text() + message->windowTitle(), u"shortshort"_s);
                else if (message && message->informativeText().isEmpty())
                    QVERIFY(message->text().startsWith(text.left(20)) &&
                            message->text().endsWith(text.right(20)));
                for (const QLabel *label : box->findChildren<QLabel *>())
                    QVERIFY(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
                QVERIFY(box->windowTitle().size() < 200);
                static_cast<QDialog *>(box)->reject();
            };
            QTimer::singleShot(0, &window, answer);
            prompts.ask(text, text);
            QTimer::singleShot(0, &window, answer);
            prompts.askAbout(text, u"short"_s, text);
            QTimer::singleShot(0, &window, answer);
            prompts.tell(text, text, Prompts::Icon::Critical);
            QTimer::singleShot(0, &window, answer);
            prompts.input(text, text, text);
        }
    }

    void smallScreen_data()
    {
        QTest::addColumn<std::function<void(Window &)>>("open");
        const auto add = [](const char *dialog, const std::function<void(Window &)> &open) {
            QTest::newRow(dialog) << open;
        };
        add("frmReplace", [](Window &window) { window.choose("mnuTReplace"); });
        add("frmWidget", [](Window &window) {
            doubleClick(window.find<ListView>("lvBlock"), 0);
            doubleClick(Dialog("frmWidget").find<ListView>("lvBlock"), 0);
        });
        add("frmcolor",
            [](Window &window) { emit window.find<ColourTab>("frYt(3)")->colourOpened(1, 2, 3); });
    }

    // However little room there is for a dialog, the keyboard brings everything into sight.
    void smallScreen()
    {
        QFETCH(std::function<void(Window &)>, open);
        Window window;
        openSource(window, kSource);
        open(window);
        const Dialog dialog(QTest::currentDataTag());
        const auto *scroll = dialog.find<QScrollArea>("pageScroll");
        const QSize whole = scroll->widget()->minimumSizeHint();
        QVERIFY(dialog.widget->width() >= whole.width() && dialog.widget->height() >= whole.height());
        QTRY_VERIFY(!scroll->verticalScrollBar()->isVisible() && !scroll->horizontalScrollBar()->isVisible());
        dialog.widget->setMinimumSize(1, 1); // one of fixed size is made smaller by its screen alone
        dialog.widget->resize(200, 90);
        QCOMPARE(dialog.widget->size(), QSize(200, 90));
        dialog.widget->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), dialog.widget);
        for (int tab = 0; tab < 40; ++tab) {
            QTest::keyClick(dialog.widget, Qt::Key_Tab);
            const QWidget *now = dialog.widget->focusWidget();
            QVERIFY(scroll->widget()->isAncestorOf(now));
            const QRect place(now->mapTo(scroll->viewport(), QPoint()), now->size());
            QVERIFY2(scroll->viewport()->rect().intersects(place), qPrintable(now->objectName()));
        }
    }
};

WINDOW_TEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
