#include "app/EditedTheme.h"

#include "files/RunTimeError.h"
#include "files/TextFile.h"

#include <QDirIterator>
#include <QProcess>
#include <QThreadPool>

#include <cstdio>

using namespace quillmere;

namespace {

const QString kLine = QStringLiteral("\nThe file was changed by another program.");

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

qsizetype kept(const QString &document)
{
    return unsavedTextsOf(document, InUse::Include).size();
}

// Another program that takes an unsaved text and has it until it is killed.
struct OtherProgram : QProcess
{
    explicit OtherProgram(const QString &file)
    {
        start(QCoreApplication::applicationFilePath(), {QStringLiteral("take"), file});
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
    void changedBehindOurBack_data();
    void changedBehindOurBack();
    void failedSave_data() { changedBehindOurBack_data(); }
    void failedSave();
    void reloadFromOutside();
    void reloadKeepsWhatIsTyped();
    void recovery_data();
    void recovery();
    void nothingLeftToOffer();
    void olderTextIsNotReplaced();
    void noRoomForTheText();
    void twoPrograms_data();
    void twoPrograms();
    void oldTexts();
};

void TestNothingLost::changedBehindOurBack_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("question");
    const QString title = QStringLiteral("Simpan File");
    QTest::newRow("window") << QByteArray("mnuSave") << QStringLiteral("main.xml") << title
                            << QStringLiteral("Benar mau menyimpan file?");
    QTest::newRow("colours") << QByteArray("mnuCSave") << QStringLiteral("color.xml") << title
                             << QStringLiteral("Benar mau menyimpan file?");
    QTest::newRow("images") << QByteArray("mnuImgSave") << QStringLiteral("image.xml") << title
                            << QStringLiteral("Benar mau menyimpan file widget image?");
    QTest::newRow("language") << QByteArray("mnuLangSave") << QStringLiteral("en.xml")
                              << QStringLiteral("Save File") << QStringLiteral("Save file translate?");
    QTest::newRow("windows") << QByteArray("mnuWidgetDel") << QStringLiteral("widget.xml") << title
                             << QStringLiteral("Benar mau menyimpan file?");
}

void TestNothingLost::changedBehindOurBack()
{
    QFETCH(QByteArray, item);
    QFETCH(QString, file);
    QFETCH(QString, title);
    QFETCH(QString, question);
    Window window;
    openAll(window);
    type(window, "x");
    const QString name = QStringLiteral("theme/") + file;
    const QByteArray other = window.files.read(name) + "\n<!-- theirs -->";

    window.prompts.expectQuestion(title, question, true);
    window.choose(item);
    window.files.write(name, other);
    window.prompts.expectQuestion(title, question + kLine, true);
    window.choose(item);
    QVERIFY(window.files.read(name) != other);
    QVERIFY(isBackedUp(window, other));
    window.prompts.expectQuestion(title, question, true);
    window.choose(item);
}

void TestNothingLost::failedSave()
{
    QFETCH(QByteArray, item);
    QFETCH(QString, file);
    QFETCH(QString, title);
    QFETCH(QString, question);
    Window window;
    openAll(window);
    type(window, "x");
    const auto state = [&window] {
        QString all = text(window);
        for (const char *list : {"LvWidget", "lvImage", "lvColor", "LvBhs"})
            all += rowsAsText(window.find<ListView>(list)->model());
        return all;
    };
    const QString before = state();
    const QString path = window.files.path(QStringLiteral("theme/") + file);
    QVERIFY(QFile::remove(path) && QDir().mkdir(path));

    window.prompts.expectQuestion(title, question, true);
    window.prompts.expectMessage(QStringLiteral("Quillmere"),
                                 QStringLiteral("Cannot open \"%1\": it is not a file.").arg(path));
    window.choose(item);
    QCOMPARE(state(), before);
    QVERIFY(QDir().rmdir(path));
}

void TestNothingLost::reloadFromOutside()
{
    Window window;
    openAll(window);
    const auto *colours = window.find<ListView>("lvColor")->model();
    const QString name = QStringLiteral("theme/color.xml");
    // Written beside and renamed over, as careful programs do; the file as such is another one then.
    const QString beside = window.files.write(QStringLiteral("theme/new"),
                                              "<color name=\"a\">#1</color><color name=\"b\">#2</color>");
    QVERIFY(std::rename(qPrintable(beside), qPrintable(window.files.path(name))) == 0);
    QVERIFY(offers(window, QStringLiteral("color.xml was changed by another program\\.")));
    QCOMPARE(window.find<QWidget>("frOffer")->toolTip(), QStringLiteral("<qt>color.xml</qt>"));
    QCOMPARE(colours->rowCount(), 1);
    answer(window, "cmdOffer(0)");
    QCOMPARE(colours->rowCount(), 2);
    QCOMPARE(offer(window), QString());

    // Once more, now with an edited list; the person keeps it.
    window.find<ListView>("lvColor")->setCurrentIndex(colours->index(0, 0));
    QTest::keyClick(window.find<ListView>("lvColor"), Qt::Key_Delete);
    QCOMPARE(colours->rowCount(), 1);
    window.files.write(name, "<color name=\"c\">#3</color>");
    window.files.write(QStringLiteral("theme/main.xml"), "<theirs/>");
    QVERIFY(offers(
        window, QStringLiteral("(main|color).xml and (main|color).xml were changed .* Reloading drops .*")));
    answer(window, "cmdOffer(1)");
    QCOMPARE(offer(window), QString());
    QCOMPARE(colours->rowCount(), 1);
    window.prompts.expectQuestion(QStringLiteral("Simpan File"),
                                  QStringLiteral("Benar mau menyimpan file?") + kLine, true);
    window.choose("mnuCSave");
}

void TestNothingLost::reloadKeepsWhatIsTyped()
{
    Window window;
    openAll(window);
    type(window, "mine");
    const QString mine = text(window);
    window.files.write(QStringLiteral("theme/main.xml"), "<theirs/>");
    QVERIFY(offers(window, QStringLiteral("main.xml was changed by another program\\.")));
    QCOMPARE(text(window), mine);
    answer(window, "cmdOffer(0)");
    QVERIFY(text(window).contains(QStringLiteral("theirs")));
    QVERIFY(offers(window, kUnsaved + QStringLiteral(" The file has changed since\\.")));
    answer(window, "cmdOffer(0)");
    QCOMPARE(text(window), mine);
    auto *source = window.find<SourceBox>("txtSnippet");
    QTest::keyClick(source, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(text(window).contains(QStringLiteral("theirs")));
    // Taken back, it is offered once more all the same, and is not written over by what is typed now.
    QTest::keyClicks(source, QStringLiteral("other"));
    const QString main = window.files.path(QStringLiteral("theme/main.xml"));
    window.skin->openDocument(main);
    QCOMPARE(kept(main), 2);
    answer(window, "cmdOffer(1)");
    answer(window, "cmdOffer(0)");
    QCOMPARE(text(window), mine);
    // It was made from another file than what it would be written over now.
    window.prompts.expectQuestion(QStringLiteral("Simpan File"),
                                  QStringLiteral("Benar mau menyimpan file?") + kLine, true);
    window.choose("mnuSave");
    QVERIFY(kept(main) == 0);
}

void TestNothingLost::recovery_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"crash", "exit", "other window", "crash, emptied", "other window, emptied"})
        QTest::newRow(end) << QString(QLatin1String(end));
}

