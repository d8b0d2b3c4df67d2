#include "app/WindowFixture.h"

#include "platform/ListView.h"
#include "widgets/SourceBox.h"

#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace quillmere;

class TestRestore : public QObject
{
    Q_OBJECT

private slots:
    void restores();
    void saysWhyThereIsNothing();
};

void TestRestore::restores()
{
    Window window;
    window.files.write(QStringLiteral("theme/theme.xml"), "<config></config>");
    const QString path = window.files.write(QStringLiteral("theme/wnd/a.xml"), "<a>\r\n</a>\nnow\n");
    const QString kept = QString(u"backup" + window.files.path(QStringLiteral("theme/")));
    window.files.write(QString(kept + u"wnd/a.xml.20261121-120305-000"), "<a>\n</a>\nthen\nlater\n");
    window.files.write(QString(kept + u"wnd/b.png.20261122-120305-000"), QByteArray("\x89PNG\0", 5));
    window.files.write(QString(kept + u"c.xml.20261120-120305-000"), "longer than the others are");
    window.skin->openTheme(window.files.path(QStringLiteral("theme")));
    window.skin->openDocument(path);
    window.choose("mnuRestore");
    auto *dialog = window.find<QDialog>("frmRestore");
    QVERIFY(dialog->isModal());
    auto *list = window.find<ListView>("lvVersions");
    const auto heading = [&] { return window.find<QLabel>("lblDifference")->text(); };
    const auto rows = [&] { return rowsAsText(list->model()); };
    QCOMPARE(rows(),
             QStringLiteral("wnd/b.png | 2026-11-22 12:03:05 | 5\nwnd/a.xml | 2026-11-21 12:03:05 | 20\n"
                            "c.xml | 2026-11-20 12:03:05 | 26\n"));
    QCOMPARE(heading(),
             QStringLiteral("b.png of 2026-11-22 12:03:05, and there is no such file now: 5 bytes come."));
    QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {},
                      QPoint(list->header()->sectionPosition(2) + 5, 5));
    QVERIFY(rows().startsWith(QStringLiteral("c.xml | ")));

    auto *filter = window.find<QLineEdit>("txtFilter");
    filter->setFocus();
    QTest::keyClicks(filter, QStringLiteral("D/A"));
    QCOMPARE(list->model()->rowCount(), 1);
    QCOMPARE(heading(),
             QStringLiteral("a.xml of 2026-11-21 12:03:05 against the file now: 1 line goes, 2 lines come."));
    QCOMPARE(window.find<QPlainTextEdit>("txtDifference")->toPlainText(),
             QStringLiteral("Line 1\n  <a>\n  </a>\n- now\n+ then\n+ later"));

    const QString question = QStringLiteral("Restore wnd/a.xml as it was on 2026-11-21 12:03:05?\n\n"
                                            "The file as it is now is kept and can be restored in turn.");
    window.prompts.expectQuestion(QStringLiteral("Restore"), question, false);
    window.prompts.expectQuestion(QStringLiteral("Restore"), question, true);
    QTest::keyClick(filter, Qt::Key_Return);
    QCOMPARE(dialog->focusWidget(), list);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(window.files.read(QStringLiteral("theme/wnd/a.xml")).contains("now"));
    QTest::mouseClick(window.find<QPushButton>("cmdRestore"), Qt::LeftButton);
    QCOMPARE(window.files.read(QStringLiteral("theme/wnd/a.xml")), "<a>\n</a>\nthen\nlater\n");
    QCOMPARE(list->model()->rowCount(), 2);
    QVERIFY(window.find<SourceBox>("txtSnippet")->text().contains(QStringLiteral("later")));

    // What is typed is not dropped, and a version that is as the file now cannot be restored.
    window.find<SourceBox>("txtSnippet")->insertPlainText(QStringLiteral("typed"));
    window.prompts.expectQuestion(QStringLiteral("Restore"),
                                  QStringLiteral("Restore wnd/b.png as it was on 2026-11-22 12:03:05?\n\n"
                                                 "There is no such file now; it is made again."),
                                  true);
    QTest::keyClick(filter, Qt::Key_Escape);
    QVERIFY(dialog->isVisible());
    list->setCurrentIndex(list->model()->index(3, 0));
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(heading().startsWith(QStringLiteral("c.xml")));
    filter->setText(QStringLiteral("png"));
    QCOMPARE(heading(), QStringLiteral("b.png of 2026-11-22 12:03:05 against the file now: no difference."));
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(window.find<SourceBox>("txtSnippet")->text().contains(QStringLiteral("typed")));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!window.skin->findChild<QDialog *>(QStringLiteral("frmRestore")));
}

void TestRestore::saysWhyThereIsNothing()
{
    const Window window;
    for (const char *why : {"No theme is open", "No version"}) {
        window.choose("mnuRestore");
        QVERIFY(window.find<QLabel>("lblEmpty")->isVisible());
        QVERIFY(window.find<QLabel>("lblEmpty")->text().startsWith(QLatin1String(why)));
        QVERIFY(!window.find<QPushButton>("cmdRestore")->isEnabled());
        QTest::keyClick(window.find<QDialog>("frmRestore"), Qt::Key_Escape);
        QTRY_VERIFY(!window.skin->findChild<QDialog *>(QStringLiteral("frmRestore")));
        window.files.write(QStringLiteral("theme/theme.xml"), "<config></config>");
        window.skin->openTheme(window.files.path(QStringLiteral("theme")));
    }
}

int main(int argc, char **argv)
{
    return runWindowTest<TestRestore>(argc, argv);
}

#include "tst_restore.moc"
