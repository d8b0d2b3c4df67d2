#include "Failure.h"
#include "TextTable.h"
#include "app/EditedTheme.h"

#include "files/Paths.h"
#include "files/TextFile.h"
#include "keeping/UnsavedTexts.h"
#include "keeping/forms/KeptRows.h"

#include <QDirIterator>
#include <QProcess>
#include <QThreadPool>

#include <cstdio>

using namespace quillmere;

namespace {

const QString kLine = u"\nThe file was changed by another program."_s;

bool isBackedUp(Window &window, const QByteArray &bytes)
{
    QDirIterator it(window.disk.backups().folder(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll() == bytes)
            return true;
    }
    return false;
}

qsizetype kept(const Window &window, const QString &document, UnsavedKind kind = UnsavedKind::Text)
{
    return unsavedTextsOf(window.disk.recoveryFolder(), document, InUse::Include, kind).size();
}

// Another program that takes an unsaved text and has it until it is killed.
struct OtherProgram : QProcess
{
    explicit OtherProgram(const QString &file)
    {
        start(QCoreApplication::applicationFilePath(), {u"take"_s, file});
        waitForReadyRead();
        hasTaken = readAll() == "taken";
    }
    ~OtherProgram() override
    {
        kill();
        waitForFinished();
    }

    bool hasTaken;
};

} // namespace

class TestNothingLost : public QObject
{
    Q_OBJECT

private slots:
    void changedBehindOurBack_data()
    {
        textTable(
            {"item", "file", "title", "question"},
            {{u"window", u"mnuSave", u"main.xml", u"Simpan File", u"Benar mau menyimpan file?"},
             {u"colours", u"mnuCSave", u"color.xml", u"Simpan File", u"Benar mau menyimpan file?"},
             {u"images", u"mnuImgSave", u"image.xml", u"Simpan File",
              u"Benar mau menyimpan file widget image?"},
             {u"language", u"mnuLangSave", u"en.xml", u"Save File", u"Save file translate?"},
             {u"windows", u"mnuWidgetDel", u"widget.xml", u"Simpan File", u"Benar mau menyimpan file?"}});
    }

    void changedBehindOurBack()
    {
        QFETCH(QString, item);
        QFETCH(QString, file);
        QFETCH(QString, title);
        QFETCH(QString, question);
        EditedWindow window;
        type(window, "x");
        const QString path = window.files.path(u"theme/" + file);
        const auto save = [&](const QString &asked) {
            window.prompts.expectQuestion(title, asked, true);
            window.choose(item.toLatin1());
        };
        const QByteArray other = window.files.read(u"theme/" + file) + "\n<!-- theirs -->";
        save(question);
        window.files.write(u"theme/" + file, other);
        save(question + kLine);
        QVERIFY(window.files.read(u"theme/" + file) != other);
        QVERIFY(isBackedUp(window, other));
        save(question);

        // What cannot be saved stays as it is.
        const auto state = [&window] {
            QString all = text(window);
            for (const char *list : {"LvWidget", "lvImage", "lvColor", "LvBhs"})
                all += window.shown(list);
            return all;
        };
        const QString before = state();
        QVERIFY(QFile::remove(path) && QDir().mkdir(path));
        window.prompts.expectQuestion(title, question, true);
        window.prompts.expectMessage(u"Quillmere"_s, u"Cannot open \"%1\": it is not a file."_s.arg(path));
        window.choose(item.toLatin1());
        QCOMPARE(state(), before);
    }

    void reloadFromOutside()
    {
        EditedWindow window;
        const auto *colours = window.model("lvColor");
        const QString name = u"theme/color.xml"_s;
        // Written beside and renamed over, as careful programs do; the file as such is another one then.
        const QString beside =
            window.write("theme/new", "<color name=\"a\">#1</color><color name=\"b\">#2</color>");
        QVERIFY(std::rename(qPrintable(beside), qPrintable(window.files.path(name))) == 0);
        QVERIFY(offers(window, u"color.xml was changed by another program\\."_s));
        QCOMPARE(window.find<QWidget>("frOffer")->toolTip(), u"<qt>color.xml</qt>"_s);
        QCOMPARE(colours->rowCount(), 1);
        answer(window, "cmdOffer(0)");
        QCOMPARE(colours->rowCount(), 2);
        QCOMPARE(offer(window), QString());

        // Once more, now with an edited list; the person keeps it.
        window.find<ListView>("lvColor")->setCurrentIndex(colours->index(0, 0));
        QTest::keyClick(window.find<ListView>("lvColor"), Qt::Key_Delete);
        QCOMPARE(colours->rowCount(), 1);
        window.files.write(name, "<color name=\"c\">#3</color>");
        window.write("theme/main.xml", "<theirs/>");
        QVERIFY(
            offers(window, u"(main|color).xml and (main|color).xml were changed by another program\\."_s));
        answer(window, "cmdOffer(1)");
        QCOMPARE(offer(window), QString());
        QCOMPARE(colours->rowCount(), 1);
        window.prompts.expectQuestion(u"Simpan File"_s, u"Benar mau menyimpan file?"_s + kLine, true);
        window.choose("mnuCSave");
    }

