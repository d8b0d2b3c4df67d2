#include "app/EditedTheme.h"

#include "app/Going.h"
#include "app/OpenDocument.h"
#include "app/ThemeEditing.h"
#include "app/ThemeNames.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"
#include "theme/forms/LiveIndex.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

using namespace quillmere;

namespace {

const QByteArray kWindow = "<interface>\n <widget class=\"image\" name=\"a\"><img/>\n\n"
                           "\t<img>logo</img></widget>\n</interface>\n";

// A theme in which every kind of name is used, with its window "main" open.
void openNames(Window &window)
{
    const auto write = [&](const char *name, const QByteArray &bytes) {
        window.files.write(QStringLiteral("theme/") + QLatin1String(name), bytes);
    };
    write("theme.xml",
          "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
          "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n><file_font>font.xml</file_font>"
          "</config>");
    write("widget.xml", "<interface>\n<widget class=\"window\" style=\"default\" name=\"main\"/>\n"
                        "<widget class=\"window\" style=\"default\" name=\"other\"/>\n</interface>");
    write("main.xml", kWindow);
    write("other.xml", kWindow);
    write("image.xml", "<image id=\"icon\">i.png</image>\n<image id=\"logo\">l.png</image>");
    write("color.xml", "<color name=\"navy\">#000080</color>");
    write("font.xml", "<fonts><font><name>big</name><file>b.ttf</file><size>20</size></font></fonts>");
    write("lang.xml", "<language id=\"English\">en.xml</language>");
    write("en.xml",
          "<language name=\"English\"><tran id=\"No\">Nein</tran><tran id=\"Yes\">Ja</tran></language>");
    window.openTheme();
    window.openDocument("theme/main.xml");
}

QString themeFile(const Window &window, const char *name)
{
    return window.files.path(QStringLiteral("theme/") + QLatin1String(name));
}

void openIndexed(Window &window)
{
    openNames(window);
    QVERIFY(
        QTest::qWaitFor([&] { return window.skin->findChild<LiveIndex *>()->index() != nullptr; }, 10000));
}

// A dialog that is shown, and what is in it.
QWidget *dialog(const char *name)
{
    QWidget *found = nullptr;
    const bool isThere = QTest::qWaitFor([&] {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto it = std::find_if(all.begin(), all.end(), [&](const QWidget *each) {
            return each->objectName() == QLatin1String(name) && each->isVisible() && each->isActiveWindow();
        });
        found = it == all.end() ? nullptr : *it;
        return found != nullptr;
    });
    if (!isThere)
        qFatal("There is no %s", name);
    return found;
}
template <typename Kind>
Kind *in(const char *form, const char *name)
{
    auto *found = dialog(form)->findChild<Kind *>(QLatin1String(name));
    if (!found)
        qFatal("There is no %s in %s", name, form);
    return found;
}

// No window manager gives the keyboard back when a dialog closes.
void bringToFront(const Window &window)
{
    window.skin->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window.skin.get());
}

// Puts the caret into the n-th place of a text in the source.
void putCaret(const Window &window, const char *at, int number = 1)
{
    window.turnTo(8);
    auto *source = window.source();
    qsizetype position = -1;
    for (int i = 0; i < number; ++i)
        position = text(window).indexOf(QLatin1String(at), position + 1);
    QVERIFY(position >= 0);
    source->select(position + 1, 0);
    source->setFocus();
}

void selectRow(const Window &window, const char *list, int row)
{
    auto *view = window.find<ListView>(list);
    for (int tab = 0; tab < 9; ++tab) {
        if (window.find<QWidget>(qPrintable(QStringLiteral("frYt(%1)").arg(tab)))->isAncestorOf(view))
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

} // namespace

// What leads to the places of a theme and back, and what changes them.
class TestGoing : public QObject
{
    Q_OBJECT

private slots:
    void leadsToPlaces_data();
    void leadsToPlaces();
    void backAndForward();
    void editsWhatIsOpen();
    void refusesWhatChanged();
    void keysInTheSource_data();
    void keysInTheSource();
    void goesThroughUses();
    void renames_data();
    void renames();
    void drawsWhatWasRenamed();
    void renamedWindowStaysOpen();
    void undoOnlyWhatIsStillThere();
    void searchesAndReplaces();
    void blocks();
    void menuOfARow();
    void anotherTheme();
    void asksBeforeItWritesOutside();
};

void TestGoing::leadsToPlaces_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *file, int number, const char *expected) {
        QTest::newRow(expected) << QString::fromLatin1(file) << number << QString::fromLatin1(expected);
    };
    row("image.xml", 1, "Image lvImage 1");
    row("color.xml", 0, "Color lvColor 0");
    row("font.xml", 0, "Font lvFont 0");
    row("lang.xml", 0, "Lang lvLang 0");
    row("en.xml", 1, "Lang LvBhs 1");
    row("widget.xml", 1, "Widget LvWidget 1");
    row("other.xml", -1, "Source other logo"); // where formatting has put the name
    row("main.xml", -1, "Source main logo");
}

