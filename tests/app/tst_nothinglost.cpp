#include "Failure.h"
#include "TextTable.h"
#include "app/EditedTheme.h"

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
