// The index of the open theme follows what is typed, edited, saved and changed on disk.
#include "app/EditedTheme.h"

#include "rows/ListRows.h"
#include "theme/forms/LiveIndex.h"

#include <QLineEdit>

using namespace quillmere;
using namespace Qt::StringLiterals;

namespace {

const LiveIndex &live(const Window &window)
{
    return *window.skin->findChild<LiveIndex *>();
}

bool comesTrue(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, 5000);
}

bool isUsed(const Window &window, NameKind kind, QStringView name)
{
    return comesTrue([&] { return live(window).index() && live(window).index()->isUsed(kind, name); });
}

bool isDefined(const Window &window, NameKind kind, QStringView name, bool defined = true)
{
    return comesTrue(
        [&] { return live(window).index() && live(window).index()->isDefined(kind, name) == defined; });
}

} // namespace

class tst_liveindex : public QObject
{
    Q_OBJECT

private slots:
    void followsTheText();
    void followsRows();
    void followsFiles();
    void ofTheThemeThatIsOpen();
};

void tst_liveindex::followsTheText()
{
    const Window window;
    QVERIFY(!live(window).index());
    openAll(window);
    QVERIFY(isDefined(window, NameKind::Image, u"i"));
    type(window, "<img>typed</img>");
    auto &index = *window.skin->findChild<LiveIndex *>();
    QVERIFY(index.outline().text().contains(u"typed")); // at once, whatever the index is of
    QCOMPARE(index.outline().revision(), index.revision());
    QVERIFY(isUsed(window, NameKind::Image, u"typed"));

    // Another window takes the box: the text of the first is that of its file again.
    window.openDocument("theme/other.xml");
    QVERIFY(comesTrue([&] { return !index.index()->isUsed(NameKind::Image, u"typed"); }));
    QCOMPARE(index.openFile(), window.path("theme/other.xml"));
}

void tst_liveindex::followsRows()
{
    Window window;
    openAll(window);
    QVERIFY(isDefined(window, NameKind::Colour, u"navy"));
    auto *colours = qobject_cast<ListRows *>(window.model("lvColor"));
    colours->setSub(0, 1, u"ink"_s);
    QVERIFY(isDefined(window, NameKind::Colour, u"ink"));
    QVERIFY(!live(window).index()->isDefined(NameKind::Colour, u"navy"));
    QCOMPARE(live(window).index()->definitions(NameKind::Colour, u"ink").value(0).line, 0); // not written

    window.expectSave(true);
    window.choose("mnuCSave");
    QVERIFY(comesTrue(
        [&] { return live(window).index()->definitions(NameKind::Colour, u"ink").value(0).line > 0; }));
    QVERIFY(live(window).sources().rows.isEmpty());
}

void tst_liveindex::followsFiles()
{
    const Window window;
    openAll(window);
    QVERIFY(isDefined(window, NameKind::Window, u"other"));
    QVERIFY(!live(window).index()->isUsed(NameKind::Image, u"late"));
    window.write("theme/other.xml", "<widget><img>late</img></widget>");
    window.write("theme/third.xml", "<x/>");
    window.skin->findChild<LiveIndex *>()->lookAgain();
    QVERIFY(isUsed(window, NameKind::Image, u"late"));
    QVERIFY(isDefined(window, NameKind::Window, u"third"));
}

void tst_liveindex::ofTheThemeThatIsOpen()
{
    const Window window;
    openAll(window);
    window.write("b/theme/theme.xml", "<config><file_image>i.xml</file_image></config>");
    window.write("b/theme/i.xml", "<image id=\"b\">b.png</image>");
    // While the first is being made.
    window.skin->openTheme(window.path("b/theme"));
    QVERIFY(!live(window).index());
    QVERIFY(isDefined(window, NameKind::Image, u"b"));
    QVERIFY(!live(window).index()->isDefined(NameKind::Image, u"i"));
    // And the window closes while another is made.
    window.openTheme();
}

WINDOW_TEST_MAIN(tst_liveindex)
#include "tst_liveindex.moc"