void TestNothingLost::recovery()
{
    QFETCH(QString, end);
    Window window;
    openAll(window);
    const QString main = window.files.path(QStringLiteral("theme/main.xml"));
    type(window, "typed");
    window.find<SourceBox>("txtSnippet")->insertPlainText(QString(QChar(0xA0)) + QChar(0xE9) + QChar(0xD800));
    const QString typed = text(window);
    if (end.endsWith(u"emptied")) {
        QTest::keyClick(window.find<SourceBox>("txtSnippet"), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(window.find<SourceBox>("txtSnippet"), Qt::Key_Delete);
    }
    const QString last = text(window);
    if (end.startsWith(u"crash")) {
        // Nothing tells the window that its end has come; the text is safe soon after the last key.
        QVERIFY(QTest::qWaitFor([&] { return kept(main) > 0; }, 5000));
        QCOMPARE(text(window), last);
        window.start();
    } else if (end == u"exit") {
        window.skin->close();
        window.start();
    } else {
        window.skin->openDocument(window.files.path(QStringLiteral("theme/other.xml")));
        QCOMPARE(offer(window), QString());
    }
    window.skin->openDocument(main);
    QVERIFY(text(window) != typed);
    QVERIFY(offers(window, kUnsaved));
    QCOMPARE(window.find<QToolButton>("cmdOffer(0)")->text(), QStringLiteral("Restore"));
    QCOMPARE(window.find<QToolButton>("cmdOffer(1)")->text(), QStringLiteral("Discard"));
    answer(window, "cmdOffer(0)");
    QCOMPARE(text(window), typed);
    QCOMPARE(offer(window), QString());
    QCOMPARE(kept(main), 1); // it is not saved yet

    window.skin->openDocument(main);
    QVERIFY(offers(window, kUnsaved));
    answer(window, "cmdOffer(1)");
    QVERIFY(kept(main) == 0);
}

void TestNothingLost::nothingLeftToOffer()
{
    Window window;
    openAll(window);
    const QString main = window.files.path(QStringLiteral("theme/main.xml"));
    type(window, "typed");
    QVERIFY(QTest::qWaitFor([&] { return kept(main) > 0; }, 5000));
    window.prompts.expectQuestion(QStringLiteral("Simpan File"), QStringLiteral("Benar mau menyimpan file?"),
                                  true);
    window.choose("mnuSave");
    QVERIFY(kept(main) == 0);

    // Typed and taken back.
    type(window, "y");
    QVERIFY(QTest::qWaitFor([&] { return kept(main) > 0; }, 5000));
    QTest::keyClick(window.find<SourceBox>("txtSnippet"), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(QTest::qWaitFor([&] { return kept(main) == 0; }, 5000));
    window.start();
    window.skin->openDocument(main);
    QCOMPARE(offer(window), QString());
}

void TestNothingLost::olderTextIsNotReplaced()
{
    Window window;
    openAll(window);
    const QString main = window.files.path(QStringLiteral("theme/main.xml"));
    type(window, "first");
    const QString first = text(window);
    window.skin->openDocument(main);
    type(window, "second"); // with the offer still there
    const QString second = text(window);
    window.skin->openDocument(main);
    QCOMPARE(kept(main), 2);
    answer(window, "cmdOffer(0)");
    QCOMPARE(text(window), second);
    QVERIFY(offers(window, kUnsaved));
    answer(window, "cmdOffer(0)");
    QCOMPARE(text(window), first);
}

void TestNothingLost::noRoomForTheText()
{
    Window window;
    openAll(window);
    type(window, "typed");
    const QString typed = text(window);
    setRecoveryFolder(window.files.write(QStringLiteral("a file")));
    const QString message = QStringLiteral("Cannot keep the unsaved text in \"%1/").arg(recoveryFolder());
    QString told;
    try {
        window.skin->openDocument(window.files.path(QStringLiteral("theme/other.xml")));
    } catch (const RunTimeError &error) {
        told = error.message();
    }
    QVERIFY(told.startsWith(message));
    QCOMPARE(text(window), typed);
    // Closing asks, and only Yes gives the text up.
    for (const bool leave : {false, true}) {
        window.prompts.expectQuestion(QStringLiteral("Quillmere"),
                                      QString(told + u"\nLeave all the same, and lose what is not saved?"),
                                      leave);
        QCOMPARE(window.skin->close(), leave);
        QCOMPARE(window.skin->isVisible(), !leave);
        QCOMPARE(text(window), typed);
    }
}

void TestNothingLost::twoPrograms_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("restore") << QByteArray("cmdOffer(0)");
    QTest::newRow("discard") << QByteArray("cmdOffer(1)");
}

void TestNothingLost::twoPrograms()
{
    QFETCH(QByteArray, button);
    Window window;
    openAll(window);
    const QString main = window.files.path(QStringLiteral("theme/main.xml"));
    const QString before = text(window);
    type(window, "typed");
    const QString typed = text(window);
    window.skin->openDocument(main);
    const QString file = unsavedTextsOf(main).value(0).file;
    const auto isRefused = [&] {
        answer(window, button);
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

void TestNothingLost::oldTexts()
{
    Window window;
    openAll(window);
    const QString main = window.files.path(QStringLiteral("theme/main.xml")), shown = text(window);
    const auto keep = [](const QString &document, const QString &unsaved, int days) {
        UnsavedFile kept = UnsavedFile::forNew(document);
        keepUnsaved(kept.path(), document, unsaved);
        QFile file(kept.path());
        const QDateTime time = QDateTime::currentDateTime().addDays(-days);
        if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(time, QFileDevice::FileModificationTime))
            qFatal("cannot make %s older", qPrintable(kept.path()));
        return kept;
    };
    const QString old = keep(main, shown, 61).path(), young = keep(main, shown, 59).path();
    const QString other = keep(main, QStringLiteral("other"), 61).path();
    const QString elsewhere = keep(window.files.path(QStringLiteral("theme/other.xml")), shown, 61).path();
    const UnsavedFile used = keep(main, shown, 61);
    window.start();
    QThreadPool::globalInstance()->waitForDone();
    QVERIFY(!QFileInfo::exists(old));
    for (const QString &file : {young, other, elsewhere, used.path()})
        QVERIFY2(QFileInfo::exists(file), qPrintable(file));
}

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
