#include "TextTable.h"
#include "app/EditedTheme.h"

#include "app/Going.h"
#include "app/OpenDocument.h"
#include "app/ThemeEditing.h"
#include "app/ThemeNames.h"
#include "files/TextFile.h"
#include "theme/forms/LiveIndex.h"

using namespace quillmere;

namespace {

const QByteArray kWindow = "<interface>\n <widget class=\"image\" name=\"a\"><img/>\n\n"
                           "\t<img>logo</img></widget>\n</interface>\n";

// A theme in which every kind of name is used, with its window "main" open.
void openNames(Window &window)
{
    window.write(
        "theme/theme.xml",
        "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
        "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n><file_font>font.xml</file_font>"
        "</config>");
    window.write("theme/widget.xml",
                 "<interface>\n<widget class=\"window\" style=\"default\" name=\"main\"/>\n"
                 "<widget class=\"window\" style=\"default\" name=\"other\"/>\n</interface>");
    window.write("theme/main.xml", kWindow);
    window.write("theme/other.xml", kWindow);
    window.write("theme/image.xml", "<image id=\"icon\">i.png</image>\n<image id=\"logo\">l.png</image>");
    window.write("theme/color.xml", "<color name=\"navy\">#000080</color>");
    window.write("theme/font.xml",
                 "<fonts><font><name>big</name><file>b.ttf</file><size>20</size></font></fonts>");
    window.write("theme/lang.xml", "<language id=\"English\">en.xml</language>");
    window.write(
        "theme/en.xml",
        "<language name=\"English\"><tran id=\"No\">Nein</tran><tran id=\"Yes\">Ja</tran></language>");
    window.openTheme();
    window.openDocument("theme/main.xml");
}

void openIndexed(Window &window)
{
    openNames(window);
    QVERIFY(
        QTest::qWaitFor([&] { return window.skin->findChild<LiveIndex *>()->index() != nullptr; }, 10000));
}

// A control of a dialog that has the keyboard.
template <typename Kind>
Kind *in(const char *form, const char *name)
{
    QWidget *dialog = dialogNamed(form);
    if (!QTest::qWaitFor([&] { return dialog->isActiveWindow(); }))
        qFatal("%s does not become active", form);
    return childOf<Kind>(*dialog, name);
}

// No window manager gives the keyboard back when a dialog closes.
void bringToFront(const Window &window)
{
    window.skin->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window.skin.get());
}

// Puts the caret into a text in the source.
void putCaret(const Window &window, const char *at)
{
    window.turnTo(8);
    const qsizetype position = text(window).indexOf(QLatin1String(at));
    QVERIFY(position >= 0);
    window.source()->select(position + 1, 0);
    window.source()->setFocus();
}

void selectRow(const Window &window, const char *list, int row)
{
    auto *view = window.find<ListView>(list);
    for (int tab = 0; tab < 9; ++tab) {
        if (window.find<QWidget>(qPrintable(u"frYt(%1)"_s.arg(tab)))->isAncestorOf(view))
            window.turnTo(tab);
    }
    view->setCurrentIndex(view->model()->index(row, 1));
    view->setFocus();
}

// Where one is: the tab, and there the row or the window with what is selected.
QString place(const Window &window)
{
    const auto *strip = window.find<QTabBar>("TabStrip4");
    QString text = strip->tabText(strip->currentIndex());
    const auto *list = qobject_cast<ListView *>(QApplication::focusWidget());
    if (text == u"Source")
        text += u' ' + QFileInfo(window.skin->findChild<OpenDocument *>()->path()).baseName() + u' ' +
                window.source()->textCursor().selectedText();
    else if (list)
        text += u' ' + list->objectName() + u' ' + QString::number(list->selectedRow());
    return text;
}

void press(const Window &window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : window.skin.get(), key, modifiers);
}

void renameSelected(const Window &window, const QString &name)
{
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), name);
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
}

void renameLogo(const Window &window)
{
    putCaret(window, "logo<");
    renameSelected(window, u"fresh"_s);
}

} // namespace

