#include "WindowFixture.h"

#include "theme/forms/LiveIndex.h"

using namespace quillmere;

class TestQuickOpen : public QObject
{
    Q_OBJECT

private slots:
    void goes_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("first"); // of the list
        QTest::addColumn<int>("tab");       // that it leads to
        QTest::newRow("window") << u"seco"_s << u"second"_s << 0;
        QTest::newRow("image") << u"logo"_s << u"img_logo"_s << 2;
        QTest::newRow("colour") << u"ivory"_s << u"ivory"_s << 3;
        QTest::newRow("block") << u"title"_s << u"title_bar"_s << 8;
        QTest::newRow("catalogue") << u"image.xml"_s << u"image.xml"_s << 2;
        QTest::newRow("command") << u">default"_s << u"File > Default"_s << 0;
    }

    void goes()
    {
        QFETCH(const QString, typed);
        Window window;
        window.write("theme/theme.xml",
                     "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
                     "<file_color>color.xml</file_color></config>");
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"first\"/>"
                                         "<widget class=\"window\" name=\"second\"/>");
        window.write("theme/first.xml", "<widget class=\"text\" name=\"title_bar\"></widget>");
        const QString second =
            window.write("theme/second.xml", "<widget class=\"text\" name=\"other\"></widget>");
        window.write("theme/image.xml", "<image id=\"img_logo\">logo.png</image>");
        window.write("theme/color.xml", "<color name=\"ivory\">#fffff0</color>");
        window.openTheme();
        window.openDocument("theme/first.xml");

        // The names are read beside the window's thread.
        const auto *index = window.skin->findChild<LiveIndex *>();
        QTRY_VERIFY(index->index() && index->index()->isDefined(NameKind::Image, u"img_logo"));
        QTest::keyClick(window.skin.get(), Qt::Key_P, Qt::ControlModifier);
        auto *line = window.find<QLineEdit>("txtQuickOpen");
        QTest::keyClicks(line, typed);
        const QAbstractItemModel *list = window.model("lvQuickOpen");
        QTEST(list->index(0, 0).data().toString(), "first");
        QTest::keyClick(line, Qt::Key_Return);
        QVERIFY(!line->isVisible());
        QTEST(window.find<QTabBar>("TabStrip4")->currentIndex(), "tab");
        if (typed == u"seco")
            QCOMPARE(window.find<QGroupBox>("frmWb")->title(), second);
    }

    // A tip that is drawn as markup reads the files that its pictures name, devices among them.
    void plainTip()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"a<img src=/dev/zero>b\"/>");
        window.openTheme();
        QTest::keyClick(window.skin.get(), Qt::Key_P, Qt::ControlModifier);
        QTest::keyClicks(window.find<QLineEdit>("txtQuickOpen"), u"dev/zero"_s);
        const QString tip = window.model("lvQuickOpen")->index(0, 0).data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(u"img") && !tip.contains(u"<img"), qPrintable(tip));
    }

    // The settings are read and written as a whole.
    void forgetsLongNames()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"" + QByteArray(100'000, 'y') +
                                             "\"/><widget class=\"window\" name=\"short\"/>");
        window.openTheme();
        for (const QString &typed : {u"yyy"_s, u"short"_s}) {
            QTest::keyClick(window.skin.get(), Qt::Key_P, Qt::ControlModifier);
            QTest::keyClicks(window.find<QLineEdit>("txtQuickOpen"), typed);
            QTest::keyClick(window.find<QLineEdit>("txtQuickOpen"), Qt::Key_Return);
        }
        QCOMPARE(QSettings().value(u"quickOpen/used"_s).toStringList(), QStringList(u"0:short"_s));
    }

    void leaves()
    {
        const Window window;
        QTest::keyClick(window.skin.get(), Qt::Key_P, Qt::ControlModifier);
        auto *line = window.find<QLineEdit>("txtQuickOpen");
        QVERIFY(line->isVisible());
        QTest::keyClick(line, Qt::Key_Escape);
        QVERIFY(!line->isVisible());
    }
};

WINDOW_TEST_MAIN(TestQuickOpen)
#include "tst_quickopen.moc"
