#include "app/WindowFixture.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>

using namespace quillmere;

namespace {

const QByteArray kGerman = "<language name=\"x\">\r\n<tran id=\"Channel list\">Sender</tran>\r\n"
                           "<tran id=\"Radio\"></tran>\r\n<tran id=\"Menu\"></tran>\r\n</language>";

// An open theme with one language, which is not open yet, and a program folder of its own.
class LanguageWindow : public Window
{
public:
    LanguageWindow()
    {
        disk.setProgramFolder(files.path(u"program"_s));
        files.write(u"theme/theme.xml"_s, "<config><file_i18n>lang\\i18n.xml</file_i18n></config>");
        files.write(u"theme/lang/i18n.xml"_s, "<language id=\"German\">sub\\de.xml</language>");
        files.write(u"theme/lang/sub/de.xml"_s, kGerman);
        skin->openTheme(files.path(u"theme"_s));
    }

    // Selects a row of a list and presses a key on it.
    void press(const char *list, int row, Qt::Key key) const
    {
        auto *view = find<ListView>(list);
        view->setCurrentIndex(view->model()->index(row, 1));
        QTest::keyClick(view, key);
    }
    QString strings() const { return rowsAsText(find<ListView>("LvBhs")->model()); }
    // What stands on the buttons above the strings.
    QString choices() const
    {
        QStringList captions;
        for (const char *name : {"cmdStrings(0)", "cmdStrings(1)", "cmdStrings(2)", "cmdStrings(3)"})
            captions.append(find<QToolButton>(name)->text());
        return captions.join(u", "_s);
    }
    // Numbers of the strings that are to be seen, the current one in brackets.
    QString seen() const
    {
        auto *list = find<ListView>("LvBhs");
        QString rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (!list->isRowHidden(row, {}))
                rows += row == list->selectedRow() ? u"[%1]"_s.arg(row) : QString::number(row);
        }
        return rows;
    }
};

} // namespace

