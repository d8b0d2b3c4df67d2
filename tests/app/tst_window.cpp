#include "app/WindowFixture.h"

#include "controls/DirListBox.h"
#include "controls/ListView.h"

#include "keeping/forms/OfferBar.h"

#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kThemeXml =
    "<theme><config>\r\n<file_widget>widget/widget.xml</file_widget>\r\n"
    "<file_image>images/image.xml</file_image>\r\n<file_font>font/font.xml</file_font>\r\n"
    "</config></theme>\r\n";
const QByteArray kCatalogue = "<interface><width>1280</width><height>720</height><bpp>32</bpp>\r\n"
                              "<widget class=\"window\" style=\"default\" name=\"main\"/>\r\n"
                              "<widget class=\"window\" style=\"default\" name=\"gone\"/>\r\n</interface>";
const QByteArray kWindow =
    "<interface>\n<widget class=\"window\" style=\"x\" name=\"main\">\n<property><rect>[0,0,400,300]</rect>"
    "<backcolor>[rgb(1\t2 3),b,c]</backcolor><backcolor>[navy,b,c]</backcolor></property>\n</widget>\n"
    "<widget class=\"text\" style=\"x\" "
    "name=\"title\">\n<property><string>Hello</string><rect>[40,50,200,60]</rect>"
    "<forecolor>[white,b]</forecolor></property>\n</widget>\n</interface>\n";

void writeTheme(const Window &window)
{
    window.write("theme/theme.xml", kThemeXml);
    window.write("theme/widget/widget.xml", kCatalogue);
    window.write("theme/widget/main.xml", kWindow);
    window.write("theme/widget/draft.xml", "<x/>");
    window.write("theme/images/image.xml", "<image id=\"i\">i.png</image>");
    window.write("theme/font/font.xml",
                 "<font><name>font_prog</name><file>b.ttf</file><size>18</size><style></style></font>");
    window.write("theme/font/a.ttf");
    window.write("theme/font/b.ttf");
}

void openTheme(Window &window)
{
    writeTheme(window);
    window.openTheme();
}

QString menuAsText(const QList<QAction *> &actions, int depth = 0)
{
    QString text;
    for (const QAction *action : actions) {
        if (action->menu() && action->menu()->objectName() != action->objectName())
            qFatal("%s and its menu differ in name", qPrintable(action->objectName()));
        text += QString(QString(2 * depth, u' ') + action->objectName() + u' ' + action->text() + u'\n');
        if (action->menu())
            text += menuAsText(action->menu()->actions(), depth + 1);
    }
    return text;
}

} // namespace

