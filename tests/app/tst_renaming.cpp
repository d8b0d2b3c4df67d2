#include "TextTable.h"
#include "app/NamesTheme.h"

#include "app/ThemeEditing.h"
#include "files/TextFile.h"

using namespace quillmere;

namespace {

void renameLogo(const Window &window)
{
    putCaret(window, "logo<");
    renameSelected(window, u"fresh"_s);
}

} // namespace

// What changes many places of a theme at once, and takes that back.
class TestRenaming : public QObject
{
    Q_OBJECT

private slots:
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

WINDOW_TEST_MAIN(TestRenaming)
#include "tst_renaming.moc"
