#include "app/WindowFixture.h"

#include "app/ThemeEditing.h"
#include "app/ThemeNames.h"

#include <QSlider>
#include <QToolButton>

using namespace quillmere;

namespace {

QByteArray windowAt(int left)
{
    return "<interface>\n<widget class=\"window\" name=\"w\">\n<property>\n<rect>[" +
           QByteArray::number(left) +
           ",0,100,50]</rect>\n<backcolor>[lamp,lamp,lamp]</backcolor>\n</property>\n</widget>\n"
           "</interface>\n";
}

} // namespace

class TestChanges : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<Window>();
        m_window->write("theme/theme.xml", "<theme><config><file_widget>widget.xml</file_widget>"
                                           "<file_color>color.xml</file_color></config></theme>");
        m_window->write("theme/widget.xml", "<widget class=\"window\" name=\"one\"/><widget class=\"window\" "
                                            "name=\"two\"/>");
        m_window->write("theme/color.xml", "<color name=\"lamp\">#ff0000</color>");
        m_window->write("theme/one.xml", windowAt(0));
        m_window->write("theme/two.xml", windowAt(0));
        m_window->openTheme();
        m_button = m_window->find<QToolButton>("cmdShowChanges");
    }
    void cleanup() { m_window.reset(); }

    // A command on the open text: the picture moved by ten pixels, which changes two stripes of it.
    void ofTheOpenText()
    {
        m_window->openDocument("theme/one.xml");
        QVERIFY(!m_button->isVisible());
        m_window->prompts.expectInput(u"Widget Porition"_s, u"Input distance"_s, u"10"_s);
        m_window->choose("mnuTD(1)");
        QVERIFY(m_button->isVisible());
        m_button->click();
        QWidget *dialog = dialogNamed("frmChanges");
        QTRY_COMPARE(rowsAsText(childOf<ListView>(*dialog, "lvChanges")->model()), u"one | 1000\n"_s);
        QVERIFY(!childOf<QPushButton>(*dialog, "cmdTakeBack")->isVisible());
        auto *slider = childOf<QSlider>(*dialog, "sldBlend");
        QVERIFY(!slider->isEnabled());
        childOf<QAbstractButton>(*dialog, "optBlend")->click();
        QVERIFY(slider->isEnabled());
        m_window->source()->undo();
        QVERIFY(!m_button->isVisible());
    }

    // Of windows that were written those without a tick get their bytes back, and no others. A catalogue that
    // is written with them, and loaded again, leaves the colours they had before.
    void ofFiles()
    {
        ThemeEdit edit;
        for (const char *name : {"theme/one.xml", "theme/two.xml"}) {
            const QString text = QString::fromLatin1(windowAt(0));
            const qint32 at = qint32(text.indexOf(u"[0,"_s)) + 1;
            QVERIFY(edit.replace(m_window->path(name), text, {at, at + 1}, u"30"_s));
        }
        QVERIFY(edit.replace(m_window->path("theme/color.xml"), u"<color name=\"lamp\">#ff0000</color>"_s,
                             {0, 0}, u"\n"_s));
        auto *editing = m_window->skin->findChild<ThemeEditing *>();
        QVERIFY(editing->apply(edit));
        QCOMPARE(m_window->read("theme/two.xml"), windowAt(30));
        m_button->click();
        QWidget *dialog = dialogNamed("frmChanges");
        QAbstractItemModel *rows = childOf<ListView>(*dialog, "lvChanges")->model();
        QTRY_COMPARE(rowsAsText(rows), u"* one | 3000\n* two | 3000\n"_s);
        auto *takeBack = childOf<QPushButton>(*dialog, "cmdTakeBack");
        QVERIFY(!takeBack->isEnabled());
        rows->setData(rows->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        QVERIFY(takeBack->isEnabled());
        ThemeEdit meanwhile;
        const QString text = QString::fromLatin1(windowAt(30));
        const qint32 at = qint32(text.indexOf(u"[30,"_s)) + 1;
        QVERIFY(meanwhile.replace(m_window->path("theme/one.xml"), text, {at, at + 2}, u"60"_s));
        QVERIFY(editing->apply(meanwhile));
        takeBack->click();
        QCOMPARE(m_window->read("theme/one.xml"), windowAt(60));
        QCOMPARE(m_window->read("theme/two.xml"), windowAt(0));
    }

    // What one window was taken back of stays to be shown, and undone, in the others.
    void theRest()
    {
        ThemeEdit edit;
        const QString text = QString::fromLatin1(windowAt(0));
        const qint32 at = qint32(text.indexOf(u"[0,"_s)) + 1;
        for (const char *name : {"theme/one.xml", "theme/two.xml"})
            QVERIFY(edit.replace(m_window->path(name), text, {at, at + 1}, u"30"_s));
        QVERIFY(m_window->skin->findChild<ThemeNames *>()->changes.make(edit, {}, u"Undo"_s));
        m_button->click();
        QAbstractItemModel *rows = childOf<ListView>(*dialogNamed("frmChanges"), "lvChanges")->model();
        rows->setData(rows->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        childOf<QPushButton>(*dialogNamed("frmChanges"), "cmdTakeBack")->click();
        QCOMPARE(m_window->read("theme/two.xml"), windowAt(0));
        m_button->click();
        rows = childOf<ListView>(*dialogNamed("frmChanges"), "lvChanges")->model();
        QTRY_COMPARE(rowsAsText(rows), u"* one | 3000\n"_s);
        m_window->find<QAction>("mnuUndoRename")->trigger();
        QCOMPARE(m_window->read("theme/one.xml"), windowAt(0));
        QCOMPARE(m_window->read("theme/two.xml"), windowAt(0));
        QVERIFY(!m_button->isVisible());
    }

    // Ctrl+Z is of the open window alone, and says so; what is left can still be undone.
    void undoneInTheBox()
    {
        m_window->openDocument("theme/one.xml");
        ThemeEdit edit;
        const QString shown = m_window->source()->text(), text = QString::fromLatin1(windowAt(0));
        for (const auto &[name, of] : {std::pair("theme/one.xml", shown), std::pair("theme/two.xml", text)}) {
            const qint32 at = qint32(of.indexOf(u"[0,"_s)) + 1;
            QVERIFY(edit.replace(m_window->path(name), of, {at, at + 1}, u"30"_s));
        }
        QVERIFY(m_window->skin->findChild<ThemeNames *>()->changes.make(edit, {}, u"Undo Both"_s));
        m_window->source()->undo();
        QVERIFY(m_window->skin->statusBar()->currentMessage().contains(u"\"Undo Both\" in the Tool menu"_s));
        m_window->find<QAction>("mnuUndoRename")->trigger();
        QCOMPARE(m_window->source()->text(), shown);
        QCOMPARE(m_window->read("theme/two.xml"), windowAt(0));
    }

private:
    std::unique_ptr<Window> m_window;
    QToolButton *m_button = nullptr;
};

WINDOW_TEST_MAIN(TestChanges)
#include "tst_changes.moc"
