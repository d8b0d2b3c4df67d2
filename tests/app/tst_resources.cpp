#include "app/WindowFixture.h"

#include "catalogues/forms/PictureBox.h"
#include "controls/ListView.h"

#include <QClipboard>
#include <QComboBox>
#include <QImageIOPlugin>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSlider>
#include <QtPlugin>

#include <utility>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const QString kExample = QStringLiteral(EXAMPLES_FOLDER "/aurora/theme");
const QString kFont = u"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"_s;

// A click on the row with this sub-item 1.
void click(const Window &window, int tab, const char *listName, const char *name)
{
    window.turnTo(tab);
    auto *list = window.find<ListView>(listName);
    const auto *rows = list->model();
    click(list, rows->match(rows->index(0, 1), Qt::DisplayRole, QLatin1String(name)).value(0).row());
}

} // namespace

// Takes for a drawing what begins like one, as an installed plugin would, and notes that it was asked to.
class DrawingPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "drawing.json")

public:
    Capabilities capabilities(QIODevice *device, const QByteArray &format) const override
    {
        const bool is = format == "svg" || (format.isEmpty() && device && device->peek(4) == "<svg");
        asked += is;
        return is ? CanRead : Capabilities();
    }
    QImageIOHandler *create(QIODevice *, const QByteArray &) const override { return nullptr; }

    static inline int asked = 0;
};
Q_IMPORT_PLUGIN(DrawingPlugin)

class TestResources : public QObject
{
    Q_OBJECT

public:
    // The system's own plugin for drawings, where it has one, would be asked before ours.
    TestResources() { QCoreApplication::setLibraryPaths({}); }

private slots:
    void images()
    {
        Window window;
        window.choose("mnuImgSave"); // an empty list: nothing asked, nothing written
        window.choose("mnuImgRubah");
        const QString theme = window.path("theme");
        const QString catalogue = u"theme/images/image.xml"_s;
        window.write("theme/theme.xml", "<config><file_image>images/image.xml</file_image></config>");
        window.files.write(catalogue,
                           "<image id=\"in\">in.png</image><image id=\"out\">../../out.png</image>");
        for (const char *name : {"theme/images/in.png", "out.png"})
            QVERIFY(QFile::copy(kExample + u"/images/back/bg_aurora.png",
                                window.files.path(QLatin1String(name))));
        window.skin->openTheme(theme);

        auto *list = window.find<ListView>("lvImage");
        auto *file = window.find<QLineEdit>("txtFile");
        auto *id = window.find<QLineEdit>("txtID");
        auto *facts = window.find<QLabel>("lblPicture");
        const auto shown = [&](const char *name) { return window.find<QWidget>(name)->isVisible(); };
        const int fullHeight = window.find<QWidget>("frYt(2)")->height() - 60;

        // A click shows the picture, unless it lies outside of the theme, and what to change.
        click(window, 2, "lvImage", "out");
        QCOMPARE(facts->text(), u"This file is outside the theme."_s);
        click(window, 2, "lvImage", "in");
        QVERIFY(facts->text().startsWith(u"1280 × 720 pixels\n"_s));
        QVERIFY(shown("Picture1") && !shown("Frame3") && list->height() < fullHeight);
        QCOMPARE(QString(file->text() + u' ' + id->text()), QString(theme + u"/images/in.png in"));

        // Renaming keeps the file.
        file->setText(u"other.png"_s);
        id->setText(u"sky"_s);
        window.find<QPushButton>("cmdImgRubah")->click();
        QVERIFY(!shown("Picture1") && list->height() == fullHeight);
        QCOMPARE(window.skin->GetImg(u"sky"_s), QString(theme + u"/images/in.png"));

        // A file is chosen; its ID is taken, then it is not.
        window.write("theme/images/sky.jpeg");
        window.choose("mnuImgTambah");
        QVERIFY(shown("Picture1") && shown("Frame3"));
        auto *files = window.find<QListView>("File2");
        window.find<QAbstractItemView>("DirImage")->setProperty("path", QString(theme + u"/images"));
        const QPoint entry = files->visualRect(files->model()->index(2, 0)).center();
        QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, entry);
        QTest::mouseDClick(files->viewport(), Qt::LeftButton, {}, entry);
        QCOMPARE(facts->text(), u"This is not a picture."_s);
        QCOMPARE(QString(file->text() + u' ' + id->text()), QString(theme + u"/images/sky.jpeg sky."));
        id->setText(u"sky"_s);
        window.prompts.expectMessage(u"Duplikat ID"_s, u"Sudah ada ID sky"_s);
        window.find<QPushButton>("cmdimgTambah")->click();
        QCOMPARE(list->selectedRow(), 0);
        id->setText(u"SKY"_s);
        window.find<QPushButton>("cmdimgTambah")->click();

