#include "app/EditedTheme.h"

#include "app/Going.h"
#include "app/OpenDocument.h"
#include "app/ThemeEditing.h"
#include "app/ThemeNames.h"
#include "files/RunTimeError.h"
#include "files/TextFile.h"

#include <QStatusBar>

using namespace quillmere;

namespace {

const QByteArray kWindow = "<interface>\n <widget class=\"image\" name=\"a\"><img/>\n\n"
                           "\t<img>logo</img></widget>\n</interface>\n";

// A theme in which every kind of name is used, with its window "main" open.
void openNames(Window &window)
{
    const auto write = [&](const char *name, const QByteArray &bytes) {
        window.files.write(QStringLiteral("theme/") + QLatin1String(name), bytes);
    };
    write("theme.xml",
          "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
          "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n><file_font>font.xml</file_font>"
          "</config>");
    write("widget.xml", "<interface>\n<widget class=\"window\" style=\"default\" name=\"main\"/>\n"
                        "<widget class=\"window\" style=\"default\" name=\"other\"/>\n</interface>");
    write("main.xml", kWindow);
    write("other.xml", kWindow);
    write("image.xml", "<image id=\"icon\">i.png</image>\n<image id=\"logo\">l.png</image>");
    write("color.xml", "<color name=\"navy\">#000080</color>");
    write("font.xml", "<fonts><font><name>big</name><file>b.ttf</file><size>20</size></font></fonts>");
    write("lang.xml", "<language id=\"English\">en.xml</language>");
    write("en.xml",
          "<language name=\"English\"><tran id=\"No\">Nein</tran><tran id=\"Yes\">Ja</tran></language>");
    window.skin->openTheme(window.files.path(QStringLiteral("theme")));
    window.skin->openDocument(window.files.path(QStringLiteral("theme/main.xml")));
}

QString themeFile(const Window &window, const char *name)
{
    return window.files.path(QStringLiteral("theme/") + QLatin1String(name));
}

// Where one is: the tab, and there the row or the window with what is selected.
QString place(const Window &window)
{
    const auto *strip = window.find<QTabBar>("TabStrip4");
    QString text = strip->tabText(strip->currentIndex());
    const auto *list = qobject_cast<ListView *>(QApplication::focusWidget());
    if (text == u"Source")
        text += u' ' + QFileInfo(window.skin->findChild<OpenDocument *>()->path()).baseName() + u' ' +
                window.find<SourceBox>("txtSnippet")->textCursor().selectedText();
    else if (list)
        text += u' ' + list->objectName() + u' ' + QString::number(list->selectedRow());
    return text;
}

void press(const Window &window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : window.skin.get(), key, modifiers);
}

} // namespace

// What leads to the places of a theme and back, and what changes them.
class TestGoing : public QObject
{
    Q_OBJECT

private slots:
    void leadsToPlaces_data();
    void leadsToPlaces();
    void backAndForward();
    void editsWhatIsOpen();
    void refusesWhatChanged();
};

void TestGoing::leadsToPlaces_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *file, int number, const char *expected) {
        QTest::newRow(expected) << QString::fromLatin1(file) << number << QString::fromLatin1(expected);
    };
    row("image.xml", 1, "Image lvImage 1");
    row("color.xml", 0, "Color lvColor 0");
    row("font.xml", 0, "Font lvFont 0");
    row("lang.xml", 0, "Lang lvLang 0");
    row("en.xml", 1, "Lang LvBhs 1");
    row("widget.xml", 1, "Widget LvWidget 1");
    row("other.xml", -1, "Source other logo"); // where formatting has put the name
    row("main.xml", -1, "Source main logo");
}

void TestGoing::leadsToPlaces()
{
    QFETCH(QString, file);
    QFETCH(int, row);
    QFETCH(QString, expected);
    Window window;
    openNames(window);
    const QString path = themeFile(window, file.toLatin1());
    const QString content = file == u"main.xml" ? text(window) : LoadFile(path);
    const qint32 at = qint32(content.indexOf(QStringLiteral("logo")));
    window.skin->findChild<Going *>()->goTo(path, {at, at + 4}, row);
    QCOMPARE(place(window), expected);
}