// What leads to the places of a theme and back, and what changes them.
class TestGoing : public QObject
{
    Q_OBJECT

private slots:
    void leadsToPlaces_data()
    {
        textTable({"file"}, {{u"Image lvImage 1", u"image.xml"},
                             {u"Color lvColor 0", u"color.xml"},
                             {u"Font lvFont 0", u"font.xml"},
                             {u"Lang lvLang 0", u"lang.xml"},
                             {u"Lang LvBhs 1", u"en.xml"},
                             {u"Widget LvWidget 1", u"widget.xml"},
                             {u"Source other logo", u"other.xml"}, // where formatting has put the name
                             {u"Source main logo", u"main.xml"}});
    }

    void leadsToPlaces()
    {
        QFETCH(QString, file);
        const QString expected = QString::fromLatin1(QTest::currentDataTag());
        Window window;
        openNames(window);
        const QString path = window.files.path(u"theme/" + file);
        const QString content = file == u"main.xml" ? text(window) : LoadFile(path);
        const qint32 at = qint32(content.indexOf(u"logo"_s));
        const int row = expected.startsWith(u"Source") ? -1 : expected.section(u' ', 2).toInt();
        window.skin->findChild<Going *>()->goTo(path, {at, at + 4}, row);
        QCOMPARE(place(window), expected);
    }

    void backAndForward()
    {
        Window window;
        openNames(window);
        auto *strip = window.find<QTabBar>("TabStrip4");
        auto *going = window.skin->findChild<Going *>();
        strip->setCurrentIndex(8);
        const QString logo = u"logo"_s;
        going->goTo(window.path("theme/main.xml"),
                    {qint32(text(window).indexOf(logo)), qint32(text(window).indexOf(logo)) + 4}, -1);
        going->goTo(window.path("theme/image.xml"), {}, 1);
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(3).center());
        const qint32 at = qint32(kWindow.indexOf("logo"));
        going->goTo(window.path("theme/other.xml"), {at, at + 4}, -1);
        QStringList seen = {place(window)};
        for (int i = 0; i < 3; ++i) {
            press(window, Qt::Key_Left, Qt::AltModifier);
            seen.append(place(window));
        }
        QCOMPARE(seen.join(u'\n'),
                 u"Source other logo\nColor lvColor -1\nImage lvImage 1\nSource main logo"_s);
        for (int i = 0; i < 4; ++i)
            press(window, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(place(window), seen.first());
        QCOMPARE(window.said(), u"There is no place after this one."_s);
        // A window that has gone in between is passed over.
        QFile::remove(window.path("theme/main.xml"));
        for (int i = 0; i < 9; ++i)
            press(window, Qt::Key_Left, Qt::AltModifier);
        QVERIFY(!place(window).contains(u"Source main"_s));
    }

    // The text in the source box and rows change as one step each and are not written; a closed file is.
    void editsWhatIsOpen()
    {
        Window window;
        openNames(window);
        auto *editing = window.skin->findChild<ThemeEditing *>();
        const QString open = window.path("theme/main.xml"), closed = window.path("theme/other.xml");
        const QString before = text(window), inFile = LoadFile(closed);
        const auto *images = window.model("lvImage");
        ThemeEdit edit;
        for (const auto &[path, content] : {std::pair(open, before), std::pair(closed, inFile)}) {
            for (const char *from : {"logo", "name=\"a\""}) {
                const qint32 at = qint32(content.indexOf(QLatin1String(from)));
                QVERIFY(edit.replace(path, content, {at, at + 1}, u"L"_s));
            }
        }
        edit.changeRow(window.path("theme/image.xml"),
                       {1, ListRows::Row{window.path("theme/l.png"), {u"logo"_s, QString()}, false},
                        ListRows::Row{window.path("theme/l.png"), {u"Logo"_s, QString()}, false}});
        const QByteArray imageFile = window.read("theme/image.xml");
        const std::optional<ThemeEdit> inverse = editing->apply(edit);
        QVERIFY(inverse);
        QVERIFY(text(window).contains(u"<img>Logo</img>"_s));
        QCOMPARE(window.read("theme/main.xml"), kWindow);
        QVERIFY(window.read("theme/other.xml").contains("<img>Logo</img>"));
        QCOMPARE(images->index(1, 1).data().toString(), u"Logo"_s);
        QCOMPARE(window.read("theme/image.xml"), imageFile);
        window.source()->undo();
        QCOMPARE(text(window), before);
        window.source()->redo();
        QVERIFY(editing->apply(*inverse));
        QCOMPARE(text(window), before);
        QCOMPARE(window.read("theme/other.xml"), kWindow);
        QCOMPARE(images->index(1, 1).data().toString(), u"logo"_s);
    }

