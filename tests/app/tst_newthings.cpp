#include "app/EditedTheme.h"

using namespace quillmere;

namespace {

// The reason that the dialog shows for what is typed into a field of it; with the button as it is then.
QString whyNot(const QWidget &dialog, const char *field, const QString &typed)
{
    auto *line = childOf<QLineEdit>(dialog, field);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, typed);
    const QString why = childOf<QLabel>(dialog, "lblNewWhy")->text();
    if (childOf<QPushButton>(dialog, "cmdNew")->isEnabled() != why.isEmpty())
        qFatal("The button does not go with the reason \"%s\"", qPrintable(why));
    return why;
}

void makeIt(QWidget &dialog)
{
    const QPointer<QWidget> open = &dialog;
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(QTest::qWaitFor([&] { return !open || !open->isVisible(); }));
}

} // namespace

class TestNewThings : public QObject
{
    Q_OBJECT

private slots:
    void newWindow()
    {
        EditedWindow window;
        const QByteArray catalogue = window.read("theme/widget.xml");
        window.choose("mnuWidgetNew");
        QWidget *dialog = dialogNamed("frmNewWindow");
        QVERIFY(whyNot(*dialog, "txtNewName", u"MAIN"_s).contains(u"already"));
        QVERIFY(whyNot(*dialog, "txtNewName", QString()).contains(u"empty"));
        QCOMPARE(whyNot(*dialog, "txtNewName", u"fresh"_s), QString());
        childOf<QComboBox>(*dialog, "cbNewTemplate")->setCurrentIndex(3);
        makeIt(*dialog);
        QVERIFY(window.read("theme/widget.xml").contains("name=\"main\"/>\n<widget class=\"window\" "));
        QVERIFY(window.read("theme/fresh.xml").contains("class=\"progbar\""));
        QVERIFY(text(window).contains(u"name=\"fresh\""));
        QCOMPARE(window.find<QTabBar>("TabStrip4")->currentIndex(), 8);
        QCOMPARE(window.model("LvWidget")->rowCount(), 2);
        QCOMPARE(window.find<ListView>("LvWidget")->selectedRow(), 1);
        QCOMPARE(window.find<QAction>("mnuUndoRename")->text(), u"Undo New Window"_s);
        window.choose("mnuUndoRename");
        QCOMPARE(window.read("theme/widget.xml"), catalogue);
        QVERIFY(!QFileInfo::exists(window.path("theme/fresh.xml")));
        QCOMPARE(window.model("LvWidget")->rowCount(), 1);
        QVERIFY2(window.said().contains(u"fresh.xml was deleted but is still open here"),
                 qPrintable(window.said()));
    }

    // What is not saved goes along, and the original stays as it is.
    void duplicate()
    {
        EditedWindow window;
        window.write("theme/main.xml", "<widget class=\"window\" name=\"main\"><img/></widget>\n");
        window.openDocument("theme/main.xml");
        type(window, "<!--mine-->");
        window.choose("mnuWidgetDuplicate");
        QWidget *dialog = dialogNamed("frmNewWindow");
        QVERIFY(!childOf<QComboBox>(*dialog, "cbNewTemplate")->isVisible());
        QCOMPARE(childOf<QLineEdit>(*dialog, "txtNewName")->text(), u"main_2"_s);
        makeIt(*dialog);
        const QByteArray copy = window.read("theme/main_2.xml");
        QVERIFY(copy.contains("<!--mine-->") && copy.contains("name=\"main_2\""));
        QVERIFY(!window.read("theme/main.xml").contains("mine"));
        QVERIFY(text(window).contains(u"main_2"));
    }

    void nothingToDuplicate()
    {
        EditedWindow window;
        window.turnTo(1);
        window.find<ListView>("LvWidget")->clearSelection();
        window.find<ListView>("LvWidget")->setCurrentIndex({});
        window.choose("mnuWidgetDuplicate");
        QVERIFY(window.said().startsWith(u"Select a window"_s));
        QFile::remove(window.path("theme/main.xml"));
        window.select("LvWidget", 0);
        window.prompts.expectMessage(
            u"Quillmere"_s, u"The window \"main\" has no document, so there is nothing to duplicate."_s);
        window.choose("mnuWidgetDuplicate");
    }

    // The fields follow the ID; strings of another language that are not saved stay offered.
    void newLanguage()
    {
        EditedWindow window;
        window.write("theme/main.xml",
                     "<widget class=\"window\" name=\"main\"><string>Go</string></widget>\n");
        window.openDocument("theme/main.xml");
        window.choose("mnuLangNew");
        QWidget *dialog = dialogNamed("frmNewLanguage");
        QVERIFY(whyNot(*dialog, "txtNewLangId", u"english"_s).contains(u"ID"));
        QCOMPARE(whyNot(*dialog, "txtNewLangId", u"Old Norse"_s), QString());
        QCOMPARE(childOf<QLineEdit>(*dialog, "txtNewLangFile")->text(), u"old_norse.xml"_s);
        makeIt(*dialog);
        QCOMPARE(window.read("theme/old_norse.xml"),
                 "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<language "
                 "name=\"Old Norse\">\r\n<tran id=\"Go\"></tran>\r\n</language>\r\n");
        QCOMPARE(window.find<QLineEdit>("txtLangFile")->text(), window.path("theme/old_norse.xml"));
        QCOMPARE(window.model("LvBhs")->rowCount(), 1);
        window.choose("mnuUndoRename");
        QVERIFY(!QFileInfo::exists(window.path("theme/old_norse.xml")));
        QVERIFY(window.said().contains(u"old_norse.xml was deleted"));
        QCOMPARE(window.model("lvLang")->rowCount(), 2);
    }

