#include "app/WindowFixture.h"

using namespace quillmere;

namespace {

QByteArray windowNamed(const QByteArray &name)
{
    return "<widget  class=\"window\"\r\n name=\"" + name + "\"/>\r\n";
}

void openTheme(Window &window)
{
    window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
    window.write("theme/widget.xml", "<interface>\r\n<width>1280</width><height>720</height>\n" +
                                         windowNamed("wnd_channel_info") +
                                         windowNamed("wnd_channel_info_signal") + windowNamed("a") +
                                         "</interface>");
    window.write("theme/wnd_channel_info.xml", "<widget class=\"window\" name=\"info\">");
    window.write("theme/wnd_channel_info_signal.xml", "<widget class=\"window\" name=\"signal\">");
    window.openTheme();
}

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void deleteWindows()
    {
        Window window;
        window.choose("mnuWidgetDel"); // no theme, no question
        openTheme(window);
        auto *windows = window.model("LvWidget");
        const QString question = u"Benar mau menyimpan file?"_s;
        const QByteArray before = window.read("theme/widget.xml");
        for (const bool yes : {false, true}) {
            windows->setData(windows->index(1, 0), Qt::Checked, Qt::CheckStateRole);
            window.prompts.expectQuestion(u"Simpan File"_s, question, yes);
            window.choose("mnuWidgetDel");
            QCOMPARE(windows->index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
            if (!yes)
                QCOMPARE(window.read("theme/widget.xml"), before);
        }
        QCOMPARE(window.read("theme/widget.xml"),
                 "<interface><width>1280</width><height>720</height><widget class=\"window\" "
                 "name=\"wnd_channel_info\"/>"
                 "<widget class=\"window\" name=\"a\"/></interface>\r\n");
        QCOMPARE(windows->rowCount(), 2);
        QVERIFY(QFileInfo::exists(window.path("theme/wnd_channel_info_signal.xml")));
    }

    void channelInformation()
    {
        Window window;
        openTheme(window);
        window.source()->setText(u"mine"_s);
        window.choose("mnuInfoChannel");
        QCOMPARE(window.shown("lvBlock"), u"window | info\nwindow | signal\n"_s);
        QCOMPARE(window.source()->text(), u"mine"_s);
        QVERIFY(window.js(u"document.getElementById('signal') != null"_s).toBool());
    }

    void scaleAndMove()
    {
        Window window;
        openTheme(window);
        auto *source = window.source();
        window.choose("mnuC(0)"); // nothing to scale
        window.choose("mnuTD(0)");
        source->setText(u"<rect>[0,0,1280,720]</rect>\r\n<rect>[10,20,30,40]</rect>"_s);
        window.prompts.expectMessage(u"Confirm Size"_s, u"Terlalu besar"_s);
        window.choose("mnuC(1)");
        window.choose("mnuC(0)");
        const QString scaled = u"<rect>[0,0,1024,576]</rect>\r\n<rect>[8,16,24,32]</rect>"_s;
        QCOMPARE(source->text(), scaled);
        for (const std::optional<QString> &answer : {std::optional<QString>(), std::optional(u"ten"_s)}) {
            window.prompts.expectInput(u"Widget Porition"_s, u"Input distance"_s, answer);
            window.choose("mnuTD(1)");
            QCOMPARE(source->text(), scaled);
        }
        window.prompts.expectInput(u"Widget Porition"_s, u"Input distance"_s, u"-8"_s);
        window.choose("mnuTD(1)");
        QCOMPARE(source->text(), u"<rect>[-8,0,1024,576]</rect>\r\n<rect>[0,16,24,32]</rect>"_s);
        source->undo();
        QCOMPARE(source->text(), scaled);
        source->setText(u"<rect>[0,0,120,100]</rect>"_s);
        window.prompts.expectMessage(u"Confirm Size"_s, u"Terlalu kecil"_s);
        window.choose("mnuC(0)");
    }

    void compareBlocks()
    {
        Window window;
        window.turnTo(8);
        auto *source = window.source();
        source->setText(u"<widget class=\"text\" name=\"a\"><widget class=\"image\" name=\"b\">"_s);
        window.choose("mnuVCopy");
        QCOMPARE(QApplication::clipboard()->text(), u"text[*]a\r\nimage[*]b\r\n"_s);
        QApplication::clipboard()->setText(u"text[*]a\r\nno row\nimage[*]b[*]c\n"_s);
        window.choose("mnuVPaste");
        auto *comparison = window.find<QGroupBox>("frBc");
        QVERIFY(comparison->isVisible());
        QCOMPARE(window.shown("LvBlock2"), u"text | a\nimage | b\n"_s);
        QVERIFY(!comparison->geometry().intersects(window.find<ListView>("lvBlock")->geometry()));
        QTest::mouseDClick(comparison, Qt::LeftButton, {}, QPoint(60, 5));
        QVERIFY(!comparison->isVisible());
    }
};

WINDOW_TEST_MAIN(TestCommands)
#include "tst_commands.moc"
