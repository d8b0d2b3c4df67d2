#include "WindowFixture.h"
#include "controls/ListView.h"
#include "source/forms/SourceBox.h"

#include <QLabel>
#include <QLineEdit>
#include <QTabBar>

#include <sys/stat.h>

using namespace quillmere;
using namespace Qt::StringLiterals;

// Themes of strangers, whose files lead elsewhere.
class TestOutside : public QObject
{
    Q_OBJECT

private slots:
    void asksBeforeItWritesOutside_data();
    void asksBeforeItWritesOutside();
    void deletesTheLinkOnly();
    void restoresOutside();
    void opensWhatCanBeRead();

private:
    static void openTheme(Window &window, const char *config)
    {
        window.files.write(u"theme/theme.xml"_s, QByteArray("<config>") + config + "</config>");
        window.skin->openTheme(window.files.path(u"theme"_s));
    }
};

void TestOutside::asksBeforeItWritesOutside_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("question");
    const QString save = u"Simpan File"_s, sure = u"Benar mau menyimpan file?"_s;
    QTest::newRow("colours") << QByteArray("<file_color>../out.xml</file_color>") << u"mnuCSave"_s << save
                             << sure;
    QTest::newRow("colours by a link")
        << QByteArray("<file_color>link.xml</file_color>") << u"mnuCSave"_s << save << sure;
    QTest::newRow("images") << QByteArray("<file_image>../out.xml</file_image>") << u"mnuImgSave"_s << save
                            << u"Benar mau menyimpan file widget image?"_s;
    QTest::newRow("windows") << QByteArray("<file_widget>../out.xml</file_widget>") << u"mnuWidgetDel"_s
                             << save << sure;
    QTest::newRow("a window") << QByteArray("<file_widget>w.xml</file_widget>") << u"mnuSave"_s << save
                              << sure;
    QTest::newRow("a language") << QByteArray("<file_i18n>l.xml</file_i18n>") << u"mnuLangSave"_s
                                << u"Save File"_s << u"Save file translate?"_s;
}

// "No" to the first question counts, whatever the command does with it elsewhere; "No" to the second, which
// names the place, leaves the file; "Yes" is for the rest of the program.
void TestOutside::asksBeforeItWritesOutside()
{
    QFETCH(QByteArray, config);
    QFETCH(QString, command);
    QFETCH(QString, title);
    QFETCH(QString, question);
    Window window;
    const QByteArray old = "<language name=\"a\"><tran id=\"x\">y</tran><color name=\"a\">#000000</color>"
                           "<image id=\"a\">b</image><widget class=\"window\" name=\"../out\"/>";
    const QString place = window.files.write(u"out.xml"_s, old);
    window.files.write(u"theme/w.xml"_s, "<widget class=\"window\" name=\"../out\"/>");
    window.files.write(u"theme/l.xml"_s, "<language id=\"de\">../out.xml</language>");
    QVERIFY(QFile::link(place, window.files.path(u"theme/link.xml"_s)));
    openTheme(window, config);
    if (command == u"mnuLangSave") {
        auto *languages = window.find<ListView>("lvLang");
        languages->setCurrentIndex(languages->model()->index(0, 0));
        window.choose("mnuLangOpen");
    }
    if (command == u"mnuSave") {
        auto *windows = window.find<ListView>("LvWidget");
        emit windows->rowOpened(0);
        QTRY_VERIFY(!window.find<SourceBox>("txtSnippet")->document()->isEmpty());
        window.find<SourceBox>("txtSnippet")->setText(u"new"_s);
        window.find<QTabBar>("TabStrip4")->setCurrentIndex(8);
    }
    const QString refusal =
        u"Not written: the theme leads outside of its own folder, to\n\n%1\n\nAllow this file "
        "to be written and deleted until you leave Quillmere?"_s.arg(QFileInfo(place).canonicalFilePath());
    window.prompts.expectQuestion(title, question, false);
    window.choose(command.toLatin1().constData());
    QCOMPARE(window.files.read(u"out.xml"_s), old);
    window.prompts.expectQuestion(title, question, true);
    window.prompts.expectQuestion(title, refusal, false);
    window.choose(command.toLatin1().constData());
    QCOMPARE(window.files.read(u"out.xml"_s), old);
    window.prompts.expectQuestion(title, question, true);
    window.prompts.expectQuestion(title, refusal, true);
    window.choose(command.toLatin1().constData());
    const QByteArray written = window.files.read(u"out.xml"_s);
    QVERIFY(written != old);
    window.files.write(u"out.xml"_s, written + '\n');
    const QString changed = question + u"\nThe file was changed by another program."_s;
    window.prompts.expectQuestion(title, changed, true);
    window.choose(command.toLatin1().constData());
    QVERIFY(window.files.read(u"out.xml"_s) != written + '\n');
}