void TestGoing::leadsToPlaces()
{
    QFETCH(QString, file);
    QFETCH(int, row);
    QFETCH(QString, expected);
    Window window;
    openNames(window);
    const QString path = themeFile(window, file.toLatin1());
    const QString content = file == u"main.xml" ? text(window) : LoadFile(path);
    const qint32 at = qint32(content.indexOf(QStringLiteral("logo")));
    window.skin->findChild<Going *>()->goTo(path, {at, at + 4}, row);
    QCOMPARE(place(window), expected);
}

void TestGoing::backAndForward()
{
    Window window;
    openNames(window);
    auto *strip = window.find<QTabBar>("TabStrip4");
    auto *going = window.skin->findChild<Going *>();
    strip->setCurrentIndex(8);
    const QString logo = QStringLiteral("logo");
    going->goTo(themeFile(window, "main.xml"),
                {qint32(text(window).indexOf(logo)), qint32(text(window).indexOf(logo)) + 4}, -1);
    going->goTo(themeFile(window, "image.xml"), {}, 1);
    QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(3).center());
    const qint32 at = qint32(kWindow.indexOf("logo"));
    going->goTo(themeFile(window, "other.xml"), {at, at + 4}, -1);
    QStringList seen = {place(window)};
    for (int i = 0; i < 3; ++i) {
        press(window, Qt::Key_Left, Qt::AltModifier);
        seen.append(place(window));
    }
    QCOMPARE(seen.join(u'\n'),
             QStringLiteral("Source other logo\nColor lvColor -1\nImage lvImage 1\nSource main logo"));
    for (int i = 0; i < 4; ++i)
        press(window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(place(window), seen.first());
    QCOMPARE(window.said(), QStringLiteral("There is no place after this one."));
    // A window that has gone in between is passed over.
    QFile::remove(themeFile(window, "main.xml"));
    for (int i = 0; i < 9; ++i)
        press(window, Qt::Key_Left, Qt::AltModifier);
    QVERIFY(!place(window).contains(QStringLiteral("Source main")));
}

// The text in the source box and rows change as one step each and are not written; a closed file is.
void TestGoing::editsWhatIsOpen()
{
    Window window;
    openNames(window);
    auto *editing = window.skin->findChild<ThemeEditing *>();
    const QString open = themeFile(window, "main.xml"), closed = themeFile(window, "other.xml");
    const QString before = text(window), inFile = LoadFile(closed);
    const auto *images = window.model("lvImage");
    ThemeEdit edit;
    for (const auto &[path, content] : {std::pair(open, before), std::pair(closed, inFile)}) {
        for (const char *from : {"logo", "name=\"a\""}) {
            const qint32 at = qint32(content.indexOf(QLatin1String(from)));
            QVERIFY(edit.replace(path, content, {at, at + 1}, QStringLiteral("L")));
        }
    }
    edit.changeRow(themeFile(window, "image.xml"),
                   {1, ListRows::Row{themeFile(window, "l.png"), {QStringLiteral("logo"), QString()}, false},
                    ListRows::Row{themeFile(window, "l.png"), {QStringLiteral("Logo"), QString()}, false}});
    const QByteArray imageFile = window.read("theme/image.xml");
    const std::optional<ThemeEdit> inverse = editing->apply(edit);
    QVERIFY(inverse);
    QVERIFY(text(window).contains(QStringLiteral("<img>Logo</img>")));
    QCOMPARE(window.read("theme/main.xml"), kWindow);
    QVERIFY(window.read("theme/other.xml").contains("<img>Logo</img>"));
    QCOMPARE(images->index(1, 1).data().toString(), QStringLiteral("Logo"));
    QCOMPARE(window.read("theme/image.xml"), imageFile);
    window.source()->undo();
    QCOMPARE(text(window), before);
    window.source()->redo();
    QVERIFY(editing->apply(*inverse));
    QCOMPARE(text(window), before);
    QCOMPARE(window.read("theme/other.xml"), kWindow);
    QCOMPARE(images->index(1, 1).data().toString(), QStringLiteral("logo"));
}

