#include "Failure.h"
#include "app/WindowFixture.h"

#include "asking/forms/AskToWrite.h"
#include "catalogues/forms/PictureFiles.h"
#include "files/FileList.h"
#include "rows/ToolTip.h"
#include "stage/WhyUnseen.h"

#include <QHelpEvent>
#include <QListView>
#include <QToolTip>

using namespace quillmere;

class TestFrictions : public QObject
{
    Q_OBJECT

private slots:
    void savingTellsWhatChanges()
    {
        const TestFiles files;
        const QString path = files.write(u"a.xml"_s, "one\ntwo\nthree\n");
        const struct
        {
            QString text, says;
        } cases[] = {
            {u"one\r\ntwo\r\nthree\r\n"_s, u"No line changes."_s},
            {u"  one\n2\nthree\n"_s, u"1 line removed, 1 added. 1 line differs only in its indentation."_s},
            {u"one\ntwo\nthree\n  \n\n"_s, u"No line changes."_s},
            {u"one\nthree\n"_s, u"1 line removed."_s},
            {u"one\n2\n2b\nthree\n"_s, u"1 line removed, 2 added."_s},
            {u"one\ntwo\nthree\nfour\nfive\n"_s, u"2 lines added."_s}};
        for (const auto &[text, says] : cases)
            QCOMPARE(savingFacts(path, text, CodePageRule::Automatic), QString(path + u'\n' + says));
        const QString none = files.path(u"none.xml"_s);
        QCOMPARE(savingFacts(none, u"x"_s, CodePageRule::Automatic), QString(none + u"\nis a new file."_s));
    }

    void savedIsSaidUntilTheNextEdit()
    {
        Window window;
        window.write("theme/a.xml", "<widget name=\"a\"></widget>");
        window.openDocument("theme/a.xml");
        window.turnTo(8);
        window.expectSave(true);
        window.choose("mnuSave");
        QVERIFY(window.said().contains(u" saved."_s));
        QTest::keyClicks(window.source(), u"x"_s);
        QCOMPARE(window.said(), QString());
    }

