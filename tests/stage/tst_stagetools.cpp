#include "stage/LinkedWindow.h"

#include "source/SavedText.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

QWidget *properties()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == u"frmWidget")
            return widget;
    }
    return nullptr;
}

template <typename Kind>
Kind *inDialog(const char *name)
{
    return properties()->findChild<Kind *>(QLatin1String(name));
}

QString shownRows()
{
    return rowsAsText(inDialog<ListView>("lvBlock")->model());
}

} // namespace

class TestStageTools : public QObject
{
    Q_OBJECT

private slots:
    void arranges_data()
    {
        QTest::addColumn<QList<int>>("rows"); // in the order in which they are selected
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("changes"); // what stands in the text, what stands there then, ...
        const QString first = u"[1,2,30,40]"_s, second = u"[5,6,70,80]"_s;
        QTest::newRow("to the first")
            << QList<int>{3, 1} << u"mnuAlignLeft"_s << QStringList{first, u"[5,2,30,40]"_s};
        QTest::newRow("to the other")
            << QList<int>{1, 3} << u"mnuSameSize"_s << QStringList{second, u"[5,6,30,40]"_s};
        QTest::newRow("one") << QList<int>{3} << u"mnuCentreInParent"_s
                             << QStringList{second, u"[165,110,70,80]"_s};
        QTest::newRow("element") << QList<int>{1} << u"mnuDelete"_s
                                 << QStringList{u"      <widget class=\"text\" name=\"same\"><property>"
                                                "<rect>[1,2,30,40]</rect></property></widget>\r\n"_s,
                                                QString()};
    }

    // By the menu and by the key; one step to undo.
    void arranges()
    {
        QFETCH(const QList<int>, rows);
        QFETCH(const QString, command);
        QFETCH(const QStringList, changes);
        QString expected = LinkedWindow::text;
        for (qsizetype i = 0; i < changes.size(); i += 2)
            expected.replace(changes[i], changes[i + 1]);
        for (const bool byKey : {false, true}) {
            const LinkedWindow window;
            for (const int row : rows)
                window.click(row, row == rows.first() ? Qt::NoModifier : Qt::ControlModifier);
            auto *action = window.find<QAction>(command.toLatin1().constData());
            if (byKey)
                QTest::keySequence(window.list, action->shortcut());
            else
                action->trigger();
            QCOMPARE(window.source->text(), expected);
            QVERIFY(window.list->hasFocus());
            window.source->undo();
            QCOMPARE(window.source->text(), LinkedWindow::text);
            QVERIFY(!window.source->document()->isUndoAvailable());
        }
    }

    // What can be done goes by what is selected, and a letter is a letter where one types.
    void itemsAndLetters()
    {
        const LinkedWindow window;
        const auto enabled = [&window] {
            QStringList names;
            for (const char *name : {"mnuAlignLeft", "mnuDistributeH", "mnuCentreInParent", "mnuDelete",
                                     "mnuSelectParent", "mnuFitToPicture", "mnuInsert(0)"}) {
                if (window.find<QAction>(name)->isEnabled())
                    names.append(QString::fromLatin1(name).mid(3));
            }
            return names.join(u' ');
        };
        QTRY_COMPARE(enabled(), u"Insert(0)"_s);
        window.click(0);
        QCOMPARE(enabled(), u"Delete Insert(0)"_s);
        window.click(1);
        QCOMPARE(enabled(), u"CentreInParent Delete SelectParent Insert(0)"_s);
        window.click(3, Qt::ControlModifier);
        QCOMPARE(enabled(), u"AlignLeft CentreInParent Delete SelectParent Insert(0)"_s);
        window.turnTo(0);
        QCOMPARE(enabled(), u"AlignLeft CentreInParent Delete SelectParent Insert(0)"_s);
        window.turnTo(8);
        window.source->setFocus();
        window.source->select(0, 0);
        QTest::keyClicks(window.source, u"lcT"_s);
        QCOMPARE(window.source->text(), u"lcT"_s + LinkedWindow::text);
        window.list->setFocus();
        QTest::keyClick(window.list, Qt::Key_8);
        QVERIFY(window.find<QAction>("mnuGrid(8)")->isChecked());
        QTest::keyClick(window.list, Qt::Key_Escape);
        QCOMPARE(window.rows(), QString());

        // In an open menu a key is the menu's.
        window.click(3);
        const QString text = window.source->text();
        auto *menu = window.find<QMenu>("mnuArrange");
        menu->popup({});
        QTest::keyClick(menu, Qt::Key_Delete);
        QCOMPARE(window.source->text(), text);
        QTest::keyClick(menu, Qt::Key_U); // "D&uplicate"; Select Parent where no menu is open
        QCOMPARE(window.source->text().count(u"<widget"_s), text.count(u"<widget"_s) + 1);
    }