    void keysInTheSource_data()
    {
        textTable({"at", "expected"}, {{u"image", u"logo<", u"Image lvImage 1"},
                                       {u"colour", u"navy", u"Color lvColor 0"},
                                       {u"font", u"big", u"Font lvFont 0"},
                                       {u"string", u"Yes", u"Lang LvBhs 1"},
                                       {u"unknown", u"nobody", u"Source main "}});
    }

    // F12, and Ctrl with a click at the same place.
    void keysInTheSource()
    {
        QFETCH(QString, at);
        QFETCH(QString, expected);
        Window window;
        openIndexed(window);
        window.source()->rewrite(
            u"<interface>\n<widget name=\"a\">\n<forecolor>[navy]</forecolor>\n<font>big</font>\n"
            "<string>Yes</string>\n<unfocus_img>nobody</unfocus_img>\n<img>logo</img></widget>"_s);
        auto *source = window.source();
        putCaret(window, at.toLatin1());
        const QPoint click = source->cursorRect().center();
        press(window, Qt::Key_F12);
        QCOMPARE(place(window), expected);
        if (expected.startsWith(u"Source"))
            QCOMPARE(window.said(), u"Nothing defines the image \"nobody\"."_s);
        putCaret(window, "<interface>");
        QTest::mouseClick(source->viewport(), Qt::LeftButton, Qt::ControlModifier, click);
        QTRY_COMPARE(place(window), expected);
    }

    // A window that is opened from the list is formatted, and its other places are found all the same.
    void goesThroughUses()
    {
        Window window;
        window.write("theme/more.xml", kWindow + "<img>logo</img>\n");
        openIndexed(window);
        selectRow(window, "lvImage", 1);
        press(window, Qt::Key_F12, Qt::ShiftModifier);
        auto *uses = in<ListView>("frmUses", "lvUses");
        QCOMPARE(rowsAsText(uses->model()), u"main.xml | 3 | <img>logo</img></widget>\n"
                                            "other.xml | 4 | <img>logo</img></widget>\n"
                                            "more.xml | 4 | <img>logo</img></widget>\n"
                                            "more.xml | 6 | <img>logo</img>\n"_s);
        QStringList seen;
        for (const int row : {2, 3, 0, 1}) {
            uses->window()->activateWindow();
            uses = in<ListView>("frmUses", "lvUses");
            uses->setCurrentIndex(uses->model()->index(row, 0));
            QTest::keyClick(uses, Qt::Key_Return);
            seen.append(place(window) + QString::number(window.source()->textCursor().blockNumber()));
        }
        QCOMPARE(seen.join(u','),
                 u"Source more logo2,Source more logo4,Source main logo2,Source other logo2"_s);
    }

    void renames_data()
    {
        // No list stands for the source; the file changes on disk.
        textTable({"list", "row", "where", "from"},
                  {{u"in the source", u"", u"", u"other.xml", u"logo"},
                   {u"image", u"lvImage", u"1", u"other.xml", u"logo"},
                   {u"colour", u"lvColor", u"0", u"style.xml", u"navy"},
                   {u"font", u"lvFont", u"0", u"font.xml", u"big"},
                   {u"language", u"lvLang", u"0", u"en.xml", u"English"},
                   {u"window", u"LvWidget", u"1", u"widget.xml", u"other"},
                   {u"string of an open language", u"LvBhs", u"1", u"en.xml", u"rows, not the file"}});
    }