void TestGoing::refusesWhatChanged()
{
    Window window;
    openNames(window);
    const QString open = themeFile(window, "main.xml"), closed = themeFile(window, "other.xml");
    ThemeEdit edit;
    QVERIFY(edit.replace(open, text(window), {0, 1}, QStringLiteral("X")));
    QVERIFY(edit.replace(closed, LoadFile(closed), {0, 1}, QStringLiteral("X")));
    type(window, "y");
    const QString typed = text(window);
    auto *editing = window.skin->findChild<ThemeEditing *>();
    QVERIFY_EXCEPTION_THROWN(editing->apply(edit), RunTimeError);
    QCOMPARE(text(window), typed);
    QCOMPARE(window.read("theme/other.xml"), kWindow);
}

void TestGoing::keysInTheSource_data()
{
    QTest::addColumn<QString>("at");
    QTest::addColumn<QString>("expected");
    QTest::newRow("image") << QStringLiteral("logo<") << QStringLiteral("Image lvImage 1");
    QTest::newRow("colour") << QStringLiteral("navy") << QStringLiteral("Color lvColor 0");
    QTest::newRow("font") << QStringLiteral("big") << QStringLiteral("Font lvFont 0");
    QTest::newRow("string") << QStringLiteral("Yes") << QStringLiteral("Lang LvBhs 1");
    QTest::newRow("unknown") << QStringLiteral("nobody") << QStringLiteral("Source main ");
}

// F12, and Ctrl with a click at the same place.
void TestGoing::keysInTheSource()
{
    QFETCH(QString, at);
    QFETCH(QString, expected);
    Window window;
    openIndexed(window);
    window.source()->rewrite(
        QStringLiteral("<interface>\n<widget name=\"a\">\n<forecolor>[navy]</forecolor>\n<font>big</font>\n"
                       "<string>Yes</string>\n<unfocus_img>nobody</unfocus_img>\n<img>logo</img></widget>"));
    auto *source = window.source();
    putCaret(window, at.toLatin1());
    const QPoint click = source->cursorRect().center();
    press(window, Qt::Key_F12);
    QCOMPARE(place(window), expected);
    if (expected.startsWith(u"Source"))
        QCOMPARE(window.said(), QStringLiteral("Nothing defines the image \"nobody\"."));
    putCaret(window, "<interface>");
    QTest::mouseClick(source->viewport(), Qt::LeftButton, Qt::ControlModifier, click);
    QTRY_COMPARE(place(window), expected);
}

// A window that is opened from the list is formatted, and its other places are found all the same.
void TestGoing::goesThroughUses()
{
    Window window;
    window.write("theme/more.xml", kWindow + "<img>logo</img>\n");
    openIndexed(window);
    selectRow(window, "lvImage", 1);
    press(window, Qt::Key_F12, Qt::ShiftModifier);
    auto *uses = in<ListView>("frmUses", "lvUses");
    QCOMPARE(rowsAsText(uses->model()), QStringLiteral("main.xml | 3 | <img>logo</img></widget>\n"
                                                       "other.xml | 4 | <img>logo</img></widget>\n"
                                                       "more.xml | 4 | <img>logo</img></widget>\n"
                                                       "more.xml | 6 | <img>logo</img>\n"));
    QStringList seen;
    for (const int row : {2, 3, 0, 1}) {
        uses->window()->activateWindow();
        uses = in<ListView>("frmUses", "lvUses");
        uses->setCurrentIndex(uses->model()->index(row, 0));
        QTest::keyClick(uses, Qt::Key_Return);
        seen.append(place(window) + QString::number(window.source()->textCursor().blockNumber()));
    }
    QCOMPARE(seen.join(u','),
             QStringLiteral("Source more logo2,Source more logo4,Source main logo2,Source other logo2"));
}

void TestGoing::renames_data()
{
    QTest::addColumn<QString>("list"); // empty for the source
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("where"); // a file that changes on disk
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("in the source") << QString() << 0 << QStringLiteral("other.xml") << QByteArray(">logo<")
                                   << QByteArray(">fresh<");
    QTest::newRow("image") << QStringLiteral("lvImage") << 1 << QStringLiteral("other.xml")
                           << QByteArray(">logo<") << QByteArray(">fresh<");
    QTest::newRow("colour") << QStringLiteral("lvColor") << 0 << QStringLiteral("style.xml")
                            << QByteArray("navy") << QByteArray("fresh");
    QTest::newRow("font") << QStringLiteral("lvFont") << 0 << QStringLiteral("font.xml")
                          << QByteArray(">big<") << QByteArray(">fresh<");
    QTest::newRow("language") << QStringLiteral("lvLang") << 0 << QStringLiteral("en.xml")
                              << QByteArray("English") << QByteArray("fresh");
    QTest::newRow("window") << QStringLiteral("LvWidget") << 1 << QStringLiteral("widget.xml")
                            << QByteArray("other") << QByteArray("fresh");
    QTest::newRow("string of an open language")
        << QStringLiteral("LvBhs") << 1 << QStringLiteral("en.xml") << QByteArray("Yes")
        << QByteArray("Yes"); // rows, not the file
}

