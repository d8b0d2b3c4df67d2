#include "TextTable.h"
#include "app/NamesTheme.h"

#include "app/Going.h"
#include "app/OpenDocument.h"
#include "files/TextFile.h"

using namespace quillmere;

namespace {

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

} // namespace

// What leads to the places of a theme and back.
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
};

WINDOW_TEST_MAIN(TestGoing)
#include "tst_going.moc"
