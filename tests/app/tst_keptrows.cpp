#include "TextTable.h"
#include "app/EditedTheme.h"

#include "files/Paths.h"

using namespace quillmere;

namespace {

// Goes away from rows of this file, in one of several ways.
void leave(EditedWindow &window, const QString &end, const QString &path, UnsavedKind kind)
{
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
    } else if (end == u"other language") {
        openLanguage(window, 1);
    } else if (end == u"code page") {
        window.choose("mnuCodePage1252");
    }
}

} // namespace

// Unsaved rows of the catalogues are kept and offered as unsaved texts are.
class TestKeptRows : public QObject
{
    Q_OBJECT

private slots:
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
        leave(window, end, path, kind);
        if (end == u"code page")
            QVERIFY(offers(window, offered));
        const QString told =
            u"The unsaved %1 of %2 are kept and offered when that is opened again."_s.arg(name, file);
        QVERIFY2(end != u"other theme" || window.said().endsWith(told), qPrintable(window.said()));
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
};

WINDOW_TEST_MAIN(TestKeptRows)
#include "tst_keptrows.moc"