    void reloadKeepsWhatIsTyped()
    {
        EditedWindow window;
        type(window, "mine");
        const QString mine = text(window);
        window.write("theme/main.xml", "<theirs/>");
        QVERIFY(offers(window, u"main.xml was changed by another program\\."_s));
        QCOMPARE(text(window), mine);
        answer(window, "cmdOffer(0)");
        QVERIFY(text(window).contains(u"theirs"_s));
        QVERIFY(offers(window, kUnsaved + u" The file has changed since\\."_s));
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), mine);
        auto *source = window.source();
        QTest::keyClick(source, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(text(window).contains(u"theirs"_s));
        // Taken back, it is offered once more all the same, and is not written over by what is typed now.
        QTest::keyClicks(source, u"other"_s);
        const QString main = window.path("theme/main.xml");
        window.skin->openDocument(main);
        QCOMPARE(kept(window, main), 2);
        answer(window, "cmdOffer(1)");
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), mine);
        // It was made from another file than what it would be written over now.
        window.prompts.expectQuestion(u"Simpan File"_s, u"Benar mau menyimpan file?"_s + kLine, true);
        window.choose("mnuSave");
        QVERIFY(kept(window, main) == 0);
    }

    void recovery_data()
    {
        QTest::addColumn<QString>("end");
        for (const char *end : {"crash", "exit", "other window", "crash, emptied", "other window, emptied"})
            QTest::newRow(end) << QString(QLatin1String(end));
    }

    void recovery()
    {
        QFETCH(QString, end);
        EditedWindow window;
        const QString main = window.path("theme/main.xml");
        type(window, "typed");
        window.source()->insertPlainText(QString(QChar(0xA0)) + QChar(0xE9) + QChar(0xD800));
        const QString typed = text(window);
        if (end.endsWith(u"emptied")) {
            QTest::keyClick(window.source(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(window.source(), Qt::Key_Delete);
        }
        const QString last = text(window);
        if (end.startsWith(u"crash")) {
            // Nothing tells the window that its end has come; the text is safe soon after the last key.
            QVERIFY(QTest::qWaitFor([&] { return kept(window, main) > 0; }, 5000));
            QCOMPARE(text(window), last);
            window.start();
        } else if (end == u"exit") {
            window.skin->close();
            window.start();
        } else {
            window.openDocument("theme/other.xml");
            QCOMPARE(offer(window), QString());
        }
        window.skin->openDocument(main);
        QVERIFY(text(window) != typed);
        QVERIFY(offers(window, kUnsaved));
        QCOMPARE(window.find<QToolButton>("cmdOffer(0)")->text(), u"Restore"_s);
        QCOMPARE(window.find<QToolButton>("cmdOffer(1)")->text(), u"Discard"_s);
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), typed);
        QCOMPARE(offer(window), QString());
        QCOMPARE(kept(window, main), 1); // it is not saved yet

        window.skin->openDocument(main);
        QVERIFY(offers(window, kUnsaved));
        answer(window, "cmdOffer(1)");
        QVERIFY(kept(window, main) == 0);
    }

    void rows_data()
    {
        QTest::addColumn<UnsavedKind>("kind");
        QTest::addColumn<QString>("end");
        const auto row = [](UnsavedKind kind, const char *name, const char *end) {
            QTest::addRow("%s, %s", name, end) << kind << QString::fromLatin1(end);
        };
        for (const char *end : {"crash", "exit", "other theme", "reload", "code page"}) {
            row(UnsavedKind::Colours, "colours", end);
            row(UnsavedKind::Images, "images", end);
        }
        for (const char *end : {"crash", "exit", "other language", "reload"})
            row(UnsavedKind::Translations, "translations", end);
    }

    void rows()
    {
        QFETCH(UnsavedKind, kind);
        QFETCH(QString, end);
        const QString name = QString::fromLatin1(QTest::currentDataTag()).section(u',', 0, 0);
        const bool isColours = kind == UnsavedKind::Colours, isImages = kind == UnsavedKind::Images;
        const char *list = isColours ? "lvColor" : isImages ? "lvImage" : "LvBhs";
        const QString file = isColours ? u"color.xml"_s : isImages ? u"image.xml"_s : u"en.xml"_s;
        EditedWindow window;
        const QString theme = window.path("theme"), path = joinPath(theme, file);
        const auto rows = [&] { return qobject_cast<ListRows *>(window.find<ListView>(list)->model()); };
        const QString loaded = rowsAsText(rows()), cell = rows()->sub(0, 2);
        const auto open = [&] {
            window.skin->openTheme(window.files.path(QString()));
            window.skin->openTheme(theme);
            openLanguage(window, 0);
        };
        rows()->setSub(0, 2, u"\\t\t\\\n"_s + QChar(0xE9) + QChar(0xD800));
        rows()->setChecked(0, true);
        rows()->add(u"new"_s, {QString(), u"*"_s});
        const QString edited = rowsAsText(rows());
        const QString offered = u"Unsaved %1 of \\d\\d:\\d\\d\\."_s.arg(name);
        QVERIFY(edited != loaded);
        if (end == u"crash") {
            QVERIFY(QTest::qWaitFor([&] { return kept(window, path, kind) > 0; }, 5000));
            window.start();
        } else if (end == u"exit") {
            window.skin->close();
            window.start();
        } else if (end == u"other theme") {
            window.write("second/theme/theme.xml",
                         "<config><file_color>c</file_color><file_image>i</file_image></config>");
            window.skin->openTheme(window.path("second/theme"));
            const QString said = window.said();
            QVERIFY2(
                said.endsWith(u"The unsaved %1 of %2 are kept and offered when that is opened again."_s.arg(
                    name, file)),
                qPrintable(said));
        } else if (end == u"other language") {
            openLanguage(window, 1);
        } else if (end == u"code page") {
            window.choose("mnuCodePage1252");
            QVERIFY(offers(window, offered));
        }
        QVERIFY(end == u"crash" || end == u"exit" || end == u"reload" || rowsAsText(rows()) != edited);
        open();
        QCOMPARE(rowsAsText(rows()), loaded);
        QVERIFY(offers(window, offered));
        answer(window, "cmdOffer(0)");
        QCOMPARE(rowsAsText(rows()), edited);
        QCOMPARE(offer(window), QString());
        QCOMPARE(kept(window, path, kind), 1); // not saved yet

        open();
        QVERIFY(offers(window, offered));
        answer(window, "cmdOffer(1)");
        QCOMPARE(kept(window, path, kind), 0);
        rows()->setSub(0, 2, u"!"_s); // changed, and changed back by hand
        rows()->setSub(0, 2, cell);
        open();
        QCOMPARE(offer(window), QString());
        QCOMPARE(kept(window, path, kind), 0);
    }

    // A translation that was typed and not taken is kept as well; put back, it is forgotten.
    void typedTranslation()
    {
        EditedWindow window;
        const QString path = window.path("theme/en.xml");
        window.turnTo(4);
        window.select("LvBhs", 0);
        auto *edit = window.find<QPlainTextEdit>("txtTranslation");
        QTest::keyClicks(edit, u"wohl"_s);
        QVERIFY(QTest::qWaitFor([&] { return kept(window, path, UnsavedKind::Translations) > 0; }, 5000));
        QCOMPARE(window.shown("LvBhs"), u" | Yes | Ja\n"_s);
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(QTest::qWaitFor([&] { return kept(window, path, UnsavedKind::Translations) == 0; }, 5000));
        QTest::keyClicks(edit, u"wohl"_s);
        QVERIFY(QTest::qWaitFor([&] { return kept(window, path, UnsavedKind::Translations) > 0; }, 5000));
        window.start();
        window.openTheme();
        openLanguage(window, 0);
        QVERIFY(offers(window, u"Unsaved translations of .*"_s));
        answer(window, "cmdOffer(0)");
        QCOMPARE(window.shown("LvBhs"), u" | Yes | Jawohl\n"_s);
    }

    // Several offers are reached one after another, and what a restore replaces is offered in its turn.
    void rowsInTurn()
    {
        EditedWindow window;
        const QString theme = window.path("theme");
        const auto rows = [&](const char *list) {
            return qobject_cast<ListRows *>(window.find<ListView>(list)->model());
        };
        rows("lvColor")->clear();
        emit rows("lvColor")->edited(); // none at all is worth keeping too
        rows("lvImage")->setSub(0, 1, u"first"_s);
        window.skin->openTheme(window.files.path(QString()));
        window.skin->openTheme(theme);
        const QString colours = u"Unsaved colours .*"_s, images = u"Unsaved images .*"_s;
        QVERIFY(offers(window, colours));
        QTest::keyClick(window.skin->windowHandle(), Qt::Key_F6);
        QVERIFY(offers(window, colours));
        QTest::keyClick(window.skin->windowHandle(), Qt::Key_F6);
        QVERIFY(offers(window, images));
        QTest::mouseClick(window.find<QToolButton>("cmdOfferNext"), Qt::LeftButton);
        QVERIFY(offers(window, colours));
        answer(window, "cmdOffer(0)");
        QVERIFY(rows("lvColor")->isEmpty());
        QVERIFY(offers(window, images));

        rows("lvImage")->setSub(0, 1, u"second"_s);
        for (const char *id : {"first", "second"}) {
            answer(window, "cmdOffer(0)");
            QCOMPARE(rows("lvImage")->sub(0, 1), QLatin1String(id));
            QVERIFY(offers(window, images));
        }
        window.prompts.expectQuestion(u"Simpan File"_s, u"Benar mau menyimpan file widget image?"_s, true);
        window.choose("mnuImgSave");
        answer(window, "cmdOffer(1)");
        QCOMPARE(kept(window, joinPath(theme, u"image.xml"), UnsavedKind::Images), 0);
    }

    void keepsTheCodePage_data()
    {
        textTable({"before", "after"},
                  {{u"byte for byte, then automatic", u"mnuCodePage1252", u"mnuCodePageAutomatic"},
                   {u"automatic, then byte for byte", u"mnuCodePageAutomatic", u"mnuCodePage1252"}});
    }

    // What is restored is saved as what it was made from was read.
    void keepsTheCodePage()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        Window window;
        const QByteArray bytes = "\xC3\xA9";
        openAll(window);
        window.choose(before.toLatin1());
        const QString main = window.write("theme/main.xml", "<a>" + bytes + "</a>\n");
        window.write("theme/color.xml", "<color name=\"a\">" + bytes + "</color>");
        window.choose("mnuCOpen");
        window.skin->openDocument(main);
        type(window, "x");
        qobject_cast<ListRows *>(window.model("lvColor"))->add({}, {u"b"_s, {}});
        window.choose(after.toLatin1());
        window.skin->openDocument(main);
        answer(window, "cmdOffer(0)");
        answer(window, "cmdOffer(0)");
        QCOMPARE(offer(window), QString());
        for (const char *item : {"mnuSave", "mnuCSave"}) {
            window.expectSave(true);
            window.choose(item);
        }
        QVERIFY(window.read("theme/main.xml").contains(QByteArray("<a>" + bytes + "<")));
        QVERIFY(window.read("theme/color.xml").contains(QByteArray(">" + bytes + "<")));
    }

    void nothingLeftToOffer()
    {
        EditedWindow window;
        const QString main = window.path("theme/main.xml");
        type(window, "typed");
        QVERIFY(QTest::qWaitFor([&] { return kept(window, main) > 0; }, 5000));
        window.expectSave(true);
        window.choose("mnuSave");
        QVERIFY(kept(window, main) == 0);

        // Typed and taken back.
        type(window, "y");
        QVERIFY(QTest::qWaitFor([&] { return kept(window, main) > 0; }, 5000));
        QTest::keyClick(window.source(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(QTest::qWaitFor([&] { return kept(window, main) == 0; }, 5000));
        window.start();
        window.skin->openDocument(main);
        QCOMPARE(offer(window), QString());
    }

    void olderTextIsNotReplaced()
    {
        EditedWindow window;
        const QString main = window.path("theme/main.xml");
        type(window, "first");
        const QString first = text(window);
        window.skin->openDocument(main);
        type(window, "second"); // with the offer still there
        const QString second = text(window);
        window.skin->openDocument(main);
        QCOMPARE(kept(window, main), 2);
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), second);
        QVERIFY(offers(window, kUnsaved));
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), first);
    }

    void noRoomForTheText()
    {
        EditedWindow window;
        type(window, "typed");
        const QString typed = text(window);
        window.disk.setRecoveryFolder(window.write("a file"));
        const QString message = u"Cannot keep the unsaved text in \"%1/"_s.arg(window.disk.recoveryFolder());
        const QString told = failureOf([&] { window.openDocument("theme/other.xml"); });
        QVERIFY(told.startsWith(message));
        QCOMPARE(text(window), typed);
        // Rows stay likewise.
        auto *colours = qobject_cast<ListRows *>(window.model("lvColor"));
        colours->setSub(0, 2, u"#1"_s);
        const QString toldOfRows = window.skin->findChild<KeptRows *>()->keepAll().join(u'\n');
        QVERIFY(toldOfRows.startsWith(message));
        window.write("second/theme/theme.xml", "<config><file_color>c</file_color></config>");
        window.prompts.expectMessage(u"Quillmere"_s, toldOfRows);
        window.skin->openTheme(window.path("second/theme"));
        QCOMPARE(colours->sub(0, 2), u"#1"_s);
        // Closing asks, and only Yes gives them up.
        for (const bool leave : {false, true}) {
            window.prompts.expectQuestion(
                u"Quillmere"_s,
                QString(told + u'\n' + toldOfRows + u"\nLeave anyway, and lose what is not saved?"), leave);
            QCOMPARE(window.skin->close(), leave);
            QCOMPARE(window.skin->isVisible(), !leave);
            QCOMPARE(text(window), typed);
        }
    }

    void twoPrograms_data()
    {
        textTable({"button"}, {{u"restore", u"cmdOffer(0)"}, {u"discard", u"cmdOffer(1)"}});
    }

    void twoPrograms()
    {
        QFETCH(QString, button);
        EditedWindow window;
        const QString main = window.path("theme/main.xml");
        const QString before = text(window);
        type(window, "typed");
        const QString typed = text(window);
        window.skin->openDocument(main);
        const QString file = unsavedTextsOf(window.disk.recoveryFolder(), main).value(0).file;
        const auto isRefused = [&] {
            answer(window, button.toLatin1());
            return text(window) == before && offer(window).isEmpty() && QFileInfo::exists(file);
        };
        QVERIFY(offers(window, kUnsaved));
        {
            const OtherProgram other(file);
            QVERIFY(other.hasTaken && isRefused());
            window.skin->openDocument(main);
            QCOMPARE(offer(window), QString());
        }
        // It has died; another one has come and gone with a newer text.
        window.skin->openDocument(main);
        QVERIFY(offers(window, kUnsaved));
        keepUnsaved(file, main, QString(typed + u"newer"));
        QVERIFY(isRefused());

        window.skin->openDocument(main);
        answer(window, "cmdOffer(0)");
        QCOMPARE(text(window), QString(typed + u"newer"));
        QVERIFY(!OtherProgram(file).hasTaken);
    }

    void oldTexts()
    {
        EditedWindow window;
        const QString main = window.path("theme/main.xml"), shown = text(window);
        const auto keep = [&](const QString &document, const QString &unsaved, int days) {
            UnsavedFile kept = UnsavedFile::forNew(window.disk.recoveryFolder(), document);
            keepUnsaved(kept.path(), document, unsaved);
            QFile file(kept.path());
            const QDateTime time = QDateTime::currentDateTime().addDays(-days);
            if (!file.open(QIODevice::ReadWrite) ||
                !file.setFileTime(time, QFileDevice::FileModificationTime))
                qFatal("cannot make %s older", qPrintable(kept.path()));
            return kept;
        };
        const QString old = keep(main, shown, 61).path(), young = keep(main, shown, 59).path();
        const QString other = keep(main, u"other"_s, 61).path();
        const QString elsewhere = keep(window.path("theme/other.xml"), shown, 61).path();
        const UnsavedFile used = keep(main, shown, 61);
        window.start();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(!QFileInfo::exists(old));
        for (const QString &file : {young, other, elsewhere, used.path()})
            QVERIFY2(QFileInfo::exists(file), qPrintable(file));
    }
};

// Run by a test of its own, as another program.
int takeUnsaved(const QString &path)
{
    const UnsavedFile file = UnsavedFile::take(path);
    std::fputs(file.isNull() ? "refused" : "taken", stdout);
    std::fflush(stdout);
    return file.isNull() ? 0 : std::getchar();
}

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "take") == 0)
        return takeUnsaved(QFile::decodeName(argv[2]));
    return runWindowTest<TestNothingLost>(argc, argv);
}

#include "tst_nothinglost.moc"
