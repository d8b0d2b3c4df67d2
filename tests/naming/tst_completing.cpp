#include "app/EditedTheme.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHelpEvent>
#include <QImage>
#include <QWindow>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

// The source of a window that is open, typed in with real keys: they go where the window system sends them,
// to the list of completions while it is open.
class TypedWindow : public Window
{
public:
    TypedWindow()
    {
        openAll(*this);
        files.write(u"theme/image.xml"_s,
                    "<image id=\"Logo\">logo.png</image><image id=\"big_logo\">none.png</image>"
                    "<image id=\"back\">../back.png</image>");
        files.write(u"theme/font.xml"_s, "<font><name>small</name><file>s.ttf</file><size>12</size></font>");
        files.write(u"theme/color.xml"_s,
                    "<color name=\"navy\">#000080</color><color name=\"red\">#FF0000</color>");
        files.write(
            u"theme/theme.xml"_s,
            "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image><file_font>"
            "font.xml</file_font><file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n>"
            "</config>");
        QImage picture(40, 30, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        picture.save(files.path(u"theme/logo.png"_s));
        picture.save(files.path(u"back.png"_s));
        skin->openTheme(files.folder());
        skin->openTheme(files.path(u"theme"_s));
        find<QTabBar>("TabStrip4")->setCurrentIndex(8);
        source = find<SourceBox>("txtSnippet");
        // The names are listed once their list opens.
        set(u"<img>|"_s);
        if (!QTest::qWaitFor([this] {
                keys(u"{Ask}"_s);
                return list() != nullptr;
            }))
            qFatal("No list of images opens");
        keys(u"{Esc}"_s);
    }

    // "|" is the caret.
    void set(QString text)
    {
        const qsizetype caret = text.lastIndexOf(u'|');
        source->setText(text.remove(caret, 1));
        source->setFocus();
        source->select(caret, 0);
    }
    QString get() const { return source->text().insert(source->selectionStart(), u'|'); }
    void keys(const QString &script)
    {
        static const QHash<QString, QKeyCombination> named = {{u"Tab"_s, Qt::Key_Tab},
                                                              {u"Enter"_s, Qt::Key_Return},
                                                              {u"Esc"_s, Qt::Key_Escape},
                                                              {u"Down"_s, Qt::Key_Down},
                                                              {u"Up"_s, Qt::Key_Up},
                                                              {u"Left"_s, Qt::Key_Left},
                                                              {u"Home"_s, Qt::Key_Home},
                                                              {u"Back"_s, Qt::Key_Backspace},
                                                              {u"Undo"_s, Qt::CTRL | Qt::Key_Z},
                                                              {u"Tell"_s, Qt::CTRL | Qt::Key_F1},
                                                              {u"Ask"_s, Qt::CTRL | Qt::Key_Space},
                                                              {u"Ask too"_s, Qt::ALT | Qt::Key_Slash}};
        for (qsizetype at = 0; at < script.size(); ++at) {
            QWindow *const window = skin->windowHandle();
            if (script[at] != u'{') {
                QTest::keyClick(window, script[at].toLatin1());
                continue;
            }
            const qsizetype end = script.indexOf(u'}', at);
            const QKeyCombination key = named.value(script.sliced(at + 1, end - at - 1));
            QTest::keyClick(window, key.key(), key.keyboardModifiers());
            at = end;
        }
    }
    // nullptr where none is open.
    static QAbstractItemView *list()
    {
        auto *open = qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget());
        return open && open->objectName() == u"lvCompletion" ? open : nullptr;
    }
    static QString entries()
    {
        QStringList names;
        for (int row = 0; list() && row < list()->model()->rowCount(); ++row)
            names.append(list()->model()->index(row, 0).data().toString());
        return names.join(u' ');
    }