    void newTheme()
    {
        Window window;
        window.write("full/theme/a.txt", "a");
        window.choose("mnuNewTheme");
        QWidget *dialog = dialogNamed("frmNewTheme");
        QVERIFY(whyNot(*dialog, "txtNewThemeFolder", window.path("full")).contains(u"not empty"));
        QVERIFY(whyNot(*dialog, "txtNewThemeFolder", u"full"_s).contains(u"whole path"));
        QVERIFY(whyNot(*dialog, "txtNewThemeFont", window.path("none.ttf")).contains(u"whole path"));
        QVERIFY(whyNot(*dialog, "txtNewThemeFolder", window.path("mine")).contains(u"no such font"));
        QCOMPARE(whyNot(*dialog, "txtNewThemeFont", QString()), QString());
        makeIt(*dialog);
        QCOMPARE(window.skin->windowTitle(), QString(u" :: Quillmere :: " + window.path("mine/theme")));
        QCOMPARE(window.model("LvWidget")->rowCount(), 3);
    }

    void convertTheme_data()
    {
        QTest::addColumn<bool>("agrees");
        QTest::newRow("no") << false;
        QTest::newRow("yes") << true;
    }
    // The text that is not saved is converted where it stands; Undo gives all of it back.
    void convertTheme()
    {
        QFETCH(bool, agrees);
        Window window;
        const QByteArray catalogue = "<interface><width>1280</width><height>720</height>"
                                     "<widget class=\"window\" style=\"default\" name=\"main\"/>"
                                     "<widget class=\"window\" style=\"default\" name=\"side\"/></interface>";
        const QByteArray side = "<widget class=\"window\"><rect>[8,8,80,80]</rect></widget>\n";
        window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        window.write("theme/widget.xml", catalogue);
        window.write("theme/main.xml", "<rect>[0,0,1280,720]</rect>\n");
        window.write("theme/side.xml", side);
        window.openTheme();
        window.openDocument("theme/main.xml");
        type(window, "<rect>[10,10,10,10]</rect>");
        const QString typed = text(window);
        QVERIFY(QTest::qWaitFor([&] {
            window.choose("mnuConvertTheme");
            return window.skin->findChild<QWidget *>(u"frmConvertTheme"_s) != nullptr;
        }));
        QWidget *dialog = dialogNamed("frmConvertTheme");
        auto *to = childOf<QComboBox>(*dialog, "cbConvertScreen");
        for (const char *wrong : {"1280 x 720", "50 x 50", "0x7", "wide", ""}) {
            to->setEditText(QLatin1String(wrong));
            QVERIFY2(!childOf<QPushButton>(*dialog, "cmdNew")->isEnabled(), wrong);
        }
        to->setEditText(u" 640X360"_s);
        window.prompts.expectQuestion(
            u"Convert Theme"_s,
            u"Convert 2 windows from 1280 x 720 to 640 x 360?\n\n"
            "All pictures and texts that fit their blocks now will fit them then."_s,
            agrees);
        childOf<QPushButton>(*dialog, "cmdNew")->click();
        if (agrees) {
            QVERIFY(text(window).contains(u"<rect>[5,5,5,5]</rect>"));
            QCOMPARE(window.read("theme/side.xml"), QByteArray(side).replace("8,8,80,80", "4,4,40,40"));
            QCOMPARE(window.find<QLabel>("lblWidth")->text(), u"640"_s);
            QCOMPARE(childOf<ListView>(*dialogNamed("frmChanges"), "lvChanges")->model()->rowCount(), 2);
            window.choose("mnuUndoRename");
        } else {
            QVERIFY(dialog->isVisible());
        }
        QCOMPARE(text(window), typed);
        QCOMPARE(window.read("theme/side.xml"), side);
        QCOMPARE(window.read("theme/widget.xml"), catalogue);
    }

    void renameWindow()
    {
        EditedWindow window;
        window.turnTo(1);
        window.select("LvWidget", 0);
        QVERIFY(QTest::qWaitFor([&] {
            window.choose("mnuWidgetRename");
            return window.skin->findChild<QWidget *>(u"frmRename"_s) != nullptr;
        }));
        QCOMPARE(childOf<QLineEdit>(*dialogNamed("frmRename"), "txtRename")->text(), u"main"_s);
    }
};

WINDOW_TEST_MAIN(TestNewThings)
#include "tst_newthings.moc"