void TestOutside::deletesTheLinkOnly()
{
    Window window;
    const QString place = window.files.write(u"out/a.xml"_s, "kept");
    window.files.write(u"theme/w.xml"_s, "<widget class=\"window\" name=\"folder/m\"/>");
    QVERIFY(QFile::link(window.files.path(u"out"_s), window.files.path(u"theme/folder"_s)));
    QVERIFY(QFile::link(place, window.files.path(u"theme/link.xml"_s)));
    openTheme(window, "<file_widget>w.xml</file_widget>");
    auto *files = window.find<ListView>("lvWidgetDel");
    files->setCurrentIndex(files->model()->index(0, 0));
    window.prompts.expectQuestion(
        u"Delete File"_s, u"Delete file %1 ?"_s.arg(window.files.path(u"theme/folder/a.xml"_s)), true);
    window.prompts.expectQuestion(
        u"Delete File"_s,
        u"Not deleted: the theme leads outside of its own folder, to\n\n%1\n\nAllow this "
        "file to be written and deleted until you leave Quillmere?"_s.arg(
            QFileInfo(place).canonicalFilePath()),
        false);
    window.choose("mnuWidgetDelFile");
    QCOMPARE(window.files.read(u"out/a.xml"_s), QByteArray("kept"));

    window.files.write(u"theme/w.xml"_s);
    window.choose("mnuWidgetOpen");
    window.files.write(u"theme/w.xml"_s, "<widget class=\"window\" name=\"m\"/>");
    window.choose("mnuWidgetOpen");
    QCOMPARE(files->model()->index(0, 0).data().toString(), u"link.xml"_s);
    files->setCurrentIndex(files->model()->index(0, 0));
    window.prompts.expectQuestion(u"Delete File"_s,
                                  u"Delete file %1 ?"_s.arg(window.files.path(u"theme/link.xml"_s)), false);
    window.choose("mnuWidgetDelFile");
    QVERIFY(!QFileInfo(window.files.path(u"theme/link.xml"_s)).isSymLink());
    QCOMPARE(window.files.read(u"out/a.xml"_s), QByteArray("kept"));
}

// Versions of a file outside, which the theme names, stand among the others.
void TestOutside::restoresOutside()
{
    Window window;
    const QString place = window.files.write(u"out.xml"_s, "<color name=\"a\">#000000</color>");
    openTheme(window, "<file_color>../out.xml</file_color>");
    window.disk.allow(QFileInfo(place).canonicalFilePath());
    window.disk.save(place, u"new"_s, window.files.path(u"theme"_s));
    window.choose("mnuRestore");
    auto *versions = window.find<ListView>("lvVersions");
    QCOMPARE(versions->model()->rowCount(), 1);
    QCOMPARE(versions->model()->index(0, 0).data().toString(), QFileInfo(place).canonicalFilePath());
}

void TestOutside::opensWhatCanBeRead()
{
    Window window;
    window.files.write(u"theme/color.xml"_s, "<color name=\"a\">#000000</color>");
    window.files.write(u"theme/w.xml"_s, "<widget class=\"window\" name=\"m\"/>");
    window.files.write(u"theme/m.xml"_s, "<a>\n</a>\n");
    QCOMPARE(mkfifo(QFile::encodeName(window.files.path(u"theme/font.xml"_s)).constData(), 0600), 0);
    QVERIFY(QFile::resize(window.files.write(u"theme/big.png"_s), qint64(100) << 30));
    window.files.write(u"theme/image.xml"_s, "<image id=\"a\">big.png</image>");
    const auto problem = [&](const char *name, const char *why) {
        return u"Cannot read \"%1\": %2."_s.arg(window.files.path(QLatin1String(name)), QLatin1String(why));
    };
    window.prompts.expectMessage(u"Quillmere"_s, problem("theme/font.xml", "it is not a regular file"));
    openTheme(window, "<file_font>font.xml</file_font><file_color>color.xml</file_color><file_image>image.xml"
                      "</file_image><file_widget>w.xml</file_widget>");
    QCOMPARE(window.find<ListView>("lvColor")->model()->rowCount(), 1);

    auto *images = window.find<ListView>("lvImage");
    emit images->rowClicked(0);
    images->setCurrentIndex(images->model()->index(0, 0));
    window.choose("mnuImgRubah");
    QCOMPARE(window.find<QLabel>("lblPicture")->text(), u"big.png: it is larger than 64 MB."_s);

    // The open window is replaced by a device: the text stays, and so does the device.
    const QString path = window.files.path(u"theme/m.xml"_s);
    window.skin->openDocument(path);
    const QString text = window.find<SourceBox>("txtSnippet")->text();
    QVERIFY(QFile::remove(path) && QFile::link(u"/dev/full"_s, path));
    window.prompts.expectMessage(u"Quillmere"_s, problem("theme/m.xml", "it is not a regular file"));
    emit window.find<ListView>("LvWidget")->rowOpened(0);
    QCOMPARE(window.find<SourceBox>("txtSnippet")->text(), text);
}

int main(int argc, char **argv)
{
    return runWindowTest<TestOutside>(argc, argv);
}

#include "tst_outside.moc"