    void replaceTellsAndTakesKeys()
    {
        Window window;
        window.write("theme/a.xml", "<a>\nx\n<b>x</b>\n</a>\n");
        window.openDocument("theme/a.xml");
        window.turnTo(8);
        const QString before = window.source()->text();
        window.choose("mnuTReplace");
        QWidget *dialog = dialogNamed("frmReplace");
        childOf<QLineEdit>(*dialog, "Text1")->setText(u"x"_s);
        childOf<QLineEdit>(*dialog, "Text2")->setText(u"y"_s);
        auto *all = childOf<QPushButton>(*dialog, "Command9");
        all->click();
        QCOMPARE(window.said(), u"2 lines changed."_s);
        QVERIFY(window.source()->text() != before);
        QTest::keyClick(all, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.source()->text(), before);
        QTest::keyClick(all, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        window.expectSave(true);
        QTest::keyClick(childOf<QLineEdit>(*dialog, "Text1"), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(window.read("theme/a.xml").contains("<b>y</b>"));
        childOf<QLineEdit>(*dialog, "Text1")->setText(u"nowhere"_s);
        all->click();
        QCOMPARE(window.said(), u"Nothing was found to replace."_s);
    }

    void colourDialogTakesKeys()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_color>c.xml</file_color></config>");
        window.write("theme/c.xml", "<colors><color name=\"red\">#ff0000</color></colors>");
        window.openTheme();
        window.turnTo(3);
        ListView *colours = window.find<ListView>("lvColor");
        emit colours->rowOpened(0);
        QWidget *dialog = dialogNamed("frmcolor");
        window.select("lvColor", 0);
        childOf<QLineEdit>(*dialog, "txtName")->setText(u"green"_s);
        QTest::keyClick(childOf<QLineEdit>(*dialog, "txtName"), Qt::Key_Return);
        QTRY_VERIFY(window.shown("lvColor").contains(u"green"_s));
        QCoreApplication::processEvents();
        QTest::keyClick(childOf<QPushButton>(*dialog, "Command1"), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(window.shown("lvColor").contains(u"red"_s));
    }

    void saysWhyABlockIsNotSeen()
    {
        const Outline outline(
            u"<widget name=\"w\"><property><rect>[0,0,9,9]</rect></property>"
            "<widget name=\"a\"><property><state>hide</state><rect>[1,1,2,2]</rect></property>"
            "<widget name=\"b\"><property><rect>[1,1,1,1]</rect></property></widget></widget>"
            "<!--<widget name=\"c\"></widget>--></widget>"_s);
        QCOMPARE(whyUnseen(outline, 0, {}), QString());
        QCOMPARE(whyUnseen(outline, 2, {}), QString());
        QVERIFY(
            whyUnseen(outline, 2, {{}, true, true}).contains(u"it lies in \"a\", and the state of \"a\""_s));
        QVERIFY(whyUnseen(outline, 2, {{u"b"_s}, false, false}).contains(u"\"b\" is ticked"_s));
        QVERIFY(whyUnseen(outline, 1, {{u"w"_s}, false, false}).contains(u"it lies in \"w\""_s));
    }

    void pictureFilesFollowTheFolder()
    {
        const TestFiles files;
        files.write(u"image.xml"_s, "x");
        files.write(u"a.png"_s, "x");
        FileList list;
        QListView view;
        new PictureFiles(list, view);
        view.setModel(&list);
        list.setPath(files.folder());
        view.show();
        const auto shown = [&] {
            QStringList names;
            for (int row = 0; row < list.rowCount(); ++row) {
                if (!view.isRowHidden(row))
                    names.append(list.index(row).data().toString());
            }
            return names.join(u' ');
        };
        QTRY_COMPARE(shown(), u"a.png"_s);
        view.setCurrentIndex(list.index(0));
        files.write(u"B.jpeg"_s, "x");
        QTRY_COMPARE(shown(), u"a.png B.jpeg"_s);
        QCOMPARE(view.currentIndex().data().toString(), u"a.png"_s);
    }

    void longMessagesSayThatTheyGoOn()
    {
        Window window;
        QStatusBar *bar = window.skin->statusBar();
        const auto drawn = [bar](const QString &text) {
            bar->showMessage(text);
            return bar->grab().toImage();
        };
        const QString fits(20, u'i'), cut(600, u'i'), alsoCut(900, u'i');
        QVERIFY(drawn(fits) != drawn(cut));
        const QImage before = drawn(cut);
        QCOMPARE(drawn(alsoCut), before); // nothing reaches below what stands at the right
        const QPoint at(20, 8);
        QHelpEvent asks(QEvent::ToolTip, at, bar->mapToGlobal(at));
        QApplication::sendEvent(bar, &asks);
        QCOMPARE(QToolTip::text(), plainToolTip(alsoCut));
    }

    // The beginning of a line stays in view where what is gone to fits beside it.
    void linesAreSeenFromTheirBeginning()
    {
        Window window;
        window.turnTo(8);
        SourceBox *source = window.source();
        source->setText(u"<widget name=\"a\">"_s + QString(400, u'x') + u"\n<rect>[1,2,3,4]</rect>"_s);
        QScrollBar *across = source->horizontalScrollBar();
        source->select(410, 5);
        QTRY_VERIFY(across->value() > 0);
        source->select(source->text().indexOf(u"<rect>"), 6);
        QCOMPARE(across->value(), 0);
    }

    void blocksAreSeenFromTheFirst()
    {
        Window window;
        const QByteArray blocks = QByteArray("<widget name=\"b\"></widget>\n").repeated(100);
        const auto *bar = window.find<ListView>("lvBlock")->verticalScrollBar();
        for (const char *name : {"theme/a.xml", "theme/b.xml"}) {
            window.write(name, "<widget name=\"a\">" + blocks + "</widget>");
            window.openDocument(name);
            window.turnTo(8);
            QTRY_VERIFY(bar->maximum() > 0);
            QCOMPARE(bar->value(), 0);
            window.find<ListView>("lvBlock")->scrollToBottom();
        }
    }

    void readOnlyTabsStayAsTheyAre()
    {
        Window window;
        auto *zones = window.find<QComboBox>("cbPropTime");
        const QString shown = zones->currentText();
        window.turnTo(7);
        QTest::keyClick(zones, Qt::Key_Down);
        QCOMPARE(zones->currentText(), shown);
        window.turnTo(5);
        QVERIFY(window.find<QLineEdit>("txtNama")->isReadOnly());
    }
};

WINDOW_TEST_MAIN(TestFrictions)
#include "tst_frictions.moc"