void TestGoing::renames()
{
    QFETCH(QString, list);
    QFETCH(int, row);
    QFETCH(QString, where);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
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
        selectRow(window, list.toLatin1(), row);
    const QString rowsBefore = list.isEmpty() ? QString() : window.shown(list.toLatin1());
    press(window, Qt::Key_F2);
    auto *name = in<QLineEdit>("frmRename", "txtRename");
    auto *go = in<QPushButton>("frmRename", "cmdRename");
    QVERIFY(name->hasFocus() && !go->isEnabled()); // it has that name
    QTest::keyClicks(name, QStringLiteral("<"));
    QVERIFY(!go->isEnabled());
    QTest::keyClick(name, Qt::Key_Backspace);
    QTest::keyClicks(name, QStringLiteral("fresh"));
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(window.files.read(file), QByteArray(before).replace(from, to));
    const bool isImage = list.isEmpty() || list == u"lvImage";
    QCOMPARE(text(window),
             isImage ? QString(source).replace(QStringLiteral("logo"), QStringLiteral("fresh")) : source);
    if (!list.isEmpty()) {
        const auto *rows = window.find<ListView>(list.toLatin1())->model();
        QCOMPARE(rows->index(row, 1).data().toString(), QStringLiteral("fresh"));
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
void TestGoing::drawsWhatWasRenamed()
{
    Window window;
    openIndexed(window);
    window.find<SourceBox>("txtSnippet")
        ->setText(
            QStringLiteral("<widget class=\"image\" name=\"p\"><property><rect>[0,0,9,9]</rect><imgs><mode>"
                           "single</mode><img>logo</img></imgs></property></widget>"));
    const auto page = [&] { return window.find<QWidget>("txtHtml")->property("plainText").toString(); };
    QVERIFY(page().contains(u"l.png"));
    putCaret(window, "logo<");
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("fresh"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    QVERIFY(text(window).contains(u"<img>fresh<"));
    QVERIFY(page().contains(u"l.png"));
    window.choose("mnuUndoRename");
    QVERIFY(text(window).contains(u"<img>logo<"));
    QVERIFY(page().contains(u"l.png"));
}

void TestGoing::renamedWindowStaysOpen()
{
    Window window;
    openIndexed(window);
    type(window, "<!-- mine -->");
    selectRow(window, "LvWidget", 0);
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("first"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    QVERIFY(!QFile::exists(themeFile(window, "main.xml")));
    bringToFront(window);
    window.choose("mnuUndoRename");
    QCOMPARE(window.files.read(QStringLiteral("theme/main.xml")), kWindow);
    QVERIFY(!QFile::exists(themeFile(window, "first.xml")));
    selectRow(window, "LvWidget", 0);
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("first"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    window.expectSave(true);
    window.turnTo(8);
    window.choose("mnuSave");
    QVERIFY(window.read("theme/first.xml").contains("mine"));
    QVERIFY(!QFile::exists(themeFile(window, "main.xml")));
}

void TestGoing::undoOnlyWhatIsStillThere()
{
    Window window;
    openIndexed(window);
    putCaret(window, "logo<");
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("fresh"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    const QByteArray theirs = "<img>fresh</img>";
    window.write("theme/other.xml", theirs);
    const QString source = text(window);
    window.prompts.expectMessage(
        QStringLiteral("Quillmere"),
        QStringLiteral("Cannot change \"%1\": it no longer holds what the change was made for.")
            .arg(themeFile(window, "other.xml")));
    window.choose("mnuUndoRename");
    QCOMPARE(text(window), source);
    QCOMPARE(window.read("theme/other.xml"), theirs);
    QCOMPARE(window.model("lvImage")->index(1, 1).data().toString(), QStringLiteral("fresh"));
}

void TestGoing::searchesAndReplaces()
{
    Window window;
    openIndexed(window);
    window.turnTo(8);
    window.source()->setFocus();
    press(window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto *searched = in<QLineEdit>("frmSearch", "txtSearch");
    QTest::keyClicks(searched, QStringLiteral("WIDGET"));
    QTest::keyClick(searched, Qt::Key_Return);
    auto *places = in<ListView>("frmSearch", "lvUses");
    QTRY_COMPARE(places->model()->rowCount(), 4);
    // Going to one opens the window formatted; the places are still known.
    places->setCurrentIndex(places->model()->index(2, 0));
    QTest::keyClick(places, Qt::Key_Return);
    QCOMPARE(place(window), QStringLiteral("Source other widget"));
    places->window()->activateWindow();
    places = in<ListView>("frmSearch", "lvUses");
    places->setCurrentIndex(places->model()->index(1, 0));
    QTest::keyClick(places, Qt::Key_Space);
    QTest::keyClicks(in<QLineEdit>("frmSearch", "txtSearchReplace"), QStringLiteral("style"));
    QTest::mouseClick(in<QPushButton>("frmSearch", "cmdSearchReplace"), Qt::LeftButton);
    QCOMPARE(window.read("theme/main.xml"), QByteArray(kWindow).replace("<widget", "<style"));
    QCOMPARE(text(window).count(QStringLiteral("style")), 2);
    QCOMPARE(window.read("theme/other.xml"), kWindow); // it is open, and not saved
    window.choose("mnuUndoRename");
    QCOMPARE(window.read("theme/main.xml"), kWindow);
}

void TestGoing::blocks()
{
    Window window;
    openIndexed(window);
    const QString before = text(window);
    selectRow(window, "lvBlock", 0);
    press(window, Qt::Key_F12);
    QCOMPARE(place(window), QStringLiteral("Source main a"));
    selectRow(window, "lvBlock", 0);
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("z"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    QCOMPARE(text(window), QString(before).replace(QStringLiteral("\"a\""), QStringLiteral("\"z\"")));
    QCOMPARE(window.model("lvBlock")->index(0, 1).data().toString(), QStringLiteral("z"));
    QCOMPARE(window.read("theme/main.xml"), kWindow);
}

void TestGoing::menuOfARow()
{
    Window window;
    openIndexed(window);
    selectRow(window, "lvColor", 0);
    auto *list = window.find<ListView>("lvColor");
    window.find<QWidget>("wb")->setFocus();
    const QPoint at = list->visualRect(list->currentIndex()).center();
    QContextMenuEvent asks(QContextMenuEvent::Keyboard, at, list->viewport()->mapToGlobal(at));
    QApplication::sendEvent(list->viewport(), &asks);
    auto *menu = list->findChild<QMenu *>(QStringLiteral("mnuRow"));
    QVERIFY(menu && menu->isVisible());
    QVERIFY(menu->actions().contains(window.find<QAction>("mnuUses")));
    menu->close();
    window.choose("mnuUses");
    QCOMPARE(in<QLabel>("frmUses", "lblUses")->text(), QStringLiteral("Nothing uses the colour \"navy\"."));
}

// What was found and renamed in one theme is over when another one is opened.
void TestGoing::anotherTheme()
{
    Window window;
    openIndexed(window);
    putCaret(window, "logo<");
    press(window, Qt::Key_F12, Qt::ShiftModifier);
    QWidget *uses = dialog("frmUses");
    bringToFront(window);
    putCaret(window, "logo<");
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("fresh"));
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    window.write("second/theme/theme.xml", "<config></config>");
    window.skin->openTheme(window.path("second/theme"));
    QVERIFY(!uses->isVisible());
    QVERIFY(!window.find<QAction>("mnuUndoRename")->isEnabled());
}

void TestGoing::asksBeforeItWritesOutside()
{
    Window window;
    openIndexed(window);
    const QString outside = window.write("other.xml", kWindow);
    QFile::remove(themeFile(window, "other.xml"));
    QVERIFY(QFile::link(outside, themeFile(window, "other.xml")));
    const QString before = text(window);
    putCaret(window, "logo<");
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), QStringLiteral("fresh"));
    window.prompts.expectQuestion(
        QStringLiteral("Change"),
        QStringLiteral(
            "Not written: the theme leads outside of its own folder, to\n\n%1\n\nAllow this file to be "
            "written and deleted until you leave Quillmere?")
            .arg(outside),
        false);
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
    QVERIFY(dialog("frmRename")); // it stays, so that the place can be left out
    QCOMPARE(text(window), before);
    QCOMPARE(window.read("other.xml"), kWindow);
    in<QPushButton>("frmRename", "cmdRenameCancel")->click();
}

WINDOW_TEST_MAIN(TestGoing)
#include "tst_going.moc"