        for (const bool answer : {false, true}) {
            window.prompts.expectQuestion(u"Simpan File"_s, u"Benar mau menyimpan file widget image?"_s,
                                          answer);
            window.choose("mnuImgSave");
            QCOMPARE(window.files.read(catalogue).endsWith(">sky.jpeg</image>\r\n</images>\r\n"), answer);
        }
    }

    void drawings_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("says");
        QTest::newRow("drawing") << u"a.svg"_s << u"Drawings are shown in the preview only."_s;
        QTest::newRow("called a picture") << u"a.png"_s << u"This is not a picture."_s;
        QTest::newRow("no suffix") << u"a"_s << u"This is not a picture."_s;
    }

    // A drawing can refer to itself, to pipes, and to files outside; nothing here reads it.
    void drawings()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, says);
        const TestFiles files;
        files.write(name, "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
        QImageReader(files.path(name)).format(); // asks whoever there is
        QVERIFY(std::exchange(DrawingPlugin::asked, 0) > 0);
        PictureBox box;
        box.resize(100, 100);
        QCOMPARE(box.showFile(files.path(name)), says);
        QCOMPARE(DrawingPlugin::asked, 0);
    }

    // A font that can be read is shown in the letters of the theme's languages; of any other it is said why
    // not.
    void fonts()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_font>font/font.xml</file_font>"
                                        "<file_i18n>i18n.xml</file_i18n></config>");
        window.write("theme/font/font.xml",
                     "<font><name>good</name><file>good.ttf</file><size>20</size></font>"
                     "<font><name>large</name><file>good.ttf</file><size>60</size></font>"
                     "<font><name>bad</name><file>bad.ttf</file></font><font><name>gone</name></font>");
        window.write("theme/font/bad.ttf", QByteArray("\0\1\0\0 and so on", 14));
        window.write("theme/i18n.xml", "<language id=\"ru\">ru.xml</language>");
        window.write("theme/ru.xml",
                     "<language name=\"ru\"><tran id=\"Yes\">\xd0\x94\xd0\xb0</tran></language>");
        if (!QFile::copy(kFont, window.path("theme/font/good.ttf")))
            QSKIP("no font to show");
        window.openTheme();
        const auto *sample = window.find<QLabel>("lblFontSample");
        const auto height = [&] { return sample->pixmap(Qt::ReturnByValue).height(); };
        click(window, 5, "lvFont", "good");
        QTRY_VERIFY_WITH_TIMEOUT(height() > 40, 20'000); // two lines
        const int small = height();
        click(window, 5, "lvFont", "large");
        QTRY_VERIFY_WITH_TIMEOUT(height() > 2 * small, 20'000);
        click(window, 5, "lvFont", "bad");
        QTRY_COMPARE_WITH_TIMEOUT(
            sample->text(),
            u"The font file \"bad.ttf\" cannot be read: it is damaged, or of a kind that receivers do not take."_s,
            20'000);
        click(window, 5, "lvFont", "gone");
        QTRY_COMPARE(sample->text(), u"The font names no file."_s);
    }

    void scansKeysAndPanel()
    {
        Window window;
        window.skin->openTheme(kExample);
        const auto checked = [&window](const char *list) {
            return rowsAsText(window.find<ListView>(list)->model()).count(u"* "_s);
        };
        window.choose("mnuSWidget");
        QCOMPARE(checked("lvImage"), window.model("lvImage")->rowCount() - 3);
        QApplication::clipboard()->setText(u"x WND_VOLUME, icon_clock_32"_s);
        window.choose("mnuSKernel");
        QCOMPARE(checked("lvImage"), window.model("lvImage")->rowCount() - 2);
        QCOMPARE(checked("LvWidget"), 1);
        click(window, 2, "lvImage", "video_sample");
        window.choose("mnuImgChe");
        QVERIFY(checked("LvWidget") > 1);

        const auto *keys = window.model("lvKeyMap");
        click(window, 6, "lvKeyGroup", "colour");
        QCOMPARE(rowsAsText(keys), u"red | 0x20\ngreen | 0x21\nyellow | 0x22\nblue | 0x23\n"_s);
        click(window, 6, "lvKeyGroup", "front");
        QCOMPARE(keys->rowCount(), 0);

        const auto panel = [&] {
            QString values;
            for (const char *name : {"txtPropHW", "txtPropU3", "txtPropTrans", "txtPropVol"})
                values += window.find<QLineEdit>(name)->text() + u'|';
            for (const char *name : {"cbPropLang", "cbPropTime", "cbPropSum", "cbProScrat", "cbPropSpdif"})
                values += window.find<QComboBox>(name)->currentText() + u'|';
            return QString(values + QString::number(window.find<QSlider>("sdPropVol")->value()));
        };
        const QString aurora = u"2.1|sample data|50|60|English|+1|On|rgb - RGB|raw - Bit stream|15"_s;
        QCOMPARE(panel(), aurora);

        // A theme without settings leaves them as they were; what does not fit is said, and the rest is
        // shown.
        window.write("theme/theme.xml", "<config></config>");
        window.openTheme();
        QCOMPARE(panel(), aurora);
        window.write("theme/default.xml",
                     "<group name=\"common\"><item name=\"time zone\" value=\"-12\"/><item name=\"volume\" "
                     "value=\"50\"/><group name=\"scart config\"><group name=\"x\">");
        window.openTheme();
        QCOMPARE(panel(), u"2.1|sample data|50|200|English|+12|On||raw - Bit stream|25"_s);
        QVERIFY(window.said().contains(u"Time zone \"-12\""_s));
    }
};

WINDOW_TEST_MAIN(TestResources)
#include "tst_resources.moc"
