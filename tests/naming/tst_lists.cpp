#include "app/EditedTheme.h"

#include "theme/forms/LiveIndex.h"
#include "widgets/forms/SourceTab.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kMain = "<interface>\n\t<img>i</img>\n\t<font>f</font>\n\t<img>i</img>\n</interface>\n";

// A window in the source that uses an image twice.
class ListedWindow : public Window
{
public:
    ListedWindow()
    {
        openAll(*this);
        write("theme/main.xml", kMain);
        write("theme/more.xml", "<x/>");
        openTheme();
        openDocument("theme/other.xml");
        openDocument("theme/main.xml");
        turnTo(8);
        const auto *index = skin->findChild<LiveIndex *>();
        if (!QTest::qWaitFor(
                [&] { return index->index() && index->index()->uses(NameKind::Image, u"i").size() == 2; }))
            qFatal("No index is made");
    }

    void putCaret(const char *before) const
    {
        source()->setFocus();
        source()->select(source()->text().indexOf(QLatin1String(before)), 0);
    }
    // Where the caret is: the number of the tab and the line.
    QString place() const
    {
        return u"%1:%2"_s.arg(find<QTabBar>("TabStrip4")->currentIndex())
            .arg(source()->textCursor().blockNumber() + 1);
    }
    void toFront() const
    {
        skin->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), skin.get());
    }
    void press(int key, Qt::KeyboardModifiers with = {}) const
    {
        QTest::keyClick(QApplication::activeWindow(), Qt::Key(key), with);
    }
    // Of a dialog that is in front.
    template <typename Kind>
    static Kind *in(const char *form, const char *name)
    {
        if (!QTest::qWaitFor([form] {
                return QApplication::activeWindow() &&
                       QApplication::activeWindow()->objectName() == QLatin1String(form);
            }))
            qFatal("No %s comes up", form);
        return QApplication::activeWindow()->findChild<Kind *>(QLatin1String(name));
    }
};

} // namespace

class TestLists : public QObject
{
    Q_OBJECT

private slots:
    // What is typed moves the places, and each stays the one that it was.
    void usesFollowTheText()
    {
        ListedWindow window;
        window.putCaret("i</img>");
        window.press(Qt::Key_F12, Qt::ShiftModifier);
        auto *uses = window.in<ListView>("frmUses", "lvUses");
        const QString before = u"main.xml | 2 | <img>i</img>\nmain.xml | 4 | <img>i</img>\n"_s;
        QCOMPARE(rowsAsText(uses->model()), before);
        uses->setCurrentIndex(uses->model()->index(1, 0));
        window.source()->rewrite(window.source()->text().replace(u"<font>"_s, u"<img>i</img>x\r\n<font>"_s));
        doubleClick(uses, 1); // nothing has been brought up to date
        QCOMPARE(window.place(), u"8:5"_s);
        QTRY_COMPARE(rowsAsText(uses->model()), u"main.xml | 2 | <img>i</img>\nmain.xml | 3 | <img>i</img>x\n"
                                                "main.xml | 5 | <img>i</img>\n"_s);
        QCOMPARE(uses->selectedRow(), 2);
        window.toFront();
        window.source()->undo();
        QTRY_COMPARE(rowsAsText(uses->model()), before);
        QCOMPARE(uses->selectedRow(), 1);
    }

