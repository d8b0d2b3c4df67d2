// The Check tab, the marks in the source and what mends a problem.
#include "app/EditedTheme.h"

#include "checks/forms/LiveCheck.h"
#include "source/forms/SourceMarks.h"

#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>

using namespace quillmere;

namespace {

// The theme of EditedTheme has an image without a file and one that nothing uses; "other" names no image.
QAbstractItemModel &rows(const Window &window)
{
    return *window.find<ListView>("lvCheck")->model();
}

QStringList messages(const Window &window)
{
    QStringList texts;
    for (int row = 0; row < rows(window).rowCount(); ++row)
        texts.append(rows(window).index(row, 0).data().toString());
    return texts;
}

bool tells(const Window &window, const QString &message, bool told = true)
{
    return QTest::qWaitFor([&] { return messages(window).contains(message) == told; }, 8000);
}

void select(const Window &window, const QString &message)
{
    auto *list = window.find<ListView>("lvCheck");
    window.find<QTabBar>("TabStrip4")->setCurrentIndex(9);
    list->setFocus();
    list->setCurrentIndex(rows(window).index(int(messages(window).indexOf(message)), 0));
}

// Opens the menu by the keyboard and chooses an item of it.
void mend(const Window &window, QWidget *focus, const char *item)
{
    QTest::keyClick(focus, Qt::Key_Return, Qt::AltModifier);
    auto *menu = window.skin->findChild<QMenu *>(QStringLiteral("mnuProblem"));
    QVERIFY(menu);
    auto *action = menu->findChild<QAction *>(QLatin1String(item));
    QVERIFY(action);
    action->trigger();
    menu->close();
}

const QString kMissing = QStringLiteral("There is no image \"icom\"");

void openFaulty(const Window &window)
{
    openAll(window);
    window.files.write(QStringLiteral("theme/main.xml"),
                       "<interface><widget name=\"b\"><img>icom</img></widget>\n</interface>\n");
    window.files.write(QStringLiteral("theme/image.xml"), "<image id=\"icon\">i.png</image>");
    window.skin->openTheme(window.files.path(QStringLiteral("theme")));
    window.skin->openDocument(window.files.path(QStringLiteral("theme/main.xml")));
    QVERIFY(tells(window, kMissing));
}

} // namespace

class tst_check : public QObject
{
    Q_OBJECT

private slots:
    void listsAndFilters();
    void leadsToThePlace();
    void marksFollowTyping();
    void mendsTheOpenWindow();
    void mendsAClosedFile();
    void ignores();
};

void tst_check::listsAndFilters()
{
    const Window window;
    QVERIFY(window.find<QToolButton>("cmdProblems")->isHidden());
    openFaulty(window);
    const auto *counts = window.find<QToolButton>("cmdProblems");
    QVERIFY(counts->text().contains(QStringLiteral("error")));
    window.find<QToolButton>("cmdProblems")->click();
    QVERIFY(window.find<ListView>("lvCheck")->isVisible());
    const auto *strip = window.find<QTabBar>("TabStrip4");
    QVERIFY(strip->tabRect(9).right() < strip->width()); // all ten without arrows

    const int all = rows(window).rowCount();
    window.find<QToolButton>("tglCheck(0)")->click();
    QVERIFY(tells(window, kMissing, false));
    window.find<QToolButton>("tglCheck(0)")->click();
    QVERIFY(tells(window, kMissing));
    QCOMPARE(rows(window).rowCount(), all);
    window.find<QLineEdit>("txtCheckFilter")->setText(QStringLiteral("UNKNOWN-im"));
    QVERIFY(QTest::qWaitFor([&] { return rows(window).rowCount() == 1; }));
    window.find<QLineEdit>("txtCheckFilter")->setText(QStringLiteral("main:2"));
    QVERIFY(tells(window, kMissing));

    // Another theme has other problems.
    window.files.write(QStringLiteral("b/theme/theme.xml"), "<config></config>");
    window.skin->openTheme(window.files.path(QStringLiteral("b/theme")));
    QVERIFY(QTest::qWaitFor([&] { return rows(window).rowCount() == 0; }));
}