    // What the hover says; empty where none is shown.
    QString told() const
    {
        const auto text = [this](const char *name) { return find<QLabel>(name)->text(); };
        if (!find<QWidget>("frHover")->isVisible())
            return {};
        const QString look = find<QLabel>("picHover")->isHidden() ? QString() : u" [picture]"_s;
        return QString(text("lblHoverTitle") + look + u'\n' + text("lblHoverText")).trimmed();
    }

    SourceBox *source;
};

} // namespace

class TestCompleting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_window = std::make_unique<TypedWindow>(); }
    void cleanupTestCase() { m_window.reset(); }
    void keys_data();
    void keys();
    void entriesTell();
    void mouse();
    void turnedOff();
    void longLine();
    void largeText();
    void shortcut();
    void hovers_data();
    void hovers();
    void hoverOfTheMouse();
    void hoverSaysEachThingOnce();

private:
    std::unique_ptr<TypedWindow> m_window;
};

void TestCompleting::keys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("offered"); // empty where the list is closed
    const auto row = [](const char *name, const char *text, const char *keys, const char *after,
                        const char *offered) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(keys) << QString::fromUtf8(after)
                            << QString::fromUtf8(offered);
    };
    row("opens by itself", "<img>|</img>", "lo", "<img>lo|</img>", "Logo big_logo");
    row("narrows", "<img>|</img>", "big", "<img>big|</img>", "big_logo");
    row("widens", "<img>|</img>", "big{Back}{Back}{Back}", "<img>|</img>", "back big_logo Logo");
    row("nothing fits", "<img>|</img>", "xx", "<img>xx|</img>", "");
    row("Tab takes", "<img>|</img>", "lo{Tab}", "<img>Logo|</img>", "");
    row("Tab takes the next", "<img>|</img>", "lo{Down}{Tab}", "<img>big_logo|</img>", "");
    row("Tab without a list", "a|", "{Tab}", "a    |", "");
    row("Enter after letters", "<img>|</img>", "lo{Enter}", "<img>Logo|</img>", "");
    row("Enter after an arrow", "<img>|</img>", "{Ask}{Down}{Enter}", "<img>big_logo|</img>", "");
    row("Enter at once", "<img>|</img>", "{Ask}{Enter}", "<img>\r\n|</img>", "");
    row("Enter after one letter", "<img>|</img>", "l{Enter}", "<img>l\r\n|</img>", "");
    row("Esc", "<img>|</img>", "l{Esc}og", "<img>log|</img>", "");
    row("Esc is for one word", "<backcolor>[|]</backcolor>", "n{Esc}a,n", "<backcolor>[na,n|]</backcolor>",
        "navy");
    row("asked after Esc", "<img>|</img>", "l{Esc}{Ask}", "<img>l|</img>", "Logo big_logo");
    row("asked otherwise", "<img>|</img>", "{Ask too}b", "<img>b|</img>", "back big_logo");
    row("not by itself between elements", "<property>|</property>", "im", "<property>im|</property>", "");
    row("asked between elements", "<property>|</property>", "im{Ask}{Tab}",
        "<property><imgs>|</imgs></property>", "");
    row("comment", "<!-- <img>| -->", "l{Ask}", "<!-- <img>l| -->", "");
    row("deleting opens nothing", "<img>lo|</img>", "{Back}", "<img>l|</img>", "");
    row("leaving the word", "<img>|</img>", "l{Home}", "|<img>l</img>", "");
    row("element and value", "<property>|</property>", "<fon{Tab}sm{Tab}",
        "<property><font>small|</font></property>", "");
    row("one step", "<img>|</img>", "lo{Tab}x{Undo}{Undo}", "<img>lo|</img>", "");
    row("block", "<children>|</children>", "<wi{Tab}te{Tab}",
        "<children><widget class=\"text|\" name=\"\"></widget></children>", "");
}

void TestCompleting::keys()
{
    QFETCH(QString, text);
    QFETCH(QString, keys);
    m_window->set(text);
    m_window->keys(keys);
    QTEST(m_window->get(), "after");
    QTEST(TypedWindow::entries(), "offered");
    m_window->keys(u"{Esc}"_s);
}