class TestWindow : public QObject
{
    Q_OBJECT

private slots:
    void everythingHasItsName()
    {
        const Window window;
        QFile expected(QFINDTESTDATA("controls.txt")); // of a list with the captions of its columns
        QVERIFY(expected.open(QIODevice::ReadOnly));
        for (const QString &line : QString::fromUtf8(expected.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
            const QString name = line.section(u':', 0, 0);
            const auto found = window.skin->findChildren<QWidget *>(name);
            QVERIFY2(found.size() == 1, qPrintable(name));
            const auto *list = qobject_cast<ListView *>(found[0]);
            QStringList captions;
            for (int column = 0; list && column < list->model()->columnCount(); ++column)
                captions.append(list->model()->headerData(column, Qt::Horizontal).toString());
            const QString all = captions.join(u',');
            QCOMPARE(all.isEmpty() ? name : QString(name + u": " + all), line);
        }
        QCOMPARE(window.skin->windowTitle(), u":: Quillmere ::"_s);
        QCOMPARE(window.find<QGroupBox>("frBc")->title(), u"Block Compare"_s);
    }

    void menuTree()
    {
        const Window window;
        QFile expected(QFINDTESTDATA("menutree.txt"));
        QVERIFY(expected.open(QIODevice::ReadOnly));
        QCOMPARE(menuAsText(window.skin->menuBar()->actions()), QString::fromUtf8(expected.readAll()));
    }

    void comesBackAsItWasLeft()
    {
        Window window;
        QStringList folders;
        for (int i = 0; i < 11; ++i) {
            folders.prepend(window.files.path(u"a&b%1/theme"_s.arg(i)));
            window.files.write(u"a&b%1/theme/theme.xml"_s.arg(i), "<config></config>");
            window.skin->openTheme(folders[0]);
        }
        window.skin->openTheme(folders[2]);
        window.skin->openTheme(window.files.folder()); // no theme
        const QRect place(30, 40, 700, 650);
        window.skin->setGeometry(place);
        window.skin->close();

        frmSkin next(window.disk, &window.prompts);
        next.showFirst();
        QTRY_COMPARE(next.geometry(), place);
        folders.move(2, 0);
        QStringList shown;
        auto *recent = next.findChild<QMenu *>(u"mnuRecentThemes"_s);
        for (const QAction *item : recent->actions())
            shown.append(item->text().replace(QLatin1String("&&"), QLatin1String("&")));
        QCOMPARE(shown, folders.mid(0, 10));
        recent->actions()[3]->trigger();
        QCOMPARE(next.windowTitle(), QString(u" :: Quillmere :: " + folders[3]));
        QCOMPARE(recent->actions()[0]->text(), QString(folders[3]).replace(u'&', QLatin1String("&&")));
    }

    void offerByKey()
    {
        const Window window;
        auto *offers = window.find<OfferBar>("frOffer");
        int taken = 0;
        const auto take = [&taken] { ++taken; };
        offers->offer(u"first"_s, u"First"_s, {{u"Go"_s, take}});
        offers->offer(u"last"_s, u"Last"_s, {{u"Go"_s, take}, {u"No"_s, [] {}}});
        for (int i = 1; i <= 2; ++i) { // the one before comes back
            QTest::keyClick(window.skin->windowHandle(), Qt::Key_F6);
            QCOMPARE(window.skin->focusWidget(), window.find<QWidget>("cmdOffer(0)"));
            QTest::keyClick(window.skin->focusWidget(), Qt::Key_Space);
            QCOMPARE(taken, i);
        }
        QVERIFY(!offers->isVisible());
    }

    void tabsRuleMenus()
    {
        Window window;
        auto *tabs = window.find<QTabBar>("TabStrip4");
        const auto enabled = [&] {
            QString names;
            for (const char *name : {"mnuCblock", "mnuView", "mnuSave", "mnuScan"})
                names += window.find<QAction>(name)->isEnabled() ? QLatin1String(name) + u' ' : QString();
            return names;
        };
        QCOMPARE(enabled(), u"mnuScan "_s);
        for (int tab = 1; tab < 9; ++tab) {
            tabs->setCurrentIndex(tab);
            QCOMPARE(enabled(), QString());
            for (int frame = 0; frame < 9; ++frame)
                QCOMPARE(window.find<QWidget>(qPrintable(u"frYt(%1)"_s.arg(frame)))->isVisible(),
                         frame == tab);
        }
        auto *source = window.source();
        source->setText(u"no widget"_s);
        QCOMPARE(enabled(), u"mnuView mnuSave "_s);
        source->setText(u"<widget name=\"a\">"_s);
        QCOMPARE(enabled(), u"mnuCblock mnuView mnuSave "_s);
        window.choose("mnuCblock");
        QCOMPARE(QApplication::clipboard()->text(), u"a\r\n"_s);
        tabs->setCurrentIndex(0);
        QCOMPARE(enabled(), u"mnuScan "_s);
    }

    void themeFillsLists()
    {
        Window window;
        openTheme(window);
        const QString theme = window.path("theme");
        QCOMPARE(window.skin->windowTitle(), QString(u" :: Quillmere :: " + theme));
        QCOMPARE(window.shown("lvTheme"), u"file_widget | widget/widget.xml\nfile_image | images/image.xml\n"
                                          "file_font | font/font.xml\n | \n"_s);
        const auto *widgets = window.find<ListView>("LvWidget");
        QCOMPARE(widgets->model()->index(0, 0).data().toString(), QString(theme + u"/widget/main.xml"));
        QCOMPARE(widgets->model()->index(0, 3).data().toString(), u"Y"_s);
        QCOMPARE(window.find<QGroupBox>("frWidget")->title(), QString(theme + u"/widget/widget.xml"));
        QCOMPARE(window.find<QLabel>("LblWidgetPath")->text(), QString(theme + u"/widget/"));
        QCOMPARE(window.find<QLabel>("lblWidth")->text(), u"1280"_s);
        QCOMPARE(window.find<QLabel>("lblbpp")->text(), u"32"_s);
        QCOMPARE(window.find<QLabel>("lbImagePath")->text(), QString(theme + u"/images/"));

        window.choose("mnuWidgetSel");
        QCOMPARE(window.find<ListView>("LvWidget")->selectedRow(), 1);

        // The Font Editor: a style of the catalogue's own, the entry that is the file.
        window.turnTo(5);
        click(window.find<ListView>("lvFont"), 0);
        QCOMPARE(window.find<QComboBox>("cbFont")->currentText(), u"b.ttf"_s);
        QCOMPARE(window.find<QComboBox>("cbStyle")->currentText(), u"normal"_s);
        QCOMPARE(window.find<QLineEdit>("txtSize")->text(), u"18"_s);
    }

    void foldersThatAreNoTheme()
    {
        Window window;
        window.write("Theme/theme.xml", kThemeXml);
        window.write("themes/theme.xml", kThemeXml);
        for (const char *name : {"Theme", "themes"}) {
            const QString folder = window.files.path(QLatin1String(name));
            window.skin->openTheme(folder);
            QCOMPARE(window.skin->windowTitle(), QString(u" :: Quillmere :: " + folder));
            QCOMPARE(window.model("lvTheme")->rowCount(), 0);
        }
        const QString before = window.find<DirListBox>("Dir1")->path();
        window.skin->openTheme(window.path("nowhere/theme"));
        QCOMPARE(window.find<DirListBox>("Dir1")->path(), before);
    }

    void addAndDeleteFiles()
    {
        Window window;
        openTheme(window);
        window.choose("mnuWidgetDelFile"); // nothing selected: nothing asked, nothing done
        const auto select = [&] {
            auto *files = window.find<ListView>("lvWidgetDel");
            QCOMPARE(rowsAsText(files->model()), u"draft.xml\n"_s);
            files->setCurrentIndex(files->model()->index(0, 0));
        };
        const QString catalogue = u"theme/widget/widget.xml"_s;
        const QString add = u"Benar mau menambahkan widget file?"_s;

        select();
        window.prompts.expectQuestion(u"Simpan File"_s, add, false);
        window.choose("mnuWidgetFile");
        QCOMPARE(window.files.read(catalogue), kCatalogue);

        select();
        window.prompts.expectQuestion(u"Simpan File"_s, add, true);
        window.choose("mnuWidgetFile");
        QByteArray added = kCatalogue + "\r\n";
        added.replace("</interface>",
                      "<widget class=\"window\" style=\"default\" name=\"draft\"/></interface>");
        QCOMPARE(window.files.read(catalogue), added);
        QCOMPARE(window.model("LvWidget")->rowCount(), 3);
        QCOMPARE(window.model("lvWidgetDel")->rowCount(), 0);

        // The last window says whose folder's files are shown; that of the catalogue has one of the same
        // name.
        window.files.write(catalogue, QByteArray(added).replace("\"draft\"", "\"low/last\""));
        const QString path = window.write("theme/widget/low/draft.xml");
        window.choose("mnuWidgetOpen");
        select();
        window.prompts.expectQuestion(u"Delete File"_s, QString(u"Delete file " + path + u" ?"), false);
        window.choose("mnuWidgetDelFile");
        QVERIFY(!QFileInfo::exists(path));
        QVERIFY(QFileInfo::exists(window.path("theme/widget/draft.xml")));
        QCOMPARE(window.model("lvWidgetDel")->rowCount(), 0);
    }

    void preview()
    {
        Window window;
        openTheme(window);
        window.turnTo(1);
        doubleClick(window.find<ListView>("LvWidget"), 0);
        QCOMPARE(window.find<QGroupBox>("frmWb")->title(), window.path("theme/widget/main.xml"));
        QCOMPARE(window.shown("lvBlock"), u"window | main\ntext | title\n"_s);
        QCOMPARE(window.js(u"document.compatMode"_s).toString(), u"BackCompat"_s);
        QCOMPARE(window.style(u"title"_s, u"left"_s), u"40px"_s);
        QCOMPARE(window.style(u"title"_s, u"color"_s), u"rgb(255, 255, 255)"_s);
        QCOMPARE(window.style(u"title"_s, u"fontSize"_s), u"18px"_s);

        // A key in the source moves the block; the caret stays in the box.
        auto *source = window.source();
        window.turnTo(8);
        source->setFocus();
        const qsizetype at = source->text().indexOf(u"[40,50"_s);
        source->select(at + 1, 1);
        QTest::keyClicks(source, u"9"_s);
        QCOMPARE(window.style(u"title"_s, u"left"_s), u"90px"_s);
        QCOMPARE(source->selectionStart(), at + 2);
        QVERIFY(source->hasFocus());

        // A tick hides a block; the View menu changes the style sheet alone.
        auto *blocks = window.model("lvBlock");
        blocks->setData(blocks->index(1, 0), Qt::Checked, Qt::CheckStateRole);
        QCOMPARE(window.style(u"title"_s, u"display"_s), u"none"_s);
        blocks->setData(blocks->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        const auto stringShown = [&] {
            return window.js(u"getComputedStyle(document.querySelector('#title .string')).display"_s)
                .toString();
        };
        QCOMPARE(stringShown(), u"inline"_s);
        window.choose("mnuV(3)");
        QCOMPARE(stringShown(), u"none"_s);

        // Opening a window without a document: its path shows, the text is empty.
        doubleClick(window.find<ListView>("LvWidget"), 1);
        window.turnTo(1);
        doubleClick(window.find<ListView>("LvWidget"), 1);
        QCOMPARE(window.find<QGroupBox>("frmWb")->title(), window.path("theme/widget/gone.xml"));
        QCOMPARE(source->text(), QString());
        QCOMPARE(blocks->rowCount(), 0);
    }

    void jumpToBlock()
    {
        Window window;
        auto *source = window.source();
        window.turnTo(8);
        source->setText(u"<a>\r\n<string>B2</string>\r\n<widget class=\"x\" name=\"b1\">\r\n"
                        "<widget class=\"y\" name=\"b2\">\r\n"_s);
        auto *blocks = window.find<ListView>("lvBlock");
        doubleClick(blocks, 0);
        QCOMPARE(source->selectionStart(), source->text().indexOf(u"<widget class=\"x\""_s));
        QCOMPARE(source->textCursor().blockNumber(), 2);
        doubleClick(blocks, 1); // its name stands earlier, in another block's string
        QCOMPARE(source->textCursor().blockNumber(), 1);
        QVERIFY(source->hasFocus());
    }

    void commandsAreOneUndoStep()
    {
        Window window;
        auto *source = window.source();
        const QString given = u"<a>\r\n\r\n\t<widget name=\"x\">\u00a0end\rlone</widget>"_s;
        source->setText(given);
        QCOMPARE(source->text(), given);
        QVERIFY(!source->document()->isUndoAvailable());

        window.turnTo(8);
        source->select(given.indexOf(u"end"_s), 0);
        window.choose("mnuFormat");
        QCOMPARE(source->text(), u"     <a>\r\n<widget name=\"x\">\u00a0end\rlone</widget>"_s);
        source->undo();
        QCOMPARE(source->text(), given);
        QVERIFY(!source->document()->isUndoAvailable());

        source->setPlainText(u"ab\ncd"_s); // as somebody would who knows only the control
        QCOMPARE(source->text(), u"ab\r\ncd"_s);
        source->select(4, 1);
        window.skin->InsertCode(u"<b>"_s, u"</b>"_s);
        QCOMPARE(source->text(), u"ab\r\n<b>c</b>d"_s);
        QCOMPARE(source->selectionStart(), 7);
        QCOMPARE(source->selectionLength(), 1);
    }

    void saveWritesInEveryCase()
    {
        Window window;
        openTheme(window);
        window.turnTo(8);
        window.source()->setText(u"new"_s);
        window.prompts.expectMessage(u"Simpan File"_s,
                                     u"No file is open: double-click a window on the Widget tab first."_s);
        window.choose("mnuSave");

        window.openDocument("theme/widget/main.xml");
        const QString question = u"Benar mau menyimpan file?"_s;
        window.prompts.expectQuestion(u"Simpan File"_s, question, false);
        window.choose("mnuSave");
        const QByteArray saved = window.read("theme/widget/main.xml");
        QVERIFY(saved.startsWith("     <interface>\n<widget class=\"window\""));
        QVERIFY(saved.endsWith("\r\n") && saved.count('\r') == 1);
    }
};

WINDOW_TEST_MAIN(TestWindow)
#include "tst_window.moc"