void tst_check::leadsToThePlace()
{
    const Window window;
    openFaulty(window);
    auto *source = window.find<SourceBox>("txtSnippet");
    QVERIFY(QTest::qWaitFor([&] { return source->marks().count() > 0; }));
    window.skin->openDocument(window.files.path(QStringLiteral("theme/other.xml")));
    // The place is again that of the file, which is not formatted, when the whole theme has been checked.
    const auto *check = window.skin->findChild<LiveCheck *>();
    QVERIFY(QTest::qWaitFor([&] { return !check->isBehind(); }));
    QSignalSpy shown(&rows(window), &QAbstractItemModel::modelReset);
    QVERIFY(shown.wait());
    auto *list = window.find<ListView>("lvCheck");
    window.find<QTabBar>("TabStrip4")->setCurrentIndex(9);
    list->clearSelection();
    list->setFocus(Qt::TabFocusReason);
    QVERIFY(list->selectedRow() >= 0); // for the keys that follow
    select(window, kMissing);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(source->isVisible());
    QCOMPARE(source->textCursor().selectedText(), QStringLiteral("icom"));

    const QString unlisted = QStringLiteral("\"other.xml\" is not in the window catalogue");
    QVERIFY(tells(window, unlisted));
}

void tst_check::marksFollowTyping()
{
    const Window window;
    openFaulty(window);
    auto *source = window.find<SourceBox>("txtSnippet");
    QVERIFY(QTest::qWaitFor([&] { return source->marks().count() > 0; }));
    const int marks = source->marks().count();
    window.find<QTabBar>("TabStrip4")->setCurrentIndex(8);
    source->setFocus();
    source->moveCursor(QTextCursor::Start);
    QTest::keyClicks(source, QStringLiteral("<!--a-->"));
    QCOMPARE(source->marks().count(), marks); // they only move
    source->select(source->text().indexOf(u"icom"), 4);
    QTest::keyClicks(source, QStringLiteral("icon"));
    QVERIFY(tells(window, kMissing, false));
    QVERIFY(QTest::qWaitFor([&] { return source->marks().count() < marks; }));
}

void tst_check::mendsTheOpenWindow()
{
    const Window window;
    openFaulty(window);
    auto *source = window.find<SourceBox>("txtSnippet");
    window.find<QTabBar>("TabStrip4")->setCurrentIndex(8);
    source->setFocus();
    source->select(source->text().indexOf(u"icom") + 4, 0);
    mend(window, source, "mnuMend");
    QVERIFY(text(window).contains(u"<img>icon</img>"));
    QVERIFY(tells(window, kMissing, false));
    source->undo();
    QVERIFY(tells(window, kMissing));
}

void tst_check::mendsAClosedFile()
{
    Window window;
    openFaulty(window);
    const QString unlisted = QStringLiteral("\"other.xml\" is not in the window catalogue");
    select(window, unlisted);
    const QByteArray before = window.files.read(QStringLiteral("theme/widget.xml"));
    const QByteArray row = "<widget class=\"window\" style=\"default\" name=\"other\"/>";
    QByteArray after = before;
    after.replace("</interface>", QByteArray('\n' + row + "\n</interface>"));
    window.prompts.expectQuestion(QStringLiteral("Change File"),
                                  QStringLiteral("Change this in \"widget.xml\"?\n\n%1\n\nIt becomes:\n\n%2")
                                      .arg(QLatin1String(before), QLatin1String(after)),
                                  true);
    mend(window, window.find<ListView>("lvCheck"), "mnuMend");
    QCOMPARE(window.files.read(QStringLiteral("theme/widget.xml")), after);
    QVERIFY(tells(window, unlisted, false));
    // A file that is closed has no other undo.
    auto *undo = window.find<QAction>("mnuUndoRename");
    QCOMPARE(undo->text(), QStringLiteral("Undo Mend"));
    undo->trigger();
    QCOMPARE(window.files.read(QStringLiteral("theme/widget.xml")), before);
    QVERIFY(tells(window, unlisted));
}

void tst_check::ignores()
{
    Window window;
    openFaulty(window);
    select(window, kMissing);
    mend(window, window.find<ListView>("lvCheck"), "mnuIgnoreName");
    QVERIFY(tells(window, kMissing, false));
    // Remembered, for this theme.
    window.start();
    window.skin->openTheme(window.files.path(QStringLiteral("theme")));
    QVERIFY(tells(window, QStringLiteral("Unused image \"icon\" (0 bytes)")));
    QVERIFY(!messages(window).contains(kMissing));
    select(window, messages(window).value(0));
    mend(window, window.find<ListView>("lvCheck"), "mnuTellAgain");
    QVERIFY(tells(window, kMissing));
}

int main(int argc, char **argv)
{
    return runWindowTest<tst_check>(argc, argv);
}

#include "tst_check.moc"
