#include "app/WindowFixture.h"

#include "asking/forms/WindowTalk.h"

#include <QDialog>
#include <QHeaderView>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace quillmere;

class TestRestore : public QObject
{
    Q_OBJECT

private slots:
    void cancelsInTheDialog()
    {
        QMainWindow window;
        WindowTalk talk(window, nullptr);
        QDialog dialog;
        new QVBoxLayout(&dialog);
        dialog.open();
        window.show();
        QTimer::singleShot(0, &dialog, [&] { // comes when the button is shown
            auto *cancel = dialog.findChild<QPushButton *>(u"cmdCancelWork"_s);
            QVERIFY(cancel && cancel->isVisible());
            QTest::mouseClick(cancel, Qt::LeftButton);
        });
        const auto forEver = [](const Progress &progress) {
            for (;;)
                progress(1, 2);
        };
        QVERIFY_THROWS_EXCEPTION(Cancelled, talk.runLong(u"Waiting"_s, forEver));
        QVERIFY(!dialog.findChild<QPushButton *>(u"cmdCancelWork"_s));
    }

    void restores()
    {
        Window window;
        window.choose("mnuRestore");
        QVERIFY(window.find<QLabel>("lblEmpty")->isVisible());
        QVERIFY(window.find<QLabel>("lblEmpty")->text().startsWith(u"No theme is open"_s));
        QTest::keyClick(window.find<QDialog>("frmRestore"), Qt::Key_Escape);
        QTRY_VERIFY(!window.skin->findChild<QDialog *>(u"frmRestore"_s));

        const QString path = window.write("theme/wnd/a.xml", "<a>\r\n</a>\nnow\n");
        const QString kept = u"backup"_s + window.path("theme/");
        window.write("theme/theme.xml", "<config></config>");
        window.files.write(kept + u"wnd/a.xml.20261121-120305-000"_s, "<a>\n</a>\nthen\nlater\n");
        window.files.write(kept + u"wnd/b.png.20261122-120305-000"_s, QByteArray("\x89PNG\0", 5));
        window.files.write(kept + u"c.xml.20261120-120305-000"_s, "longer than the others are");
        window.openTheme();
        window.skin->openDocument(path);
        window.choose("mnuRestore");
        auto *list = window.find<ListView>("lvVersions");
        auto *filter = window.find<QLineEdit>("txtFilter");
        auto *source = window.source();
        const auto heading = [&] { return window.find<QLabel>("lblDifference")->text(); };
        QCOMPARE(rowsAsText(list->model()),
                 u"wnd/b.png | 2026-11-22 12:03:05 | 5\nwnd/a.xml | 2026-11-21 12:03:05 | 20\n"
                 "c.xml | 2026-11-20 12:03:05 | 26\n"_s);
        QCOMPARE(heading(), u"b.png of 2026-11-22 12:03:05; the file does not exist now: 5 bytes."_s);
        const QPoint bytes(list->header()->sectionPosition(2) + 5, 5);
        QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {}, bytes);
        QVERIFY(rowsAsText(list->model()).startsWith(u"c.xml | "_s));

        QTest::keyClicks(filter, u"D/A"_s);
        QCOMPARE(list->model()->rowCount(), 1);
        QCOMPARE(heading(),
                 u"a.xml of 2026-11-21 12:03:05 compared with the current file: 1 line removed, 2 added."_s);
        QCOMPARE(window.find<QPlainTextEdit>("txtDifference")->toPlainText(),
                 u"Line 1\n  <a>\n  </a>\n- now\n+ then\n+ later"_s);
        const QString question = u"Restore wnd/a.xml as it was on 2026-11-21 12:03:05?\n\n"
                                 "The current file is backed up and can be restored in turn."_s;
        window.prompts.expectQuestion(u"Restore"_s, question, false);
        QTest::keyClick(list, Qt::Key_Return);
        QVERIFY(LoadFile(path).contains(u"now"_s));
        window.prompts.expectQuestion(u"Restore"_s, question, true);
        QTest::mouseClick(window.find<QPushButton>("cmdRestore"), Qt::LeftButton);
        QCOMPARE(LoadFile(path), u"<a>\n</a>\nthen\nlater\n"_s);
        QCOMPARE(list->model()->rowCount(), 2);
        QVERIFY(source->text().contains(u"later"_s)); // the window is open and nothing was typed

        QTest::keyClick(filter, Qt::Key_Escape);
        QCOMPARE(list->model()->rowCount(), 4);
        source->insertPlainText(u"typed"_s);
        window.prompts.expectQuestion(u"Restore"_s,
                                      u"Restore wnd/b.png as it was on 2026-11-22 12:03:05?\n\n"
                                      "The file does not exist now; it is created again."_s,
                                      true);
        list->setCurrentIndex(list->model()->index(3, 0));
        QTest::keyClick(list, Qt::Key_Return);
        filter->setText(u"png"_s);
        QVERIFY(heading().endsWith(u"no difference."_s));
        QTest::keyClick(list, Qt::Key_Return); // and nothing to ask
        QVERIFY(source->text().contains(u"typed"_s));
        QTest::keyClick(window.find<QDialog>("frmRestore"), Qt::Key_Escape);
        QTRY_VERIFY(!window.skin->findChild<QDialog *>(u"frmRestore"_s));
    }
};

WINDOW_TEST_MAIN(TestRestore)
#include "tst_restore.moc"