void TestGoing::backAndForward()
{
    Window window;
    openNames(window);
    auto *strip = window.find<QTabBar>("TabStrip4");
    auto *going = window.skin->findChild<Going *>();
    strip->setCurrentIndex(8);
    const QString logo = QStringLiteral("logo");
    going->goTo(themeFile(window, "main.xml"),
                {qint32(text(window).indexOf(logo)), qint32(text(window).indexOf(logo)) + 4}, -1);
    going->goTo(themeFile(window, "image.xml"), {}, 1);
    QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(3).center());
    const qint32 at = qint32(kWindow.indexOf("logo"));
    going->goTo(themeFile(window, "other.xml"), {at, at + 4}, -1);
    QStringList seen = {place(window)};
    for (int i = 0; i < 3; ++i) {
        press(window, Qt::Key_Left, Qt::AltModifier);
        seen.append(place(window));
    }
    QCOMPARE(seen.join(u'\n'), QStringLiteral("Source other logo\nColor lvColor -1\nImage lvImage 1\nSource main logo"));
    for (int i = 0; i < 4; ++i)
        press(window, Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(place(window), seen.first());
    QCOMPARE(window.skin->statusBar()->currentMessage(), QStringLiteral("There is no place after this one."));
    // A window that has gone in between is passed over.
    QFile::remove(themeFile(window, "main.xml"));
    for (int i = 0; i < 9; ++i)
        press(window, Qt::Key_Left, Qt::AltModifier);
    QVERIFY(!place(window).contains(QStringLiteral("Source main")));
}

// The text in the source box and rows change as one step each and are not written; a closed file is.
void TestGoing::editsWhatIsOpen()
{
    Window window;
    openNames(window);
    auto *editing = window.skin->findChild<ThemeEditing *>();
    const QString open = themeFile(window, "main.xml"), closed = themeFile(window, "other.xml");
    const QString before = text(window), inFile = LoadFile(closed);
    const auto *images = window.find<ListView>("lvImage")->model();
    ThemeEdit edit;
    for (const auto &[path, content] : {std::pair(open, before), std::pair(closed, inFile)}) {
        for (const char *from : {"logo", "name=\"a\""}) {
            const qint32 at = qint32(content.indexOf(QLatin1String(from)));
            QVERIFY(edit.replace(path, content, {at, at + 1}, QStringLiteral("L")));
        }
    }
    edit.changeRow(themeFile(window, "image.xml"),
                   {1, ListRows::Row{themeFile(window, "l.png"), {QStringLiteral("logo"), QString()}, false},
                    ListRows::Row{themeFile(window, "l.png"), {QStringLiteral("Logo"), QString()}, false}});
    const QByteArray imageFile = window.files.read(QStringLiteral("theme/image.xml"));
    const std::optional<ThemeEdit> inverse = editing->apply(edit);
    QVERIFY(inverse);
    QVERIFY(text(window).contains(QStringLiteral("<img>Logo</img>")));
    QCOMPARE(window.files.read(QStringLiteral("theme/main.xml")), kWindow);
    QVERIFY(window.files.read(QStringLiteral("theme/other.xml")).contains("<img>Logo</img>"));
    QCOMPARE(images->index(1, 1).data().toString(), QStringLiteral("Logo"));
    QCOMPARE(window.files.read(QStringLiteral("theme/image.xml")), imageFile);
    window.find<SourceBox>("txtSnippet")->undo();
    QCOMPARE(text(window), before);
    window.find<SourceBox>("txtSnippet")->redo();
    QVERIFY(editing->apply(*inverse));
    QCOMPARE(text(window), before);
    QCOMPARE(window.files.read(QStringLiteral("theme/other.xml")), kWindow);
    QCOMPARE(images->index(1, 1).data().toString(), QStringLiteral("logo"));
}

void TestGoing::refusesWhatChanged()
{
    Window window;
    openNames(window);
    const QString open = themeFile(window, "main.xml"), closed = themeFile(window, "other.xml");
    ThemeEdit edit;
    QVERIFY(edit.replace(open, text(window), {0, 1}, QStringLiteral("X")));
    QVERIFY(edit.replace(closed, LoadFile(closed), {0, 1}, QStringLiteral("X")));
    type(window, "y");
    const QString typed = text(window);
    auto *editing = window.skin->findChild<ThemeEditing *>();
    QVERIFY_EXCEPTION_THROWN(editing->apply(edit), RunTimeError);
    QCOMPARE(text(window), typed);
    QCOMPARE(window.files.read(QStringLiteral("theme/other.xml")), kWindow);
}

int main(int argc, char **argv)
{
    return runWindowTest<TestGoing>(argc, argv);
}

#include "tst_going.moc"