class TestTranslate : public QObject
{
    Q_OBJECT

private slots:
    void openEditAndSave()
    {
        LanguageWindow window;
        window.press("lvLang", 0, Qt::Key_Return);
        QCOMPARE(window.find<QLineEdit>("txtLangFile")->text(), window.path("theme/lang/sub/de.xml"));
        QCOMPARE(window.strings(), u" | Channel list | Sender\n | Radio | \n | Menu | \n"_s);

        const auto title = u"Input Logo Channel"_s;
        window.prompts.expectInput(title, u"Translate for Radio"_s, u"R\u00E4dio"_s);
        window.press("LvBhs", 1, Qt::Key_Return);
        for (const auto &answer : {std::optional(QString()), std::optional<QString>()}) {
            window.prompts.expectInput(title, u"Translate for Channel list"_s, answer);
            window.press("LvBhs", 0, Qt::Key_Return);
        }
        window.press("LvBhs", 2, Qt::Key_Space);
        QCOMPARE(window.strings(), u" | Channel list | Sender\n | Radio | R\u00E4dio\n*  | Menu | \n"_s);
        QTRY_COMPARE(window.choices(), u"All 3, Untranslated 1, Unchecked 2, Problems 0"_s);

        const auto file = u"theme/lang/sub/de.xml"_s;
        for (const bool answer : {false, true}) {
            QCOMPARE(window.files.read(file), kGerman);
            window.prompts.expectQuestion(u"Save File"_s, u"Save file translate?"_s, answer);
            window.choose("mnuLangSave");
        }
        // The file that was replaced was ASCII; the new one says that it is UTF-8, and is.
        QCOMPARE(window.files.read(file),
                 QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"
                            "<language name=\"German\">\r\n<font>font_prog</font>\r\n"
                            "<tran id=\"Channel list\">Sender</tran>\r\n<tran id=\"Radio\">R\xC3\xA4"
                            "dio</tran>\r\n<tran id=\"Menu\"></tran>\r\n</language>\r\n"));
    }

    // The rows with what is asked for, and the way from one without a translation to the next.
    void choicesAndNext()
    {
        LanguageWindow window;
        window.turnTo(4);
        window.write("theme/lang/sub/de.xml",
                     "<language name=\"x\"><tran id=\"a\">A</tran><tran id=\"b\"> </tran>"
                     "<tran id=\"c\">C</tran><tran id=\"d\"></tran><tran id=\"c\">C</tran></language>");
        window.press("lvLang", 0, Qt::Key_Return);
        const auto choices = [&] { return window.choices().section(u',', 0, 2); };
        QTRY_COMPARE(choices(), u"All 5, Untranslated 2, Unchecked 5"_s);
        // No window uses any of them, and the checks say so.
        QTRY_VERIFY_WITH_TIMEOUT(!window.choices().endsWith(u" 0"), 10000);
        QTest::mouseClick(window.find<QToolButton>("cmdStrings(3)"), Qt::LeftButton);
        QTRY_VERIFY(window.seen().startsWith(u"0123"));
        QTest::mouseClick(window.find<QToolButton>("cmdStrings(2)"), Qt::LeftButton);
        window.press("LvBhs", 2, Qt::Key_Space);
        QCoreApplication::processEvents();
        QTRY_COMPARE(window.seen(), u"01[2]34"_s); // until another one is selected, or another choice
        QTest::mouseClick(window.find<QToolButton>("cmdStrings(1)"), Qt::LeftButton);
        QTRY_COMPARE(window.seen(), u"13"_s);
        QTest::mouseClick(window.find<QToolButton>("cmdStrings(2)"), Qt::LeftButton);
        window.select("LvBhs", 0);
        QTRY_COMPARE(window.seen(), u"[0]134"_s);

        auto *list = window.find<ListView>("LvBhs");
        list->setFocus();
        const auto next = [&] {
            QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
            return u"%1 %2"_s.arg(list->selectedRow()).arg(window.said());
        };
        QCOMPARE(next(), u"1 "_s);
        QCOMPARE(next(), u"3 "_s);
        QCOMPARE(next(), u"1 From the top again."_s);
        list->sortBy(1, Qt::DescendingOrder);
        QCOMPARE(next(), u"3 From the top again."_s);
        QCOMPARE(next(), u"1 "_s);
        list->sortBy(-1, Qt::AscendingOrder);
        QTest::mouseClick(window.find<QToolButton>("cmdStrings(0)"), Qt::LeftButton);
        for (const int row : {1, 3}) {
            window.prompts.expectInput(u"Input Logo Channel"_s, u"Translate for "_s + u"abcd"_s[row], u"x"_s);
            window.press("LvBhs", row, Qt::Key_Return);
        }
        QCOMPARE(next(), u"3 All strings in the list are translated."_s);
        QTRY_COMPARE(choices(), u"All 5, Untranslated 0, Unchecked 4"_s);
    }

    // Typing in the panel: what takes it, what keeps it, and that nothing of it gets lost.
    void panel()
    {
        LanguageWindow window;
        window.turnTo(4);
        auto *list = window.find<ListView>("LvBhs");
        auto *text = window.find<QPlainTextEdit>("txtTranslation");
        auto *item = window.find<QAction>("mnuLangPanel");
        const int whole = list->height();
        QVERIFY(item->isChecked() && !text->isVisible()); // there is nothing to show yet
        window.press("lvLang", 0, Qt::Key_Return);
        QVERIFY(text->isVisible() && list->height() < whole);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_F4);
        QVERIFY(!item->isChecked() && !text->isVisible() && list->height() == whole);
        QTest::keyClick(list, Qt::Key_F4);
        QVERIFY(text->isVisible() && text->hasFocus());

        const auto type = [&](const QString &typed) {
            text->selectAll();
            QTest::keyClicks(text, typed);
        };
        window.select("LvBhs", 0);
        QCOMPARE(window.find<QPlainTextEdit>("txtSource")->toPlainText(), u"Channel list"_s);
        QCOMPARE(text->toPlainText(), u"Sender"_s);
        type(u"Sender"_s);
        QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(text, u"liste"_s);
        QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(window.strings(), u"*  | Channel list | Sender\r\nliste\n | Radio | \n | Menu | \n"_s);
        QCOMPARE(list->selectedRow(), 1);
        QVERIFY(text->hasFocus());

        // Another row takes it without a check mark, Esc puts back what the row holds.
        type(u"Radau"_s);
        window.select("LvBhs", 2);
        type(u"x"_s);
        QTest::keyClick(text, Qt::Key_Escape);
        window.select("LvBhs", 1);
        QCOMPARE(window.strings(), u"*  | Channel list | Sender\r\nliste\n | Radio | Radau\n | Menu | \n"_s);

        // What a language file cannot hold is refused, and waits for its row.
        type(u"a<b"_s);
        const auto refused = u"A language file cannot hold a translation with < or >."_s;
        window.prompts.expectMessage(u"Quillmere"_s, refused);
        QTest::keyClick(text, Qt::Key_Return);
        window.select("LvBhs", 0);
        QCOMPARE(text->toPlainText(), u"Sender\nliste"_s);
        const auto leave = u"These translations were typed and not taken: \"a<b\"\n"
                           "Leave anyway, and lose them?"_s;
        window.prompts.expectQuestion(u"Quillmere"_s, leave, false);
        QVERIFY(!window.skin->close());
        window.press("lvLang", 0, Qt::Key_Return); // the strings are those of the file again
        window.select("LvBhs", 1);
        QCOMPARE(text->toPlainText(), u"a<b"_s);
        type(u"b"_s);
        QTest::keyClick(text, Qt::Key_Return);
        QCOMPARE(window.strings(), u" | Channel list | Sender\n*  | Radio | b\n | Menu | \n"_s);

        // One step back, from the box as well.
        QCoreApplication::processEvents();
        QTest::keySequence(text, QKeySequence::Undo);
        QCOMPARE(window.strings(), u" | Channel list | Sender\n | Radio | \n | Menu | \n"_s);
        QCOMPARE(text->toPlainText(), QString());

        // Saving and leaving take what is typed.
        type(u"c\u00A0d"_s);
        window.prompts.expectQuestion(u"Save File"_s, u"Save file translate?"_s, true);
        window.choose("mnuLangSave");
        QVERIFY(window.files.read(u"theme/lang/sub/de.xml"_s)
                    .contains("\"Radio\">c\xC2\xA0"
                              "d<"));
        type(u"e"_s);
        QVERIFY(window.skin->close());
        QVERIFY(window.strings().contains(u"Radio | e"_s));
    }

    // Suggestions from all there is; what stands nowhere near is none, nor is a dictionary of another
    // language.
    void suggestions()
    {
        LanguageWindow window;
        window.write("program/trans/German.txt", "menu[*]Karte\r\nRadios[*]Rundfunk\r\n");
        window.write("program/trans/Hausbuch.txt", "MENU[*]Speisekarte\r\n");
        window.write("program/trans/Russian.txt", "Menu[*]\xD0\x9C\r\n");
        const QByteArray other = "<config><file_i18n>i18n.xml</file_i18n></config>";
        window.write("other/theme/theme.xml", other);
        window.write("other/theme/i18n.xml", "<language id=\"german\">d.xml</language>");
        window.write("other/theme/d.xml", "<language name=\"x\"><tran id=\"Menu\">Men\xC3\xBC</tran>"
                                          "<tran id=\"Menus\">Men\xC3\xBCs</tran></language>");
        window.skin->openTheme(window.path("other/theme"));
        window.openTheme();
        window.turnTo(4);
        window.press("lvLang", 0, Qt::Key_Return);
        window.select("LvBhs", 2);
        QTRY_COMPARE(
            window.shown("lvSuggestions"),
            u"1   100 % | Men\u00FC |  | other\n2   99 % | Karte | menu | \u2260 German\n"
            "3   99 % | Speisekarte | MENU | \u2260 Hausbuch\n4   80 % | Men\u00FCs | Menus | other\n"_s);
        auto *list = window.find<ListView>("LvBhs");
        list->setFocus();
        QTest::keyClick(list, Qt::Key_4, Qt::AltModifier);
        QTRY_VERIFY(window.strings().endsWith(u"\n | Menu | Men\u00FCs\n"_s));
        auto *text = window.find<QPlainTextEdit>("txtTranslation");
        QVERIFY(text->hasFocus());
        QTest::keyClick(text, Qt::Key_Return);
        QVERIFY(window.strings().endsWith(u"\n*  | Menu | Men\u00FCs\n"_s));
        window.select("LvBhs", 1);
        QTRY_COMPARE(window.shown("lvSuggestions"), u"1   83 % | Rundfunk | Radios | German\n"_s);
        window.press("lvSuggestions", 0, Qt::Key_Return);
        QVERIFY(window.strings().contains(u" | Radio | Rundfunk\n"_s));
    }

    // What another language of the theme says, and remembers to be asked.
    void languageBeside()
    {
        LanguageWindow window;
        window.write("theme/lang/i18n.xml", "<language id=\"German\">sub\\de.xml</language>"
                                            "<language id=\"French\">fr.xml</language>");
        window.write("theme/lang/fr.xml",
                     "<language name=\"x\"><tran id=\"Menu\">La\r\ncarte</tran></language>");
        window.skin->openTheme(window.files.path({}));
        window.openTheme();
        window.turnTo(4);
        window.press("lvLang", 0, Qt::Key_Return);
        window.select("LvBhs", 2);
        auto *choice = window.find<QComboBox>("cboBeside(0)");
        choice->setFocus();
        QTest::keyClick(choice, Qt::Key_End);
        auto *text = window.find<QPlainTextEdit>("txtBeside(0)");
        QTRY_COMPARE(text->toPlainText(), u"La\ncarte"_s);
        window.select("LvBhs", 1);
        QCOMPARE(text->toPlainText(), QString());
        window.openTheme();
        QCOMPARE(choice->currentText(), u"French"_s);
    }

    void dictionaries()
    {
        LanguageWindow window;
        window.press("lvLang", 0, Qt::Key_Return);
        window.write("program/Indonesia.txt", "menu[*]Menu utama\r\n");
        window.write("program/trans/b.TXT");
        window.write("program/trans/A & O.txt", "MENU[*]x\r\nradio[*]Rundfunk[*]y\r\n");
        window.write("program/trans/old.txt.bak");
        window.write("program/trans/notes.md");
        for (int time = 0; time < 2; ++time) {
            window.choose("mnuLangTrans(0)");
            QStringList items;
            for (const QAction *item : window.find<QMenu>("mnuLang")->actions()) {
                if (item->objectName().startsWith(u"mnuLangTrans("))
                    items.append(QString(item->objectName().mid(13) + item->text()));
            }
            QCOMPARE(items.join(u' '), u"0)&Refrash 1)A && O 2)b 3)old.bak"_s);
        }
        window.choose("mnuLangTranslate");
        window.choose("mnuLangTrans(1)");
        QCOMPARE(window.strings(),
                 u" | Channel list | Sender\n*  | Radio | Rundfunk\n*  | Menu | Menu utama\n"_s);
        window.prompts.expectInput(u"Search Text"_s, u"Translate for "_s, u"sEND"_s);
        window.choose("mnuLangSearch");
        QCOMPARE(window.strings(),
                 u"*  | Channel list | Sender\n | Radio | Rundfunk\n | Menu | Menu utama\n"_s);
        window.press("LvBhs", 1, Qt::Key_Shift);
        window.choose("mnuLangCopy(3)");
        window.choose("mnuLangPaste");
        QCOMPARE(window.strings(), u"*  | Channel list | Sender\n | Radio | Radio[*]\n | Menu | Menu[*]\n"_s);
    }

    // Where a string stands, and where it is cut; the second one follows what is done about it.
    void usesAndTextFit()
    {
        LanguageWindow window;
        const QByteArray block = "<widget class=\"text\" name=\"%1\"><property><rect>[0,0,%2,90]</rect>"
                                 "<string>Channel list</string></property></widget>\n";
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"main\"/>");
        window.write("theme/main.xml",
                     "<interface>\n" + QByteArray(block).replace("%1", "wide").replace("%2", "900") +
                         QByteArray(block).replace("%1", "narrow").replace("%2", "20") + "</interface>\n");
        window.write("theme/theme.xml",
                     "<config><file_widget>widget.xml</file_widget><file_i18n>lang\\i18n.xml"
                     "</file_i18n></config>");
        window.skin->openTheme(window.files.path({}));
        window.openTheme();
        window.turnTo(4);
        window.press("lvLang", 0, Qt::Key_Return);
        window.select("LvBhs", 0);
        QTRY_COMPARE_WITH_TIMEOUT(window.shown("lvStringUses"), u"main | 2\nmain | 3\n"_s, 10000);
        window.select("LvBhs", 1);
        QCOMPARE(window.shown("lvStringUses"), QString());

        const auto cut = [&] {
            QStringList found;
            const QAbstractItemModel *rows = window.model("lvCheck");
            for (int row = 0; row < rows->rowCount(); ++row) {
                if (rows->index(row, 2).data() == u"text-fit"_s)
                    found.append(rows->index(row, 0).data().toString().remove(QRegularExpression(u"\\d+"_s)));
            }
            return found.join(u'\n');
        };
        const QString narrow = u"Cut by  pixels (German): \"Sender\" in the block \"narrow\""_s;
        window.choose("mnuTextFit");
        QTRY_COMPARE_WITH_TIMEOUT(window.said(), u"1 text is cut; the Check tab has it."_s, 20000);
        QTRY_COMPARE(cut(), narrow);

        window.select("LvBhs", 0);
        window.press("lvStringUses", 1, Qt::Key_Return);
        QCOMPARE(window.source()->textCursor().selectedText(), u"Channel list"_s);
        QVERIFY(window.source()->text().first(window.source()->selectionStart()).contains(u"narrow"));
        QVERIFY(window.find<QAction>("mnuReceiver")->isChecked());
        QCOMPARE(window.find<QComboBox>("cboLanguage")->currentText(), u"German"_s);

        QTRY_COMPARE(cut(), narrow); // the window is laid out anew in the source
        const QString text = window.source()->text();
        window.source()->rewrite(QString(text).replace(u"[0,0,20,90]"_s, u"[0,0,900,90]"_s));
        QTRY_COMPARE_WITH_TIMEOUT(cut(), QString(), 10000);
        window.source()->rewrite(QString(text).replace(u"[0,0,900,90]"_s, u"[0,0,10,90]"_s));
        QTRY_COMPARE_WITH_TIMEOUT(cut().count(u'\n'), 1, 10000);
        window.prompts.expectInput(u"Input Logo Channel"_s, u"Translate for Channel list"_s,
                                   u"Kan\u00E4le"_s);
        window.press("LvBhs", 0, Qt::Key_Return); // a text that has not been measured
        QTRY_COMPARE_WITH_TIMEOUT(cut(), QString(), 10000);
    }

    void whatIsMissingIsSaid()
    {
        LanguageWindow window;
        const QString none = u"No language is selected: select one in the upper list of the Lang tab."_s;
        window.prompts.expectMessage(u"Quillmere"_s, none);
        window.choose("mnuLangOpen");
        window.prompts.expectMessage(u"Quillmere"_s, none);
        window.choose("mnuLangSave");
        window.press("lvLang", 0, Qt::Key_Shift);
        window.prompts.expectMessage(
            u"Quillmere"_s, u"No language file is open: double-click a language on the Lang tab first."_s);
        window.choose("mnuLangSave");
        window.prompts.expectMessage(
            u"Quillmere"_s, u"There is no folder %1 with dictionaries."_s.arg(window.path("program/trans")));
        window.choose("mnuLangTrans(0)");
        window.choose("mnuLangTranslate");
        QCOMPARE(window.strings(), QString());
    }

    // What comes back is shown first; what is ticked becomes unsaved edits, a fuzzy one without its mark.
    void exportAndImport()
    {
        LanguageWindow window;
        window.prompts.expectMessage(
            u"Quillmere"_s, u"No language file is open: double-click a language on the Lang tab first."_s);
        window.choose("mnuLangExport");
        window.press("lvLang", 0, Qt::Key_Return);
        window.press("LvBhs", 0, Qt::Key_Space);
        window.prompts.expectInput(u"Export"_s, u"German.po"_s, window.path("German.xlf"));
        window.choose("mnuLangExport");
        const QByteArray exported = window.files.read(u"German.xlf"_s);
        QVERIFY2(exported.contains("<target state=\"translated\">Sender</target>"), exported.constData());
        const QString folder = window.files.folder() + u'/';
        window.prompts.expectInput(u"Import"_s, folder, window.path("German.xlf"));
        window.prompts.expectMessage(u"Import"_s, window.path("German.xlf") +
                                                      u" changes nothing: it has the same translations.");
        window.choose("mnuLangImport");

        window.files.write(u"tr.po"_s, "msgid \"\"\nmsgstr \"Language: tr\\n\"\n"
                                       "msgid \"Menu\"\nmsgstr \"M\"\n");
        window.prompts.expectInput(u"Import"_s, folder, window.path("tr.po"));
        window.prompts.expectQuestion(u"Import"_s, u"This file says it is Turkish. Import it into German?"_s,
                                      false);
        window.choose("mnuLangImport");

        window.files.write(
            u"back.po"_s, "msgid \"Channel list\"\nmsgstr \"\"\n\n#, fuzzy\nmsgid \"Radio\"\nmsgstr \"R\"\n\n"
                          "msgid \"Menu\"\nmsgstr \"M\"\nmsgid \"Menu\"\nmsgstr \"N\"\n"
                          "msgid \"Other\"\nmsgstr \"O\"\n");
        window.prompts.expectInput(u"Import"_s, folder, window.path("back.po"));
        window.choose("mnuLangImport");
        QWidget *dialog = dialogNamed("frmImport");
        auto *list = childOf<ListView>(*dialog, "lvImport");
        const QString offered = rowsAsText(list->model());
        QCOMPARE(offered, u"* Channel list | Sender |  | gone\n* Radio |  | R | new, fuzzy\n"
                          "Menu |  | M | conflicting\nMenu |  | N | conflicting\n"_s);
        const auto ticks = [&](const char *button) {
            childOf<QPushButton>(*dialog, button)->click();
            QCoreApplication::processEvents();
            return childOf<QLabel>(*dialog, "lblImportCount")->text();
        };
        QCOMPARE(ticks("cmdImportNone"), u"0 of 4 translations"_s);
        QCOMPARE(ticks("cmdImportAll"), u"3 of 4 translations"_s); // "Menu" has one
        childOf<QAction>(*list, "mnuRowsUndo")->trigger();
        childOf<QAction>(*list, "mnuRowsUndo")->trigger();
        QCOMPARE(rowsAsText(list->model()), offered);
        QCOMPARE(childOf<QPlainTextEdit>(*dialog, "txtImportLeftOut")->toPlainText(),
                 u"Line 12: the language has no \"Other\""_s);
        for (const int row : {0, 2, 3}) {
            list->setCurrentIndex(list->model()->index(row, 0));
            QTest::keyClick(list, Qt::Key_Space);
        }
        QCoreApplication::processEvents();
        childOf<QAction>(*list, "mnuRowsUndo")->trigger();
        QCOMPARE(rowsAsText(list->model()), offered);
        childOf<QAction>(*list, "mnuRowsRedo")->trigger();
        QCOMPARE(childOf<QLabel>(*dialog, "lblImportCount")->text(), u"2 of 4 translations"_s);
        QCoreApplication::processEvents(); // for what has changed is a step of its own then
        QTest::keyClick(dialog, Qt::Key_Return);
        QTRY_COMPARE(window.strings(), u"*  | Channel list | Sender\n | Radio | R\n*  | Menu | N\n"_s);
        QCOMPARE(window.files.read(u"theme/lang/sub/de.xml"_s), kGerman);
        QCoreApplication::processEvents();
        childOf<QAction>(*window.find<ListView>("LvBhs"), "mnuRowsUndo")->trigger();
        QCOMPARE(window.strings(), u"*  | Channel list | Sender\n | Radio | \n | Menu | \n"_s);

        window.files.write(u"bad.csv"_s, "Source,Translation\n\"");
        window.prompts.expectInput(u"Import"_s, folder, window.path("bad.csv"));
        window.prompts.expectMessage(u"Quillmere"_s,
                                     u"Cannot read \"" + window.path("bad.csv") +
                                         u"\": line 2: the double quote here has no other."_s);
        window.choose("mnuLangImport");
    }
};

WINDOW_TEST_MAIN(TestTranslate)
#include "tst_translate.moc"