    // The dialog is at the block that is selected, also where another has its name.
    void dialogFollows()
    {
        const LinkedWindow window;
        window.click(3);
        QTest::keyClick(window.list, Qt::Key_Return);
        QCOMPARE(shownRows(), u"rect | [5,6,70,80]\n"_s);
        QTRY_COMPARE(QApplication::activeWindow(), properties());
        doubleClick(inDialog<ListView>("lvBlock"), 0);
        QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Up);
        QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Return);
        QVERIFY(window.source->text().contains(u"[1,2,30,40]</rect></property>"_s));
        QVERIFY(window.source->text().contains(u"<property>\r\n<rect>[-4,6,70,80]</rect>\r\n</property>"_s));
        QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.source->text(), LinkedWindow::text);

        window.source->select(window.nth(u"[1,2"_s, 0), 0);
        QCOMPARE(shownRows(), u"rect | [1,2,30,40]\n"_s);
        window.source->rewrite(QString(LinkedWindow::text).replace(u"[5,6"_s, u"[5,66"_s));
        window.click(3);
        QCOMPARE(shownRows(), u"rect | [5,66,70,80]\n"_s);
        window.choose("mnuLink");
        window.click(0);
        QCOMPARE(shownRows(), u"rect | [5,66,70,80]\n"_s);
    }

    // Ctrl+S saves on whichever tab the window is.
    void dialogSaves()
    {
        LinkedWindow window;
        window.skin->openDocument(window.write("theme/w.xml", LinkedWindow::text.toUtf8()));
        window.click(3);
        QTest::keyClick(window.list, Qt::Key_Return);
        QTRY_COMPARE(QApplication::activeWindow(), properties());
        for (const int tab : {8, 0}) {
            window.turnTo(tab);
            doubleClick(inDialog<ListView>("lvBlock"), 0);
            QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Up);
            QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_Return);
            window.expectSave(true);
            QTest::keyClick(inDialog<QLineEdit>("txtL"), Qt::Key_S, Qt::ControlModifier);
            QCOMPARE(window.read("theme/w.xml"), textToSave(window.source->text()).toUtf8());
        }
        QVERIFY(window.read("theme/w.xml").contains("<rect>[7,6,70,80]</rect>"));
    }

    void severalAtOnce()
    {
        const LinkedWindow window;
        window.source->setText(u"<widget name=\"a\"><property><rect>[1,2,3,4]</rect><font>big</font>"
                               "<img>i</img></property></widget>\r\n"
                               "<widget name=\"b\"><property>\r\n <FONT>small</FONT>\r\n "
                               "<rect>[ 9,2,3,5]</rect>\r\n <mode/></property></widget>"_s);
        window.click(1);
        window.click(0, Qt::ControlModifier);
        QTest::keyClick(window.list, Qt::Key_Return);
        QCOMPARE(properties()->windowTitle(), u" Property :: 2 blocks"_s);
        QCOMPARE(shownRows(), u"FONT | \nrect | \n"_s);
        auto *list = inDialog<ListView>("lvBlock");
        doubleClick(list, 1);
        QCOMPARE(inDialog<QLineEdit>("txtL")->text() + inDialog<QLineEdit>("txtT")->text(), u"2"_s);
        inDialog<QLineEdit>("txtW")->setText(u"30"_s);
        inDialog<QPushButton>("cmdRec")->click();
        doubleClick(list, 0);
        inDialog<QComboBox>("CmbVal")->setEditText(u"one"_s);
        inDialog<QPushButton>("CmdCombo")->click();
        QCOMPARE(window.source->text(),
                 u"<widget name=\"a\"><property><rect>[1,2,30,4]</rect><font>one</font>"
                 "<img>i</img></property></widget>\r\n"
                 "<widget name=\"b\"><property>\r\n <FONT>one</FONT>\r\n "
                 "<rect>[ 9,2,30,5]</rect>\r\n <mode/></property></widget>"_s);
        QCOMPARE(shownRows(), u"FONT | one\nrect | \n"_s);
        window.source->undo();
        QCOMPARE(shownRows(), u"FONT | \nrect | \n"_s);
    }

    void saysWhatIsLost()
    {
        const LinkedWindow window;
        window.source->setText(
            u"<widget name=\"a\"><property><rect>[1,2,3,4]</rect>\r\n"
            "<imgs>\r\n<mode>multiple</mode><t_img>t</t_img></imgs></property></widget>"_s);
        doubleClick(window.list, 0);
        QVERIFY(inDialog<QLabel>("lblLost")->isVisible());
        QVERIFY(inDialog<QLabel>("lblLost")->text().contains(u"<mode>"_s));
        QTest::mouseClick(inDialog<QPushButton>("cmdEditInSource"), Qt::LeftButton);
        QCOMPARE(window.source->textCursor().blockNumber(), 2);
        QTRY_VERIFY(window.source->hasFocus());
    }

    void doublesText()
    {
        const LinkedWindow window;
        window.source->setText(u"one\r\ntwo"_s);
        window.source->setFocus();
        window.source->select(6, 0);
        QTest::keyClick(window.source, Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(window.source->text(), u"one\r\ntwo\r\ntwo"_s);
        QCOMPARE(window.source->caretPosition(), qsizetype(11));
        window.source->undo();
        window.source->select(1, 2);
        QTest::keyClick(window.source, Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(window.source->text(), u"onene\r\ntwo"_s);
        QCOMPARE(window.source->selectionStart(), qsizetype(3));
        window.source->undo();
        QCOMPARE(window.source->text(), u"one\r\ntwo"_s);
        QVERIFY(!window.source->document()->isUndoAvailable());
    }

    void roundOfPanes()
    {
        const LinkedWindow window;
        window.source->setFocus();
        QStringList names;
        for (int i = 0; i < 10; ++i) {
            QTest::keyClick(window.skin->windowHandle(), Qt::Key_F6,
                            i < 5 ? Qt::NoModifier : Qt::ShiftModifier);
            const QWidget *now = window.skin->focusWidget();
            const bool isPicture = window.find<WebBrowser>("wb")->isAncestorOf(now);
            names.append(isPicture ? u"wb"_s : now->objectName());
        }
        QStringList round = {u"wb"_s, u"cboZoom"_s, u"TabStrip4"_s, u"lvBlock"_s, u"txtSnippet"_s};
        QCOMPARE(names.mid(0, 5), round);
        round.removeLast();
        std::ranges::reverse(round);
        QCOMPARE(names.mid(5), round << u"txtSnippet"_s);
    }
};

WINDOW_TEST_MAIN(TestStageTools)
#include "tst_stagetools.moc"
