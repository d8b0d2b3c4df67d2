#include "app/WindowFixture.h"

#include "controls/ListView.h"

#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// A window on the Color tab of a theme with these colours: NAME=CODE, divided by blanks.
class ColourWindow : public Window
{
public:
    explicit ColourWindow(const QString &colours)
    {
        files.write(u"theme/theme.xml"_s, "<config><file_color>color.xml</file_color></config>");
        QString text;
        for (const QString &colour : colours.split(u' '))
            text +=
                u"<color name=\"%1\">%2</color>"_s.arg(colour.section(u'=', 0, 0), colour.section(u'=', 1));
        files.write(u"theme/color.xml"_s, text.toUtf8());
        skin->openTheme(files.path(u"theme"_s));
        find<QTabBar>("TabStrip4")->setCurrentIndex(3);
        list = find<ListView>("lvColor");
    }

    void click(int row) const { QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place(row)); }
    void doubleClick(int row) const
    {
        click(row);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place(row));
    }
    QString rows() const { return rowsAsText(list->model()); }
    QString text(const char *box) const { return find<QLineEdit>(box)->text(); }
    QString colourOf(const char *swatch) const
    {
        return find<QWidget>(swatch)->grab().toImage().pixelColor(5, 5).name();
    }
    QString picked() const
    {
        return QStringList{text("R_Value"), text("G_Value"), text("B_Value"),
                           text("txtName"), text("txtCode"), colourOf("Show_Selected")}
            .join(u' ');
    }

    ListView *list;

private:
    QPoint place(int row) const { return list->visualRect(list->model()->index(row, 1)).center(); }
};

} // namespace

class TestColours : public QObject
{
    Q_OBJECT

private slots:
    void catalogue()
    {
        ColourWindow window(u"a=#102030 b=#00FF00 c=#fff d=#0000FF e=#112233"_s);
        QCOMPARE(window.find<QGroupBox>("frColor")->title(), window.path("theme/color.xml"));
        QCOMPARE(window.skin->GetColor(u" b\t"_s) + window.skin->GetColor(u"B"_s), u"#00FF00"_s);
        window.click(0);
        QCOMPARE(window.colourOf("Picture2"), u"#102030"_s);
        window.click(2);
        QCOMPARE(window.colourOf("Picture2"), u"#102030"_s);
        auto *rows = window.list->model();
        const QImage cell =
            window.list->viewport()->grab(window.list->visualRect(rows->index(1, 2))).toImage();
        QCOMPARE(cell.pixelColor(10, cell.height() / 2).name(), u"#00ff00"_s); // the chip

        QTest::keyClick(window.list, Qt::Key_Delete);
        for (int row : {0, 1})
            rows->setData(rows->index(row, 0), Qt::Checked, Qt::CheckStateRole);
        window.choose("mnuCHapus");
        QCOMPARE(window.rows(), u" | d | #0000FF\n | e | #112233\n"_s);
        window.expectSave(false);
        window.choose("mnuCSave");
        window.click(0);
        QTest::keyClick(window.list, Qt::Key_Delete);
        window.choose("mnuCOpen");
        QCOMPARE(window.rows(), u" | d | #0000FF\n | e | #112233\n"_s);
    }

    void faults()
    {
        ColourWindow window(u"bad=#12345G short=#FFF"_s);
        window.prompts.expectMessage(
            u"Quillmere"_s,
            u"\"#12345G\" is not a colour: after its first character a code has six hexadecimal digits."_s);
        window.click(0);
        QVERIFY(!window.skin->findChild<QDialog *>(u"frmcolor"_s));
        window.doubleClick(1);
        QCOMPARE(window.text("txtName") + window.text("txtCode"), u"short#FFF"_s);
        QVERIFY(!window.find<QDialog>("frmcolor")->isVisible());

        Window empty;
        empty.prompts.expectMessage(
            u"Simpan File"_s, u"There is no colour file to save to: open a theme that names one first."_s);
        empty.choose("mnuCSave");
    }