void TestCompleting::entriesTell()
{
    const auto told = [&](const char *text) {
        m_window->set(QString::fromUtf8(text));
        m_window->keys(u"{Ask}"_s);
        QStringList names;
        for (int row = 0; row < TypedWindow::list()->model()->rowCount(); ++row)
            names.append(TypedWindow::list()->model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        m_window->keys(u"{Esc}"_s);
        return names.join(u'|');
    };
    QCOMPARE(told("<forecolor>[|]</forecolor>"), u"navy, #000080|red, #FF0000"_s);
    QCOMPARE(told("<font>|</font>"), u"small, s.ttf, 12 pixels"_s);
    QTRY_COMPARE(told("<string>|</string>"), u"Yes, Ja"_s);
    // Nothing from outside of the theme is read.
    QTRY_COMPARE(told("<img>|</img>"),
                 u"back, This file is outside the theme.|big_logo, There is no such file.|"
                 "Logo, 40 × 30"_s);
}

void TestCompleting::mouse()
{
    m_window->set(u"<img>|</img>"_s);
    m_window->keys(u"{Ask}"_s);
    QAbstractItemView *list = TypedWindow::list();
    QVERIFY(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(1, 0)).center());
    QCOMPARE(m_window->get(), u"<img>big_logo|</img>"_s);
    QVERIFY(!TypedWindow::list());
}

void TestCompleting::turnedOff()
{
    m_window->choose("mnuCompletion");
    m_window->set(u"<img>|</img>"_s);
    m_window->keys(u"lo"_s);
    QVERIFY(!TypedWindow::list());
    m_window->keys(u"{Ask}g"_s);
    QCOMPARE(TypedWindow::entries(), u"Logo big_logo"_s);
    m_window->keys(u"{Esc}"_s);
    m_window->start();
    QVERIFY(!m_window->find<QAction>("mnuCompletion")->isChecked());
    m_window = std::make_unique<TypedWindow>();
}

// Of a very long line the middle stands in the box as one character.
void TestCompleting::longLine()
{
    const QString text = u"%1\r\n%2<img>%3|</img>"_s.arg(QString(30000, u'x'), QString(30000, u'y'));
    m_window->set(text.arg(QString()));
    m_window->keys(u"lo{Tab}"_s);
    QCOMPARE(m_window->get(), text.arg(u"Logo"_s));
}

// A key does not wait for a text of megabytes to be read; the list comes when typing pauses.
void TestCompleting::largeText()
{
    m_window->set(QStringLiteral("<a>\r\n").repeated(400'000) + QStringLiteral("<img>|</img>"));
    m_window->keys(QStringLiteral("b"));
    QVERIFY(!TypedWindow::list());
    QTRY_COMPARE(TypedWindow::entries(), QStringLiteral("back big_logo"));
    m_window->keys(QStringLiteral("{Tab}"));
    QVERIFY(m_window->get().endsWith(QStringLiteral("<img>back|</img>")));
}

void TestCompleting::shortcut()
{
    m_window->set(QStringLiteral("<img>|</img>"));
    m_window->keys(QStringLiteral("{Ask}"));
    QTest::keyClick(m_window->skin->windowHandle(), Qt::Key_H, Qt::ControlModifier);
    QVERIFY(!TypedWindow::list());
    QTRY_COMPARE(QApplication::activeWindow()->objectName(), QStringLiteral("frmReplace"));
    QApplication::activeWindow()->close();
    m_window->skin->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window->skin.get()));
}

