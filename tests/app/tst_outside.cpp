#include "WindowFixture.h"
#include "controls/ListView.h"

#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

#include <sys/stat.h>

using namespace quillmere;
using namespace Qt::StringLiterals;

// Themes of strangers, whose files lead elsewhere.
class TestOutside : public QObject
{
    Q_OBJECT

private slots:
    void asksBeforeItWritesOutside_data()
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
        QTest::newRow("images") << QByteArray("<file_image>../out.xml</file_image>") << u"mnuImgSave"_s
                                << save << u"Benar mau menyimpan file widget image?"_s;
        QTest::newRow("windows") << QByteArray("<file_widget>../out.xml</file_widget>") << u"mnuWidgetDel"_s
                                 << save << sure;
        QTest::newRow("a window") << QByteArray("<file_widget>w.xml</file_widget>") << u"mnuSave"_s << save
                                  << sure;
        QTest::newRow("a language") << QByteArray("<file_i18n>l.xml</file_i18n>") << u"mnuLangSave"_s
                                    << u"Save File"_s << u"Save file translate?"_s;
    }

    // "No" to the first question counts, whatever the command does with it elsewhere; "No" to the second,
    // which names the place, leaves the file; "Yes" is for the rest of the program.
    void asksBeforeItWritesOutside()
    {
        QFETCH(QByteArray, config);
        QFETCH(QString, command);
        QFETCH(QString, title);
        QFETCH(QString, question);
        Window window;
        const QByteArray old = "<language name=\"a\"><tran id=\"x\">y</tran><color name=\"a\">#000000</color>"
                               "<image id=\"a\">b</image><widget class=\"window\" name=\"../out\"/>";
        const QString place = window.write("out.xml", old);
        window.write("theme/w.xml", "<widget class=\"window\" name=\"../out\"/>");
        window.write("theme/l.xml", "<language id=\"de\">../out.xml</language>");
        QVERIFY(QFile::link(place, window.path("theme/link.xml")));
        openTheme(window, config);
        if (command == u"mnuLangSave") {
            auto *languages = window.find<ListView>("lvLang");
            languages->setCurrentIndex(languages->model()->index(0, 0));
            window.choose("mnuLangOpen");
        }
        if (command == u"mnuSave") {
            auto *windows = window.find<ListView>("LvWidget");
            emit windows->rowOpened(0);
            QTRY_VERIFY(!window.source()->document()->isEmpty());
            window.source()->setText(u"new"_s);
            window.turnTo(8);
        }
        const QString refusal =
            u"Not written: the theme leads outside of its own folder, to\n\n%1\n\nAllow this file "
            "to be written and deleted until you leave Quillmere?"_s.arg(
                QFileInfo(place).canonicalFilePath());
        window.prompts.expectQuestion(title, question, false);
        window.choose(command.toLatin1().constData());
        QCOMPARE(window.read("out.xml"), old);
        window.prompts.expectQuestion(title, question, true);
        window.prompts.expectQuestion(title, refusal, false);
        window.choose(command.toLatin1().constData());
        QCOMPARE(window.read("out.xml"), old);
        window.prompts.expectQuestion(title, question, true);
        window.prompts.expectQuestion(title, refusal, true);
        window.choose(command.toLatin1().constData());
        const QByteArray written = window.read("out.xml");
        QVERIFY(written != old);
        window.write("out.xml", written + '\n');
        const QString changed = question + u"\nThe file was changed by another program."_s;
        window.prompts.expectQuestion(title, changed, true);
        window.choose(command.toLatin1().constData());
        QVERIFY(window.read("out.xml") != written + '\n');
    }

    void deletesTheLinkOnly()
    {
        Window window;
        const QString place = window.write("out/a.xml", "kept");
        window.write("theme/w.xml", "<widget class=\"window\" name=\"folder/m\"/>");
        QVERIFY(QFile::link(window.path("out"), window.path("theme/folder")));
        QVERIFY(QFile::link(place, window.path("theme/link.xml")));
        openTheme(window, "<file_widget>w.xml</file_widget>");
        auto *files = window.find<ListView>("lvWidgetDel");
        files->setCurrentIndex(files->model()->index(0, 0));
        window.prompts.expectQuestion(u"Delete File"_s,
                                      u"Delete file %1 ?"_s.arg(window.path("theme/folder/a.xml")), true);
        window.prompts.expectQuestion(
            u"Delete File"_s,
            u"Not deleted: the theme leads outside of its own folder, to\n\n%1\n\nAllow this "
            "file to be written and deleted until you leave Quillmere?"_s.arg(
                QFileInfo(place).canonicalFilePath()),
            false);
        window.choose("mnuWidgetDelFile");
        QCOMPARE(window.read("out/a.xml"), QByteArray("kept"));

        window.write("theme/w.xml");
        window.choose("mnuWidgetOpen");
        window.write("theme/w.xml", "<widget class=\"window\" name=\"m\"/>");
        window.choose("mnuWidgetOpen");
        QCOMPARE(files->model()->index(0, 0).data().toString(), u"link.xml"_s);
        files->setCurrentIndex(files->model()->index(0, 0));
        window.prompts.expectQuestion(u"Delete File"_s,
                                      u"Delete file %1 ?"_s.arg(window.path("theme/link.xml")), false);
        window.choose("mnuWidgetDelFile");
        QVERIFY(!QFileInfo(window.path("theme/link.xml")).isSymLink());
        QCOMPARE(window.read("out/a.xml"), QByteArray("kept"));
    }

    // Versions of a file outside, which the theme names, stand among the others.
    void restoresOutside()
    {
        Window window;
        const QString place = window.write("out.xml", "<color name=\"a\">#000000</color>");
        openTheme(window, "<file_color>../out.xml</file_color>");
        window.disk.allow(QFileInfo(place).canonicalFilePath());
        window.disk.save(place, u"new"_s, window.path("theme"));
        window.choose("mnuRestore");
        auto *versions = window.find<ListView>("lvVersions");
        QCOMPARE(versions->model()->rowCount(), 1);
        QCOMPARE(versions->model()->index(0, 0).data().toString(), QFileInfo(place).canonicalFilePath());
    }

    void opensWhatCanBeRead()
    {
        Window window;
        window.write("theme/color.xml", "<color name=\"a\">#000000</color>");
        window.write("theme/w.xml", "<widget class=\"window\" name=\"m\"/>");
        window.write("theme/m.xml", "<a>\n</a>\n");
        QCOMPARE(mkfifo(QFile::encodeName(window.path("theme/font.xml")).constData(), 0600), 0);
        QVERIFY(QFile::resize(window.write("theme/big.png"), qint64(100) << 30));
        window.write("theme/image.xml", "<image id=\"a\">big.png</image>");
        const QString keys = window.write("theme/keys.xml", "<item group=\"a\" display=\"A\"/>");
        const auto problem = [&](const char *name, const char *why) {
            return u"Cannot read \"%1\": %2."_s.arg(window.files.path(QLatin1String(name)),
                                                    QLatin1String(why));
        };
        window.prompts.expectMessage(u"Quillmere"_s, problem("theme/font.xml", "it is not a regular file"));
        openTheme(window,
                  "<file_font>font.xml</file_font><file_color>color.xml</file_color><file_image>image.xml"
                  "</file_image><file_widget>w.xml</file_widget><file_keymap>keys.xml</file_keymap>");
        QCOMPARE(window.model("lvColor")->rowCount(), 1);
        QCOMPARE(window.model("lvKeyGroup")->rowCount(), 1);
        QVERIFY(QFile::remove(keys) && QFile::link(u"/dev/full"_s, keys));
        emit window.find<ListView>("lvKeyGroup")->rowClicked(0);
        QCOMPARE(window.skin->statusBar()->currentMessage(),
                 problem("theme/keys.xml", "it is not a regular file"));

        auto *images = window.find<ListView>("lvImage");
        emit images->rowClicked(0);
        images->setCurrentIndex(images->model()->index(0, 0));
        window.choose("mnuImgRubah");
        QCOMPARE(window.find<QLabel>("lblPicture")->text(), u"big.png: it is larger than 64 MB."_s);

        // The open window is replaced by a device: the text stays, and so does the device.
        const QString path = window.path("theme/m.xml");
        window.skin->openDocument(path);
        const QString text = window.source()->text();
        QVERIFY(QFile::remove(path) && QFile::link(u"/dev/full"_s, path));
        window.prompts.expectMessage(u"Quillmere"_s, problem("theme/m.xml", "it is not a regular file"));
        emit window.find<ListView>("LvWidget")->rowOpened(0);
        QCOMPARE(window.source()->text(), text);
    }

private:
    static void openTheme(Window &window, const char *config)
    {
        window.write("theme/theme.xml", QByteArray("<config>") + config + "</config>");
        window.openTheme();
    }
};

WINDOW_TEST_MAIN(TestOutside)
#include "tst_outside.moc"