    void convertSource()
    {
        ColourWindow window(u"Red=#FF0000 red2=#ff0000"_s);
        window.turnTo(8);
        auto *source = window.source();
        const QString given = u"<a>\r\n<b> [red,x,red2]</b>\r\n<b>[x,Red,RED,y]</b><b>[Red]</b>"_s;
        source->setText(given);
        window.choose("mnuColCode(1)");
        QCOMPARE(source->text(),
                 u"<a>\r\n<b>[#FF0000,x,#ff0000]</b>\r\n<b>[x,#FF0000,RED,y]</b><b>[Red]</b>"_s);
        source->undo();
        QCOMPARE(source->text(), given);
        source->redo();
        window.choose("mnuColCode(2)");
        QCOMPARE(source->text(), u"<a>\r\n<b>[Red,x,Red]</b>\r\n<b>[x,Red,RED,y]</b><b>[Red]</b>"_s);
    }

    void pickerFollows()
    {
        ColourWindow window(u"a=#ff8000 b=#102030"_s);
        window.doubleClick(0);
        auto *dialog = window.find<QDialog>("frmcolor");
        QVERIFY(dialog->isVisible() && !dialog->isModal());
        QCOMPARE(window.picked(), u"255 128 0 a #ff8000 #ff8000"_s);
        window.find<QScrollBar>("Adjust_B")->setValue(7);
        window.skin->activateWindow();
        dialog->activateWindow();
        QCOMPARE(window.picked(), u"255 128 7 a #FF8007 #ff8007"_s);
        window.doubleClick(1);
        QCOMPARE(window.picked(), u"16 32 48 b #102030 #102030"_s);

        auto *red = window.find<QLineEdit>("R_Value");
        auto *bar = window.find<QScrollBar>("Adjust_R");
        red->selectAll();
        QTest::keyClicks(red, u"x2-5 5"_s);
        QCOMPARE(window.picked(), u"255 32 48 b #FF2030 #ff2030"_s);
        QCOMPARE(bar->value(), 255);
        QCOMPARE(window.colourOf("R_In_Colour"), u"#ff0000"_s);
        red->setText(u"25"_s);
        window.prompts.expectMessage(u"Can't Set Red"_s, u"Invalid value. Range must be within (0-255)."_s);
        QTest::keyClicks(red, u"6"_s);
        QCOMPARE(window.picked(), u"25 32 48 b #192030 #192030"_s);
        QCOMPARE(red->cursorPosition(), 2);
        QVERIFY(dialog->windowFlags() & Qt::WindowStaysOnTopHint);

        // Up is more, by key and by a press above the handle.
        QTest::keyClick(bar, Qt::Key_Up);
        QCOMPARE(bar->value(), 26);
        QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, bar->height() / 3));
        QVERIFY(bar->value() > 26);

        auto *palette = window.find<QWidget>("Col_Palette");
        const QImage picture = palette->grab().toImage();
        const auto code = [&](const QPoint &at) { return picture.pixelColor(at).name().toUpper(); };
        const auto drag = [&](const QPoint &to, Qt::MouseButton held) {
            QMouseEvent move(QEvent::MouseMove, to, palette->mapToGlobal(to), Qt::NoButton, held, {});
            QApplication::sendEvent(palette, &move);
        };
        const QPoint first(40, 60), second(200, 150);
        QTest::mousePress(palette, Qt::LeftButton, {}, first);
        QCOMPARE(window.text("txtCode"), code(first));
        drag(second, Qt::LeftButton);
        QCOMPARE(window.text("txtCode"), code(second));
        drag(first, Qt::RightButton);
        QTest::mouseClick(palette, Qt::RightButton, {}, first);
        QCOMPARE(window.text("txtCode"), code(second));
    }

    void pickerWrites()
    {
        const QString name(100000, u'n');
        ColourWindow window(QString(name + u"=#102030 b=#405060"));
        window.doubleClick(0);
        window.find<QScrollBar>("Adjust_R")->setValue(255);
        window.find<QPushButton>("cmbTambah")->click();
        QVERIFY(window.rows() == u" | %1 | #102030\n | b | #405060\n | %1 | #FF2030\n"_s.arg(name));
        window.click(1);
        window.find<QLineEdit>("txtName")->setText(u"x"_s);
        auto *edit = window.find<QDialog>("frmcolor")->findChild<QPushButton *>(u"Command1"_s);
        edit->click();
        QVERIFY(window.rows().contains(u" | x | #FF2030\n"_s));
        QCOMPARE(window.colourOf("Picture2"), u"#ff2030"_s);
        const QString before = window.rows();
        window.list->setCurrentIndex({});
        edit->click();
        QVERIFY(window.rows() == before);
    }
};

WINDOW_TEST_MAIN(TestColours)
#include "tst_colours.moc"