    void searchFollowsTheText()
    {
        ListedWindow window;
        window.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        auto *places = window.in<ListView>("frmSearch", "lvUses");
        QTest::keyClicks(window.in<QLineEdit>("frmSearch", "txtSearch"), u"<img"_s);
        window.press(Qt::Key_Return);
        QTRY_COMPARE(places->model()->rowCount(), 2);
        places->model()->setData(places->model()->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        window.source()->rewrite(window.source()->text().replace(u"<font>"_s, u"<img>i</img>x\r\n<font>"_s));
        QTRY_COMPARE(rowsAsText(places->model()),
                     u"* main.xml | 2 | <img>i</img>\n"
                     "* main.xml | 3 | <img>i</img>x\nmain.xml | 5 | <img>i</img>\n"_s);
        for (int row = 0; row < 3; ++row) {
            const QModelIndex line = places->model()->index(row, 2);
            const auto [start, length] = places->markAt(line);
            QCOMPARE(line.data().toString().mid(start, length), u"<img"_s);
        }
        QTest::keyClicks(window.in<QLineEdit>("frmSearch", "txtSearchReplace"), u"<top"_s);
        window.in<QPushButton>("frmSearch", "cmdSearchReplace")->click();
        QVERIFY(window.source()->text().simplified().contains(u"</font> <img>"_s));
        QCOMPARE(window.source()->text().count(u"<top>"_s), 2);
    }

    // The keys for going work beside the list as they do in the window.
    void keysOfTheWindow()
    {
        ListedWindow window;
        window.putCaret("i</img>");
        window.press(Qt::Key_F12, Qt::ShiftModifier);
        doubleClick(window.in<ListView>("frmUses", "lvUses"), 1);
        QCOMPARE(window.place(), u"8:4"_s);
        for (const char *form : {"frmUses", "frmSearch"}) {
            window.toFront();
            window.press(Qt::Key_F12, Qt::ShiftModifier);
            if (form == "frmSearch"_ba)
                window.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
            window.in<QWidget>(form, "lvUses");
            window.press(Qt::Key_Left, Qt::AltModifier);
            QCOMPARE(window.place(), u"8:2"_s);
            window.press(Qt::Key_Right, Qt::AltModifier);
            QCOMPARE(window.place(), u"8:4"_s);
            QCOMPARE(QApplication::activeWindow()->objectName(), QLatin1String(form));
        }
        window.toFront();
        window.press(Qt::Key_F12, Qt::ShiftModifier);
        window.in<QWidget>("frmUses", "lvUses");
        window.press(Qt::Key_F12);
        QTRY_COMPARE(QApplication::activeWindow(), window.skin.get());
        QCOMPARE(window.find<ListView>("lvImage")->selectedRow(), 0);
        QVERIFY(window.find<ListView>("lvImage")->isVisible());
    }

    // A rename draws the page once, and what takes it back leaves nothing to save.
    void renameAndBack()
    {
        ListedWindow window;
        window.putCaret("i</img>");
        window.press(Qt::Key_F2);
        auto *places = window.in<ListView>("frmRename", "lvRename");
        QCOMPARE(rowsAsText(places->model()), u"* image.xml | 1 | i | i\n"
                                              "* main.xml | 2 | <img>i</img> | <img>i</img>\n"
                                              "* main.xml | 4 | <img>i</img> | <img>i</img>\n"_s);
        places->model()->setData(places->model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
        QCOMPARE(window.in<QLabel>("frmRename", "lblRenameCount")->text(), u"2 of 3 places, in 1 file"_s);
        places->model()->setData(places->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
        QTest::keyClicks(window.in<QLineEdit>("frmRename", "txtRename"), u"logo"_s);
        const QSignalSpy pages(window.find<SourceTab>("frYt(8)"), &SourceTab::pageReady);
        window.press(Qt::Key_Return);
        QTRY_COMPARE(window.said(),
                     u"\"i\" was renamed to \"logo\" in 2 files. Not saved yet: main.xml, image.xml."_s);
        QCOMPARE(pages.size(), 1);
        window.choose("mnuUndoRename");
        QCOMPARE(window.said(), u"Taken back."_s);
        QCOMPARE(pages.size(), 2);
        // What is saved in between is not what it was.
        window.source()->undo();
        window.expectSave(true);
        window.choose("mnuSave");
        window.source()->undo();
        QVERIFY(window.source()->document()->isModified());
    }

    // The boxes of a tab do not go on with the old name, nor does a rename elsewhere turn to the tab.
    void rowsStaySelected()
    {
        ListedWindow window;
        window.turnTo(2);
        auto *images = window.find<ListView>("lvImage");
        images->setFocus();
        QTest::mouseClick(images->viewport(), Qt::LeftButton, {},
                          images->visualRect(images->model()->index(0, 1)).center());
        const auto rename = [&](const QString &name) {
            window.press(Qt::Key_F2);
            QTest::keyClicks(window.in<QLineEdit>("frmRename", "txtRename"), name);
            window.press(Qt::Key_Return);
            window.toFront();
        };
        rename(u"one"_s);
        QCOMPARE(window.find<QLineEdit>("txtID")->text(), u"one"_s);
        window.turnTo(8);
        window.putCaret("one</img>");
        rename(u"two"_s);
        QCOMPARE(window.place(), u"8:2"_s);
        window.turnTo(2);
        QTRY_COMPARE(window.find<QLineEdit>("txtID")->text(), u"two"_s);
        // The catalogue of languages is not edited here, so its list is read again.
        window.turnTo(4);
        auto *languages = window.find<ListView>("lvLang");
        languages->setCurrentIndex(languages->model()->index(1, 1));
        languages->setFocus();
        rename(u"y"_s);
        QCOMPARE(languages->selectedRow(), 1);
        QCOMPARE(languages->model()->index(1, 1).data().toString(), u"y"_s);
    }

    // Documents are offered where the catalogue of windows is typed.
    void windowsAreOffered()
    {
        ListedWindow window;
        window.openDocument("theme/widget.xml");
        window.putCaret("main\"");
        QTRY_VERIFY((QTest::keyClick(window.source(), Qt::Key_Space, Qt::ControlModifier),
                     QApplication::activePopupWidget() != nullptr));
        auto *list = qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget());
        QStringList entries;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            entries.append(list->model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        QCOMPARE(entries.join(u'|'), u"main|more, not in the catalogue|other, not in the catalogue"_s);
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Tab);
        QVERIFY(window.source()->text().contains(u"name=\"more\""_s));
    }
};

WINDOW_TEST_MAIN(TestLists)
#include "tst_lists.moc"
