#include "app/WindowFixture.h"

#include "theme/LanguageEdit.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTableView>

using namespace quillmere;

class TestCompareLanguages : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<Window>();
        m_window->write("theme/theme.xml", "<config><file_i18n>i18n.xml</file_i18n></config>");
        m_window->write("theme/i18n.xml",
                        "<language id=\"de\">de.xml</language><language id=\"fr\">fr.xml</language>");
        m_window->write("theme/de.xml", "<language name=\"de\"><tran id=\"Yes\">Ja</tran>"
                                        "<tran id=\"No\">Nein</tran></language>");
        m_window->write("theme/fr.xml", kFrench);
        m_window->openTheme();
        m_window->turnTo(4);
        m_window->select("lvLang", 0);
        m_window->choose("mnuLangOpen");
        m_window->choose("mnuLangCompare");
        m_dialog = dialogNamed("frmCompareLanguages");
        m_table = childOf<QTableView>(*m_dialog, "tblCompare");
        QTRY_COMPARE(shown(), u"Yes | Ja | Oui\nNo | Nein | \nStop |  | Arr\u00EAt\n"_s);
    }
    void cleanup() { m_window.reset(); }

    // An edit goes into the rows of the language that is open, or into the file, and is one step.
    void edits()
    {
        auto *rows = m_window->find<ListView>("LvBhs");
        type(0, 1, u"Jawohl"_s);
        QCOMPARE(m_window->shown("LvBhs"), u" | Yes | Jawohl\n | No | Nein\n"_s);
        type(2, 1, u"Halt"_s);
        QCOMPARE(m_window->shown("LvBhs"), u" | Yes | Jawohl\n | No | Nein\n | Stop | Halt\n"_s);
        childOf<QAction>(*rows, "mnuRowsUndo")->trigger();
        QTRY_COMPARE(shown(), u"Yes | Jawohl | Oui\nNo | Nein | \nStop |  | Arr\u00EAt\n"_s);

        type(0, 2, u"Si\nsi"_s);
        type(1, 2, u"Non"_s);
        const QByteArray edited = "<?xml?>\n<language name=\"fr\">\n<tran id=\"Yes\">Si\nsi</tran>\n"
                                  "<tran id=\"Stop\">Arr\xC3\xAAt</tran>\n<tran id=\"No\">Non</tran>\n"
                                  "</language>\n";
        QCOMPARE(m_window->read("theme/fr.xml"), edited);
        QTRY_COMPARE(shown(), u"Yes | Jawohl | Si\u21B5si\nNo | Nein | Non\nStop |  | Arr\u00EAt\n"_s);
        step("compareUndo");
        step("compareUndo");
        QCOMPARE(m_window->read("theme/fr.xml"), kFrench);
        step("compareRedo");
        step("compareRedo");
        QCOMPARE(m_window->read("theme/fr.xml"), edited);
        QTRY_COMPARE(shown(), u"Yes | Jawohl | Si\u21B5si\nNo | Nein | Non\nStop |  | Arr\u00EAt\n"_s);
    }

    void filters()
    {
        childOf<QCheckBox>(*m_dialog, "chkCompareMissing")->click();
        QCOMPARE(shown(), u"No | Nein | \nStop |  | Arr\u00EAt\n"_s);
        auto *languages = childOf<ListView>(*m_dialog, "lvCompareLanguages");
        languages->setCurrentIndex(languages->model()->index(0, 0));
        QTest::keyClick(languages, Qt::Key_Space);
        QTRY_COMPARE(shown(), u"No | Nein | \n"_s); // what a language says that is not shown does not count
        QVERIFY(m_table->isColumnHidden(1) && !m_table->isColumnHidden(2));
        auto *text = childOf<QLineEdit>(*m_dialog, "txtCompareFilter");
        text->setText(u"nEIN"_s);
        QCOMPARE(shown(), QString());
        text->setText(u"nO"_s);
        QCOMPARE(shown(), u"No | Nein | \n"_s);
    }

    // What cannot be taken stays in the cell that it was typed in.
    void refuses()
    {
        m_window->prompts.expectMessage(u"Quillmere"_s,
                                        u"A language file cannot hold a translation with < or >."_s);
        type(0, 2, u"a>b"_s);
        QPlainTextEdit *cell = nullptr;
        QTRY_VERIFY((cell = m_table->findChild<QPlainTextEdit *>(u"txtCompared"_s)) &&
                    cell->toPlainText() == u"a>b"_s);
        cell->setPlainText(u"ab"_s);
        QTest::keyClick(cell, Qt::Key_Return);
        QTRY_VERIFY(m_window->read("theme/fr.xml").contains(">ab<"));
    }

    void inFiles_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("after"); // nothing where it is refused
        const auto in = [](const QString &strings) { return QString(u"<language name=\"x\">"_s + strings); };
        QTest::newRow("the first of two") << in(u"<tran id=\"a\">1</tran><tran id=\"a\">2</tran>"_s) << u"a"_s
                                          << in(u"<tran id=\"a\">T</tran><tran id=\"a\">2</tran>"_s);
        QTest::newRow("closes itself") << in(u"<tran id=\"a\"/>\n</language>"_s) << u"a"_s
                                       << in(u"<tran id=\"a\">T</tran>\n</language>"_s);
        QTest::newRow("new") << in(u"\r\n</Language>"_s) << u"b"_s
                             << in(u"\r\n<tran id=\"b\">T</tran>\r\n</Language>"_s);
        QTest::newRow("no end") << in(u"<tran id=\"a\">1</tran>"_s) << u"b"_s << QString();
        QTest::newRow("no place") << in(u"<tran id=\"a\""_s) << u"a"_s << QString();
        QTest::newRow("source that ends itself") << in(u"</language>"_s) << u"b\"c"_s << QString();
        QTest::newRow("source with a >") << in(u"<tran id=\"a>b\">1</tran>"_s) << u"a>b"_s << QString();
    }

    void inFiles()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, source);
        QString after;
        try {
            const ThemeEdit edit = translationInFile(u"/x"_s, text, CodePage::Utf8, source, u"T"_s);
            after = changedText(text, edit.changesOf(u"/x"_s));
        } catch (const RunTimeError &) {
        }
        QTEST(after, "after");
    }

private:
    QString shown() const { return rowsAsText(m_table->model()); }
    void type(int row, int column, const QString &text) const
    {
        m_table->setCurrentIndex(m_table->model()->index(row, column));
        m_table->edit(m_table->currentIndex());
        auto *cell = m_table->findChild<QPlainTextEdit *>(u"txtCompared"_s);
        QVERIFY(cell);
        for (const QString &line : text.split(u'\n')) {
            if (!cell->toPlainText().isEmpty() && cell->textCursor().selectedText().isEmpty())
                QTest::keyClick(cell, Qt::Key_Return, Qt::ShiftModifier);
            QTest::keyClicks(cell, line);
        }
        QTest::keyClick(cell, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents(); // for what has changed is a step of its own then
    }
    void step(const char *action) const { childOf<QAction>(*m_dialog, action)->trigger(); }

    static inline const QByteArray kFrench = "<?xml?>\n<language name=\"fr\">\n<tran "
                                             "id=\"Yes\">Oui</tran>\n<tran id=\"Stop\">Arr\xC3\xAAt</tran>\n"
                                             "</language>\n";
    std::unique_ptr<Window> m_window;
    QWidget *m_dialog = nullptr;
    QTableView *m_table = nullptr;
};

WINDOW_TEST_MAIN(TestCompareLanguages)
#include "tst_comparelanguages.moc"