    void renames()
    {
        QFETCH(QString, list);
        QFETCH(QString, where);
        QFETCH(QString, from);
        QFETCH(QString, row);
        Window window;
        window.write("theme/style.xml", "<widget name=\"s\"><backcolor>[navy]</backcolor></widget>");
        openIndexed(window);
        const QString file = u"theme/" + where, source = text(window);
        const QByteArray before = window.files.read(file);
        QAction *undo = window.find<QAction>("mnuUndoRename");
        QVERIFY(!undo->isEnabled());
        if (list == u"LvBhs")
            openLanguage(window, 0);
        if (list.isEmpty())
            putCaret(window, "logo<");
        else
            selectRow(window, list.toLatin1(), row.toInt());
        const QString rowsBefore = list.isEmpty() ? QString() : window.shown(list.toLatin1());
        press(window, Qt::Key_F2);
        auto *name = in<QLineEdit>("frmRename", "txtRename");
        auto *go = in<QPushButton>("frmRename", "cmdRename");
        QVERIFY(name->hasFocus() && !go->isEnabled()); // it has that name
        QTest::keyClicks(name, u"<"_s);
        QVERIFY(!go->isEnabled());
        QTest::keyClick(name, Qt::Key_Backspace);
        QTest::keyClicks(name, u"fresh"_s);
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(window.files.read(file),
                 QByteArray(before).replace(
                     from.toLatin1(),
                     QString(from).replace(QRegularExpression(u"\\w+"_s), u"fresh"_s).toLatin1()));
        const bool isImage = list.isEmpty() || list == u"lvImage";
        QCOMPARE(text(window), isImage ? QString(source).replace(u"logo"_s, u"fresh"_s) : source);
        if (!list.isEmpty()) {
            const auto *rows = window.model(list.toLatin1());
            QCOMPARE(rows->index(row.toInt(), 1).data().toString(), u"fresh"_s);
        }
        QVERIFY(undo->isEnabled());
        undo->trigger();
        QVERIFY(!undo->isEnabled());
        QCOMPARE(window.files.read(file), before);
        QCOMPARE(text(window), source);
        if (!list.isEmpty())
            QCOMPARE(window.shown(list.toLatin1()), rowsBefore);
    }

    // The text and the catalogue change one after the other, and the page is that of both.
    void drawsWhatWasRenamed()
    {
        Window window;
        openIndexed(window);
        window.source()->setText(
            u"<widget class=\"image\" name=\"p\"><property><rect>[0,0,9,9]</rect><imgs><mode>"
            "single</mode><img>logo</img></imgs></property></widget>"_s);
        const auto page = [&] { return window.find<QWidget>("txtHtml")->property("plainText").toString(); };
        QVERIFY(page().contains(u"l.png"));
        renameLogo(window);
        QVERIFY(text(window).contains(u"<img>fresh<"));
        QVERIFY(page().contains(u"l.png"));
        window.choose("mnuUndoRename");
        QVERIFY(text(window).contains(u"<img>logo<"));
        QVERIFY(page().contains(u"l.png"));
    }

    void renamedWindowStaysOpen()
    {
        Window window;
        openIndexed(window);
        type(window, "<!-- mine -->");
        selectRow(window, "LvWidget", 0);
        renameSelected(window, u"first"_s);
        QVERIFY(!QFile::exists(window.path("theme/main.xml")));
        bringToFront(window);
        window.choose("mnuUndoRename");
        QCOMPARE(window.files.read(u"theme/main.xml"_s), kWindow);
        QVERIFY(!QFile::exists(window.path("theme/first.xml")));
        selectRow(window, "LvWidget", 0);
        renameSelected(window, u"first"_s);
        window.expectSave(true);
        window.turnTo(8);
        window.choose("mnuSave");
        QVERIFY(window.read("theme/first.xml").contains("mine"));
        QVERIFY(!QFile::exists(window.path("theme/main.xml")));
    }

    void undoOnlyWhatIsStillThere()
    {
        Window window;
        openIndexed(window);
        renameLogo(window);
        const QByteArray theirs = "<img>fresh</img>";
        window.write("theme/other.xml", theirs);
        const QString source = text(window);
        window.prompts.expectMessage(
            u"Quillmere"_s,
            u"Cannot change \"%1\": it has changed in the meantime."_s.arg(window.path("theme/other.xml")));
        window.choose("mnuUndoRename");
        QCOMPARE(text(window), source);
        QCOMPARE(window.read("theme/other.xml"), theirs);
        QCOMPARE(window.model("lvImage")->index(1, 1).data().toString(), u"fresh"_s);
    }

