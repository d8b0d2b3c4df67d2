#include "TextTable.h"
#include "app/WindowFixture.h"

#include <sys/stat.h>

using namespace quillmere;

// Themes of strangers, whose files lead elsewhere.
class TestOutside : public QObject
{
    Q_OBJECT

private slots:
    void asksBeforeItWritesOutside_data()
    {
        const auto save = u"Simpan File", sure = u"Benar mau menyimpan file?";
        textTable({"config", "command", "title", "question"},
                  {{u"colours", u"<file_color>../out.xml</file_color>", u"mnuCSave", save, sure},
                   {u"colours by a link", u"<file_color>link.xml</file_color>", u"mnuCSave", save, sure},
                   {u"images", u"<file_image>../out.xml</file_image>", u"mnuImgSave", save,
                    u"Benar mau menyimpan file widget image?"},
                   {u"windows", u"<file_widget>../out.xml</file_widget>", u"mnuWidgetDel", save, sure},
                   {u"a window", u"<file_widget>w.xml</file_widget>", u"mnuSave", save, sure},
                   {u"a language", u"<file_i18n>l.xml</file_i18n>", u"mnuLangSave", u"Save File",
                    u"Save file translate?"}});
    }

    // "No" to the first question counts, whatever the command does with it elsewhere; "No" to the second,
    // which names the place, leaves the file; "Yes" is for the rest of the program.
    void asksBeforeItWritesOutside()
    {
        QFETCH(QString, config);
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
        openTheme(window, config.toLatin1());
        if (command == u"mnuLangSave") {
            window.select("lvLang", 0);
            window.choose("mnuLangOpen");
        }
        if (command == u"mnuSave") {
            emit window.find<ListView>("LvWidget")->rowOpened(0);
            QTRY_VERIFY(!window.source()->document()->isEmpty());
            window.source()->setText(u"new"_s);
            window.turnTo(8);
        }
        const auto save = [&](bool yes, std::optional<bool> outside) {
            window.prompts.expectQuestion(title, question, yes);
            if (outside)
                window.prompts.expectQuestion(title, refusal(u"written"_s, place), *outside);
            window.choose(command.toLatin1());
        };
        save(false, {});
        QCOMPARE(window.read("out.xml"), old);
        save(true, false);
        QCOMPARE(window.read("out.xml"), old);
        save(true, true);
        const QByteArray written = window.read("out.xml");
        QVERIFY(written != old);
        window.write("out.xml", written + '\n');
        const QString changed = question + u"\nThe file was changed by another program."_s;
        window.prompts.expectQuestion(title, changed, true);
        window.choose(command.toLatin1());
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
        auto *files = window.select("lvWidgetDel", 0);
        window.prompts.expectQuestion(u"Delete File"_s,
                                      u"Delete file %1 ?"_s.arg(window.path("theme/folder/a.xml")), true);
        window.prompts.expectQuestion(u"Delete File"_s, refusal(u"deleted"_s, place), false);
        window.choose("mnuWidgetDelFile");
        QCOMPARE(window.read("out/a.xml"), QByteArray("kept"));

        window.write("theme/w.xml");
        window.choose("mnuWidgetOpen");
        window.write("theme/w.xml", "<widget class=\"window\" name=\"m\"/>");
        window.choose("mnuWidgetOpen");
        QCOMPARE(files->model()->index(0, 0).data().toString(), u"link.xml"_s);
        window.select("lvWidgetDel", 0);
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
        QCOMPARE(window.said(), problem("theme/keys.xml", "it is not a regular file"));

        emit window.select("lvImage", 0)->rowClicked(0);
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
    static QString refusal(const QString &done, const QString &place)
    {
        return u"Not %1: the theme leads outside its own folder, to\n\n%2\n\nAllow this file to be "
               u"written "
               "and deleted until you leave Quillmere?"_s.arg(done, QFileInfo(place).canonicalFilePath());
    }
    static void openTheme(Window &window, const char *config)
    {
        window.write("theme/theme.xml", QByteArray("<config>") + config + "</config>");
        window.openTheme();
    }
};

WINDOW_TEST_MAIN(TestOutside)
#include "tst_outside.moc"