void TestCompleting::hovers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *name, const char *text, const char *told) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(told);
    };
    row("image", "<img>Lo|go</img>", "Image Logo [picture]\n40 × 30 pixels, %1 bytes\nlogo.png");
    row("missing file", "<img>big_logo|</img>", "Image big_logo\nThere is no such file.\nnone.png");
    row("file outside", "<img>|back</img>", "Image back\nThis file is outside the theme.\n../back.png");
    row("unknown image", "<img>log|</img>", "Image log\nThere is no such image.\nNearest: Logo");
    row("colour", "<backcolor>[red,nav|y]</backcolor>", "Colour navy [picture]\n#000080");
    row("code", "<backcolor>[#00FF7|F]</backcolor>", "Colour #00FF7F [picture]\n#00FF7F");
    row("unknown colour", "<backcolor>[pink|]</backcolor>",
        "Colour pink\nThis is neither a colour of the catalogue nor a code.");
    row("font", "<font>|small</font>", "Font small\n12 pixels, normal\ns.ttf\nThere is no such file.");
    row("string", "<string>Yes|</string>", "String Yes\nEnglish: Ja\nx: (not translated)");
    row("unknown string", "<string>Yess|</string>",
        "String Yess\nNo language has this string.\nNearest: Yes");
    row("markup is text", "<string>&lt;b&gt;|</string>", "String &lt;b&gt;\nNo language has this string.");
    row("block",
        "<widget class=\"a\" name=\"o\"><rect>[5,5,90,90]</rect><children><widget class=\"text\" name=\"n|\">"
        "<rect>[1,2,3,4]</rect>",
        "Block n\nClass: text\nRect: 1, 2, 3 × 4\nOn the screen: 6, 7, 3 × 4");
    row("anywhere in a block", "<widget class=\"a\"><property>|<mode>",
        "Block without a name\nClass: a\nNo rect that can be read.");
    row("nowhere", "<interface>|", "");
    row("comment", "<!-- <widget name=\"a\"> <img>Logo|</img> -->", "");
}

void TestCompleting::hovers()
{
    QFETCH(QString, text);
    QFETCH(QString, told);
    const qint64 bytes = QFileInfo(m_window->files.path(u"theme/logo.png"_s)).size();
    m_window->set(text);
    m_window->keys(u"{Tell}"_s);
    QTRY_COMPARE(m_window->told(), told.contains(u'%') ? told.arg(bytes) : told);
    for (const char *label : {"lblHoverTitle", "lblHoverText"})
        QCOMPARE(m_window->find<QLabel>(label)->textFormat(), Qt::PlainText);
    m_window->keys(u"{Left}"_s);
    QCOMPARE(m_window->told(), QString());
}

void TestCompleting::hoverOfTheMouse()
{
    m_window->set(u"|\r\n<img>Logo</img>"_s);
    const auto rest = [&](int position, int right) {
        const QPoint point = m_window->source->placeOf(position).center() + QPoint(right, 0);
        QHelpEvent event(QEvent::ToolTip, point, m_window->source->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_window->source->viewport(), &event);
        return m_window->told().section(u'\n', 0, 0).section(u' ', 0, 1);
    };
    QCOMPARE(rest(8, 2), u"Image Logo"_s);
    QTest::mouseMove(m_window->source->viewport(), m_window->source->placeOf(3).center());
    QTRY_COMPARE(m_window->told(), QString());
    QCOMPARE(rest(3, 2), QString());
    QCOMPARE(rest(m_window->source->text().size(), 20), QString());
}

// With the problems that the checks find a moment later.
void TestCompleting::hoverSaysEachThingOnce()
{
    const auto told = [&](const char *text, const QString &problem) {
        m_window->set(QString::fromLatin1(text));
        (void)QTest::qWaitFor([&] {
            m_window->keys(u"{Tell}"_s);
            return m_window->told().contains(problem);
        });
        return m_window->told();
    };
    QCOMPARE(told("<img>log|</img>", u"\"log\""_s), u"Image log\nThere is no image \"log\"\nNearest: Logo"_s);
    QCOMPARE(told("<string>Yess|</string>", u"not in"_s),
             u"String Yess\nNo language has this string.\n1 string not in \"English\": \"Yess\"\n1 string "
             u"not in \"x\": \"Yess\"\n"
             "Nearest: Yes"_s);
}

int main(int argc, char **argv)
{
    return runWindowTest<TestCompleting>(argc, argv);
}
#include "tst_completing.moc"