    void searchesAndReplaces()
    {
        Window window;
        openIndexed(window);
        window.turnTo(8);
        window.source()->setFocus();
        press(window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        auto *searched = in<QLineEdit>("frmSearch", "txtSearch");
        QTest::keyClicks(searched, u"WIDGET"_s);
        QTest::keyClick(searched, Qt::Key_Return);
        auto *places = in<ListView>("frmSearch", "lvUses");
        QTRY_COMPARE(places->model()->rowCount(), 4);
        // Going to one opens the window formatted; the places are still known.
        places->setCurrentIndex(places->model()->index(2, 0));
        QTest::keyClick(places, Qt::Key_Return);
        QCOMPARE(place(window), u"Source other widget"_s);
        places->window()->activateWindow();
        places = in<ListView>("frmSearch", "lvUses");
        places->setCurrentIndex(places->model()->index(1, 0));
        QTest::keyClick(places, Qt::Key_Space);
        QTest::keyClicks(in<QLineEdit>("frmSearch", "txtSearchReplace"), u"style"_s);
        QTest::mouseClick(in<QPushButton>("frmSearch", "cmdSearchReplace"), Qt::LeftButton);
        QCOMPARE(window.read("theme/main.xml"), QByteArray(kWindow).replace("<widget", "<style"));
        QCOMPARE(text(window).count(u"style"_s), 2);
        QCOMPARE(window.read("theme/other.xml"), kWindow); // it is open, and not saved
        window.choose("mnuUndoRename");
        QCOMPARE(window.read("theme/main.xml"), kWindow);
    }

    void blocks()
    {
        Window window;
        openIndexed(window);
        const QString before = text(window);
        selectRow(window, "lvBlock", 0);
        press(window, Qt::Key_F12);
        QCOMPARE(place(window), u"Source main a"_s);
        selectRow(window, "lvBlock", 0);
        renameSelected(window, u"z"_s);
        QCOMPARE(text(window), QString(before).replace(u"\"a\""_s, u"\"z\""_s));
        QCOMPARE(window.model("lvBlock")->index(0, 1).data().toString(), u"z"_s);
        QCOMPARE(window.read("theme/main.xml"), kWindow);
    }

    void menuOfARow()
    {
        Window window;
        openIndexed(window);
        selectRow(window, "lvColor", 0);
        auto *list = window.find<ListView>("lvColor");
        window.find<QWidget>("wb")->setFocus();
        const QPoint at = list->visualRect(list->currentIndex()).center();
        QContextMenuEvent asks(QContextMenuEvent::Keyboard, at, list->viewport()->mapToGlobal(at));
        QApplication::sendEvent(list->viewport(), &asks);
        auto *menu = list->findChild<QMenu *>(u"mnuRow"_s);
        QVERIFY(menu && menu->isVisible());
        QVERIFY(menu->actions().contains(window.find<QAction>("mnuUses")));
        menu->close();
        window.choose("mnuUses");
        QCOMPARE(in<QLabel>("frmUses", "lblUses")->text(), u"Nothing uses the colour \"navy\"."_s);
    }

    // What was found and renamed in one theme is over when another one is opened.
    void anotherTheme()
    {
        Window window;
        openIndexed(window);
        putCaret(window, "logo<");
        press(window, Qt::Key_F12, Qt::ShiftModifier);
        QWidget *uses = dialogNamed("frmUses");
        bringToFront(window);
        renameLogo(window);
        window.write("second/theme/theme.xml", "<config></config>");
        window.skin->openTheme(window.path("second/theme"));
        QVERIFY(!uses->isVisible());
        QVERIFY(!window.find<QAction>("mnuUndoRename")->isEnabled());
    }

    void asksBeforeItWritesOutside()
    {
        Window window;
        openIndexed(window);
        const QString outside = window.write("other.xml", kWindow);
        QFile::remove(window.path("theme/other.xml"));
        QVERIFY(QFile::link(outside, window.path("theme/other.xml")));
        const QString before = text(window);
        putCaret(window, "logo<");
        press(window, Qt::Key_F2);
        QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), u"fresh"_s);
        window.prompts.expectQuestion(
            u"Change"_s,
            u"Not written: the theme leads outside its own folder, to\n\n%1\n\nAllow this file to be "
            "written and deleted until you leave Quillmere?"_s.arg(outside),
            false);
        QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
        QVERIFY(dialogNamed("frmRename")); // it stays, so that the place can be left out
        QCOMPARE(text(window), before);
        QCOMPARE(window.read("other.xml"), kWindow);
        in<QPushButton>("frmRename", "cmdRenameCancel")->click();
    }
};

WINDOW_TEST_MAIN(TestGoing)
#include "tst_going.moc"
