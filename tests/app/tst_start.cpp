#include "WindowFixture.h"

#include "app/ThemePictures.h"

#include <QImage>
#include <QListView>

using namespace quillmere;

namespace {

class StartWindow : public Window
{
public:
    StartWindow()
    {
        const QString list = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/user-dirs.dirs"_s;
        QFile dirs(list);
        if (!dirs.open(QIODevice::WriteOnly) ||
            dirs.write("XDG_DOCUMENTS_DIR=\"" + path("documents").toUtf8() + "\"\n") < 0)
            qFatal("No %s", qPrintable(list));
    }
    QWidget *page() const { return skin->findChild<QWidget *>(u"startPage"_s); }
    bool isShown() const { return page() && page()->isVisible(); }
    // The pictures are drawn out of sight, and the window need not be the active one then.
    QString focused() const { return skin->focusWidget()->objectName(); }
    void press(Qt::Key key) const { QTest::keyClick(skin->focusWidget(), key); }
};

} // namespace

class TestStart : public QObject
{
    Q_OBJECT

private slots:
    // The keyboard alone leads to the copy of the example, and what was changed in it stays.
    void opensExample()
    {
        StartWindow window;
        const QString copy = window.path("documents/Quillmere Example/theme");
        for (const bool isNew : {true, false}) {
            QSettings().clear();
            window.start();
            window.skin->showStart();
            QVERIFY(window.isShown());
            QCOMPARE(window.focused(), u"cmdOpenTheme"_s);
            window.press(Qt::Key_Right);
            window.press(Qt::Key_Right);
            window.press(Qt::Key_Right); // there is nothing further
            window.press(Qt::Key_Return);
            QCOMPARE(window.skin->windowTitle(), QString(u" :: Quillmere :: "_s + copy));
            QVERIFY(!window.isShown());
            QCOMPARE(window.said().contains(u"your own copy"), isNew);
            QVERIFY(QFile::exists(copy + u"/../README.md"_s));
            if (isNew)
                window.write("documents/Quillmere Example/theme/style.xml", "mine");
            QTRY_VERIFY(window.focused() == u"lvOverview");
        }
        QCOMPARE(window.read("documents/Quillmere Example/theme/style.xml"), "mine");
    }

    // A folder of that name that holds something else is left alone.
    void sparesOthers()
    {
        StartWindow window;
        window.write("documents/Quillmere Example/letter.txt", "dear");
        window.skin->showStart();
        window.prompts.expectMessage(u"Quillmere"_s, u"Cannot make \"%1\": This folder is not empty."_s.arg(
                                                         window.path("documents/Quillmere Example")));
        QTest::mouseClick(window.find<QPushButton>("cmdOpenExample"), Qt::LeftButton);
        QVERIFY(window.isShown());
        QVERIFY(!QFile::exists(window.path("documents/Quillmere Example/theme")));
        // Nor does a link lead the copy elsewhere.
        QVERIFY(QDir(window.path("documents/Quillmere Example")).removeRecursively());
        QVERIFY(QDir().mkpath(window.path("elsewhere")));
        QVERIFY(QFile::link(window.path("elsewhere"), window.path("documents/Quillmere Example")));
        window.prompts.expectMessage(u"Quillmere"_s, u"Cannot make \"%1\": it is a link."_s.arg(
                                                         window.path("documents/Quillmere Example")));
        QTest::mouseClick(window.find<QPushButton>("cmdOpenExample"), Qt::LeftButton);
        QVERIFY(QDir(window.path("elsewhere")).isEmpty());
    }

    void listsRecent()
    {
        StartWindow window;
        window.write("one/theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        window.write("one/theme/widget.xml", "<widget class=\"window\" name=\"none\"/>"
                                             "<widget class=\"window\" name=\"first\"/>");
        window.write("one/theme/first.xml",
                     "<widget class=\"window\" name=\"first\"><property><rect>[0,0,1280,720]</rect>"
                     "<backcolor>[#ff0000]</backcolor></property></widget>");
        const QString one = window.path("one/theme"), gone = window.path("gone/theme");
        window.skin->openTheme(one);
        window.skin->showStart();
        QVERIFY(!window.isShown());
        // The picture of the first window that has one is there the next time.
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(ThemePictures::fileOf(one)), 20000);
        QSettings().setValue(u"recentThemes"_s, QStringList{gone, one});

        window.start();
        window.skin->showStart();
        auto *list = window.find<QListView>("lvRecent");
        QCOMPARE(window.focused(), u"lvRecent"_s);
        QCOMPARE(rowsAsText(list->model()), u"gone\none\n"_s);
        const auto spoken = [&](int row) {
            return list->model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
        };
        // Side by side in every width that has room for two.
        for (int width = 1100; width < 1130; ++width) {
            window.skin->resize(width, 900);
            QVERIFY(list->visualRect(list->model()->index(1, 0)).left() > 100);
        }
        QTRY_VERIFY(spoken(0).contains(u"no theme here any more"));
        const auto colour = [&] {
            const QImage shown = list->viewport()->grab().toImage();
            return shown.pixelColor(list->visualRect(list->model()->index(1, 0)).center()).name();
        };
        QTRY_COMPARE(colour(), u"#ff0000"_s);

        window.press(Qt::Key_Return);
        QVERIFY(window.isShown()); // there is no such folder
        window.press(Qt::Key_Delete);
        QCOMPARE(rowsAsText(list->model()), u"one\n"_s);
        QCOMPARE(QSettings().value(u"recentThemes"_s).toStringList(), QStringList(one));
        window.press(Qt::Key_Up);
        QCOMPARE(window.focused(), u"cmdOpenTheme"_s);
        window.press(Qt::Key_Down);
        window.press(Qt::Key_Return);
        QCOMPARE(window.skin->windowTitle(), QString(u" :: Quillmere :: "_s + one));
    }

    // It gives way to whatever there is to be seen, and does not come over it.
    void leaves_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("typed") << 0;
        QTest::newRow("opened") << 1;
        QTest::newRow("open before") << 2;
    }
    void leaves()
    {
        QFETCH(const int, way);
        StartWindow window;
        window.write("alone.xml", "<widget/>");
        if (way < 2)
            window.skin->showStart();
        if (way == 0)
            QTest::keyClicks(window.source(), u"<"_s);
        else
            window.openDocument("alone.xml");
        if (way == 2)
            window.skin->showStart();
        QTRY_VERIFY(!window.isShown());
    }
};

WINDOW_TEST_MAIN(TestStart)
#include "tst_start.moc"
