#include "WindowFixture.h"

#include "app/GuideText.h"
#include "app/SystemDetails.h"

#include <QListWidget>
#include <QMenuBar>
#include <QTextBlock>
#include <QTreeWidget>

using namespace quillmere;

class TestHelp : public QObject
{
    Q_OBJECT

private slots:
    void guide()
    {
        const Window window;
        window.turnTo(9);
        QTest::keyClick(window.skin.get(), Qt::Key_F1);
        const QWidget *guide = dialogNamed("frmGuide");
        auto *text = childOf<GuideText>(*guide, "txtGuide");
        auto *contents = childOf<QTreeWidget>(*guide, "tvGuide");
        QCOMPARE(contents->currentItem()->text(0), u"Check tab"_s);
        QCOMPARE(guide->focusWidget(), text);

        // Each picture is there, and each link within the guide leads to a heading.
        int pictures = 0, links = 0;
        for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                if (format.isImageFormat()) {
                    const QString name = format.toImageFormat().name();
                    QVERIFY2(!text->document()->resource(QTextDocument::ImageResource, name).isNull(),
                             qPrintable(name));
                    ++pictures;
                } else if (format.anchorHref().startsWith(u'#')) {
                    emit text->anchorClicked(QUrl(u"#five-minutes-with-the-example"_s));
                    const int before = text->textCursor().position();
                    emit text->anchorClicked(QUrl(format.anchorHref()));
                    QVERIFY2(text->textCursor().position() != before, qPrintable(format.anchorHref()));
                    ++links;
                }
            }
        }
        QVERIFY(pictures > 0 && links > 0);

        contents->setCurrentItem(contents->topLevelItem(2));
        const int there = text->verticalScrollBar()->value();
        QVERIFY(there > 0);
        for (const char *outside : {"http://quillmere.example/", "../README.md", "file:///etc/hosts"})
            emit text->anchorClicked(QUrl(QString::fromUtf8(outside)));
        QCOMPARE(text->verticalScrollBar()->value(), there);
        contents->setCurrentItem(contents->topLevelItem(4));
        QTest::mouseClick(childOf<QAbstractButton>(*guide, "cmdGuideBack"), Qt::LeftButton);
        QCOMPARE(text->verticalScrollBar()->value(), there);

        QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
        auto *find = childOf<QLineEdit>(*guide, "txtGuideFind");
        QCOMPARE(guide->focusWidget(), find);
        QTest::keyClicks(find, u"Shortcuts"_s);
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(text->textCursor().selectedText().toLower(), u"shortcuts"_s);
        QTest::keyClicks(find, u" of the moon"_s);
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(childOf<QLabel>(*guide, "lblGuideFind")->text(), u"Not found"_s);
    }

    void shortcuts()
    {
        const Window window;
        window.choose("mnuShortcuts");
        const QWidget *dialog = dialogNamed("frmShortcuts");
        auto *list = childOf<ListView>(*dialog, "lvShortcuts");
        const auto shown = [&] {
            QStringList rows;
            for (int row = 0; row < list->model()->rowCount(); ++row) {
                if (!list->isRowHidden(row, {}))
                    rows.append(QString(list->model()->index(row, 0).data().toString() + u": " +
                                        list->model()->index(row, 1).data().toString()));
            }
            return rows;
        };
        QVERIFY(shown().contains(u"Tool > User Guide: F1"));
        QVERIFY(shown().contains(u"File > Exit: "));
        QVERIFY(shown().contains(u"Zoom In: Ctrl++, Ctrl+="));
        const qsizetype all = shown().size();
        QTest::keyClicks(dialog->focusWidget(), u"quick ctrl+p"_s);
        QCOMPARE(shown(), QStringList(u"Tool > Quick Open...: Ctrl+P"_s));
        childOf<QLineEdit>(*dialog, "txtShortcuts")->clear();
        QCOMPARE(shown().size(), all);
    }

    // One key that two commands have does nothing.
    void keysAreUnique()
    {
        const Window window;
        QHash<QString, QString> owners;
        for (const QAction *action : window.skin->menuBar()->findChildren<QAction *>()) {
            for (const QKeySequence &keys : action->shortcuts()) {
                if (action->shortcutContext() != Qt::WindowShortcut)
                    continue;
                const QString other = owners.value(keys.toString());
                QVERIFY2(other.isEmpty(), qPrintable(QString(other + u" and "_s + action->objectName())));
                owners.insert(keys.toString(), action->objectName());
            }
        }
    }

    void about()
    {
        const Window window;
        window.choose("mnuAbout");
        QWidget *box = dialogNamed("frmAbout");
        QTest::mouseClick(childOf<QPushButton>(*box, "cmdCopyDetails"), Qt::LeftButton);
        const QString details = QGuiApplication::clipboard()->text();
        QCOMPARE(details, systemDetails());
        for (const char *part : {"Quillmere", "Chromium", "System: ", "Screen: ", "Language: "})
            QVERIFY2(details.contains(QLatin1String(part)), part);
        QVERIFY(!details.contains(QDir::homePath()) &&
                !details.contains(QCoreApplication::applicationDirPath()));
        QTest::mouseClick(childOf<QPushButton>(*box, "cmdAboutShortcuts"), Qt::LeftButton);
        QVERIFY(!box->isVisible());
        QVERIFY(dialogNamed("frmShortcuts")->isVisible());
    }

    void goesRound_data()
    {
        QTest::addColumn<int>("tabs");
        QTest::addColumn<Qt::Key>("last"); // what ends it
        QTest::addColumn<QString>("open");
        QTest::newRow("one back") << 1 << Qt::Key_Control << u"second.xml"_s;
        QTest::newRow("two back") << 2 << Qt::Key_Control << u"first.xml"_s;
        QTest::newRow("all round") << 3 << Qt::Key_Control << u"third.xml"_s;
        QTest::newRow("given up") << 1 << Qt::Key_Escape << u"third.xml"_s;
    }
    void goesRound()
    {
        QFETCH(const int, tabs);
        QFETCH(const Qt::Key, last);
        Window window;
        window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget></config>");
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"first\"/>");
        for (const char *name : {"theme/first.xml", "theme/gone.xml", "theme/second.xml", "theme/third.xml"})
            window.write(name, "<widget class=\"window\"></widget>");
        window.openTheme();
        for (const char *name : {"theme/first.xml", "theme/gone.xml", "theme/second.xml", "theme/third.xml"})
            window.openDocument(name);
        QFile::remove(window.path("theme/gone.xml")); // it would be opened as an empty text
        window.source()->setFocus();
        QTest::keyPress(window.source(), Qt::Key_Control, Qt::ControlModifier);
        for (int i = 0; i < tabs; ++i)
            QTest::keyPress(window.source(), Qt::Key_Tab, Qt::ControlModifier); // a click lets Ctrl go
        QCOMPARE(window.find<QListWidget>("lvWindowRound")->count(), 3);
        QCOMPARE(window.find<QListWidget>("lvWindowRound")->item(2)->text(), u"first"_s);
        if (last == Qt::Key_Escape)
            QTest::keyPress(window.source(), last, Qt::ControlModifier);
        QTest::keyRelease(window.source(), Qt::Key_Control);
        QTEST(QFileInfo(window.find<QGroupBox>("frmWb")->title()).fileName(), "open");
        QVERIFY(!window.find<QListWidget>("lvWindowRound")->isVisible());
    }
};

WINDOW_TEST_MAIN(TestHelp)
#include "tst_help.moc"
