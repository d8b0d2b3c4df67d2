#include "app/EditedTheme.h"

#include "app/CodePageChoice.h"
#include "app/OpenDocument.h"
#include "app/StatusLine.h"
#include "asking/forms/WindowTalk.h"
#include "files/Paths.h"

#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

using namespace quillmere;
using namespace Qt::StringLiterals;

// What is open keeps to itself how it was read and where it came from, and says what saving changed.
class TestDocument : public QObject
{
    Q_OBJECT

private slots:
    void ownCodePage_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("then");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray automatic = "mnuCodePageAutomatic", single = "mnuCodePage1252";
        QTest::newRow("UTF-8 as UTF-8") << automatic << single << QByteArray("\xC3\xA9");
        QTest::newRow("UTF-8 as single bytes") << single << automatic << QByteArray("\xC3\xA9");
        QTest::newRow("single bytes") << automatic << single << QByteArray("\xE9\xFF");
    }

    // Whatever is chosen after a file was opened, it is written as it was read.
    void ownCodePage()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, then);
        QFETCH(QByteArray, bytes);
        Window window;
        openAll(window);
        window.choose(first);
        window.write("theme/main.xml", "<a>" + bytes + "</a>\n");
        window.write("theme/en.xml", "<language name=\"\"><tran id=\"y\">" + bytes + "</tran>");
        window.openDocument("theme/main.xml");
        // Choosing reads the catalogue again, and nothing is selected in it then.
        auto *languages = window.find<ListView>("lvLang");
        languages->setCurrentIndex(languages->model()->index(0, 0));
        window.choose("mnuLangOpen");
        type(window, "x");
        window.choose(then);
        for (const auto &[item, title, question] :
             {std::tuple("mnuSave", "Simpan File", "Benar mau menyimpan file?"),
              std::tuple("mnuLangSave", "Save File", "Save file translate?")}) {
            window.prompts.expectQuestion(QLatin1String(title), QLatin1String(question), true);
            languages->setCurrentIndex(languages->model()->index(0, 0));
            window.choose(item);
        }
        const auto between = [&](const char *name, const QByteArray &open) {
            const QByteArray all = window.files.read(u"theme/"_s + QLatin1String(name));
            return all.mid(all.indexOf(open) + open.size()).split('<').first();
        };
        QCOMPARE(between("main.xml", "<a>"), bytes);
        QCOMPARE(between("en.xml", "<tran id=\"y\">"), bytes);
    }

    void choiceReadsAnew()
    {
        Window window;
        openAll(window);
        window.write("theme/main.xml", "<widget name=\"\xc3\xa4\">");
        window.openDocument("theme/main.xml");
        auto *source = window.source();
        QVERIFY(source->text().contains(u"\u00e4"_s));
        window.choose("mnuCodePage1252");
        QVERIFY(source->text().contains(u"\u00c3\u00a4"_s));
        window.choose("mnuCodePageAutomatic");
        QVERIFY(source->text().contains(u"\u00e4"_s));
    }

    void cancelledChoice()
    {
        Window window;
        openAll(window);
        window.write("theme/main.xml", "<theirs/>");
        const QString before = text(window);
        QMainWindow host;
        QStatusBar &bar = *host.statusBar();
        StatusLine status(bar);
        WindowTalk talk(host, &window.prompts);
        ThemeProject theme(window.disk);
        QVERIFY(theme.LoadTheme(window.path("theme")));
        CodePageChoice choice(
            status, theme, *window.skin->findChild<OpenDocument *>(), [] { throw Cancelled(); }, window.disk,
            talk);
        const auto item = [&](const char *name) {
            for (QAction *rule : bar.findChild<QToolButton *>(u"cmdCodePage"_s)->menu()->actions()) {
                if (rule->objectName() == QLatin1String(name))
                    return rule;
            }
            return static_cast<QAction *>(nullptr);
        };
        item("mnuCodePage1252")->trigger();
        QCOMPARE(bar.currentMessage(), u"Cancelled."_s);
        QCOMPARE(theme.rule, CodePageRule::Automatic);
        QVERIFY(item("mnuCodePageAutomatic")->isChecked());
        QVERIFY(!QSettings().contains(u"codePage"_s));
        QCOMPARE(text(window), before);
        // What was read and not shown does not count as known.
        QVERIFY(offers(window, u"main.xml was changed by another program\\."_s));
    }

    void windowOfAnotherTheme()
    {
        Window window;
        openAll(window);
        type(window, "mine");
        const QString theme = window.path("second/theme");
        window.write("second/theme/theme.xml", "<config></config>");
        const QByteArray other = "<other/>";
        window.write("second/theme/main.xml", other);
        window.skin->openTheme(theme);
        QVERIFY(text(window).contains(u"mine"_s));
        const QString said = window.said();
        QVERIFY2(said.endsWith(u"The source still holds main.xml of %1, and saves it there."_s.arg(
                     window.path("theme"))),
                 qPrintable(said));
        window.expectSave(true);
        window.choose("mnuSave");
        QVERIFY(window.read("theme/main.xml").contains("mine"));
        QCOMPARE(window.read("second/theme/main.xml"), other);
        // A window of the theme before, which the list still shows, is one of that theme.
        QCOMPARE(window.model("LvWidget")->rowCount(), 1);
        emit window.find<ListView>("LvWidget")->rowOpened(0);
        QCOMPARE(window.skin->findChild<OpenDocument *>()->document().theme(), window.path("theme"));
        window.skin->openDocument(joinPath(theme, u"main.xml"));
        window.skin->openTheme(window.path("second"));
        window.skin->openTheme(theme);
        QVERIFY(!window.said().contains(u"still holds"_s));
    }

    void saysWhatIsOnlyReindented_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("said");
        const QByteArray widget = "<widget name=\"a\">\n";
        QTest::newRow("some") << "  " + widget + "\t<rect>[1,2,3,4]</rect>\n</widget>" << QString()
                              << u" 2 lines differ only in their indentation."_s;
        QTest::newRow("one") << "<a>\r\n" + widget + "</widget>\r\n"
                             << QString() << u" 1 line differs only in its indentation."_s;
        QTest::newRow("none, and other line ends")
            << "<widget   name=\"a\">\r\n\r\n\t\r\n</widget>"_ba << QString() << QString();
        QTest::newRow("others are typed")
            << "<a>\n" + widget + "<b>\n<c>\n</widget>\n"
            << u"<new>\r\n"_s << u" 3 lines differ only in their indentation."_s;
    }

    // Once: what is saved again is as it was.
    void saysWhatIsOnlyReindented()
    {
        QFETCH(const QByteArray, file);
        QFETCH(const QString, typed);
        QFETCH(const QString, said);
        Window window;
        window.skin->openDocument(window.write("theme/w.xml", file));
        window.turnTo(8);
        window.source()->rewrite(typed + window.source()->text());
        for (const bool isFirst : {true, false}) {
            window.expectSave(true);
            window.choose("mnuSave");
            QCOMPARE(window.said(), window.path("theme/w.xml") + u" saved."_s + (isFirst ? said : QString()));
        }
    }
};

WINDOW_TEST_MAIN(TestDocument)
#include "tst_document.moc"
