#include "app/WindowFixture.h"

#include "i18n/forms/SpellDictionary.h"

#include <QContextMenuEvent>
#include <QPlainTextEdit>
#include <QStandardPaths>
#include <QTableView>
#include <QTextBlock>
#include <QTextLayout>

using namespace quillmere;

namespace {

// Among the person's own data, as somebody puts one there who may not install any.
void writeDictionary(const QString &name, const QByteArray &rules, const QByteArray &words)
{
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    QVERIFY(data.mkpath(u"hunspell"_s));
    for (const auto &[ending, bytes] : {std::pair(u".aff"_s, rules), std::pair(u".dic"_s, words)}) {
        QFile file(data.filePath(u"hunspell/"_s + name + ending));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
}

} // namespace

class TestSpelling : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!SpellDictionary::isBuiltIn())
            QSKIP("Built without Hunspell");
        writeDictionary(u"de_DE"_s, "SET UTF-8\nTRY erndasi\n",
                        "3\nSender\nListe\n\xC3\x9C"
                        "ber\n");
        writeDictionary(u"ru_RU"_s, "SET KOI8-R\n", "1\n\xCB\xC1\xCE\xC1\xCC\n"); // канал
    }
    void init()
    {
        m_window = std::make_unique<Window>();
        m_window->write("theme/theme.xml", "<config><file_i18n>i18n.xml</file_i18n></config>");
        m_window->write("theme/i18n.xml", "<language id=\"German\">de.xml</language>"
                                          "<language id=\"Russian\">ru.xml</language>"
                                          "<language id=\"Klingon\">k.xml</language>");
        m_window->write("theme/de.xml", "<language name=\"x\"><tran id=\"a\">Sender Lste EPG %d "
                                        "\xC3\x9C"
                                        "ber</tran><tran id=\"b\"></tran></language>");
        for (const char *file : {"theme/ru.xml", "theme/k.xml"})
            m_window->write(file, "<language name=\"x\"><tran id=\"a\">\xD0\xBA\xD0\xB0\xD0\xBD\xD0\xB0\xD0"
                                  "\xBB \xD0\xBA\xD0\xBD\xD0\xB0\xD0\xBB Na\xC3\xAFve</tran></language>");
        // None of a theme is ever read.
        for (const char *file : {"theme/hunspell/tlh.aff", "theme/hunspell/tlh.dic"})
            m_window->write(file, "1\nSender\n");
        m_window->openTheme();
        m_window->turnTo(4);
        m_edit = m_window->find<QPlainTextEdit>("txtTranslation");
    }
    void cleanup() { m_window.reset(); }

    void marks_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("marked");
        QTest::newRow("UTF-8") << 0 << u"Lste"_s;
        QTest::newRow("another page, and letters it lacks") << 1 << u"кнал"_s;
        QTest::newRow("no dictionary") << 2 << QString();
    }
    void marks()
    {
        QFETCH(int, language);
        QFETCH(QString, marked);
        open(language);
        QTRY_COMPARE(this->marked(), marked);
        m_window->choose("mnuLangSpelling");
        QCOMPARE(this->marked(), QString());
        m_window->start(); // it stays off
        QVERIFY(!m_window->find<QAction>("mnuLangSpelling")->isChecked());
    }

    void marksInCells()
    {
        m_window->choose("mnuLangCompare");
        auto *table = childOf<QTableView>(*dialogNamed("frmCompareLanguages"), "tblCompare");
        QTRY_COMPARE(table->model()->columnCount(), 4);
        for (const auto &[column, wrong] : {std::pair(1, u"Lste"_s), std::pair(2, u"кнал"_s)}) {
            const QModelIndex cell = table->model()->index(0, column);
            table->setCurrentIndex(cell);
            table->edit(cell);
            m_edit = table->findChildren<QPlainTextEdit *>(u"txtCompared"_s).last();
            QTRY_COMPARE(marked(), wrong);
        }
    }

    // A word gets its wave when the next begins, and keeps what was undone whole.
    void typing()
    {
        open(0);
        m_window->select("LvBhs", 1);
        QTest::keyClicks(m_edit, u"Ueber"_s);
        QTest::keyClicks(m_edit, u" Sendr"_s);
        QTRY_COMPARE(marked(), u"Ueber"_s);
        QTest::keyClick(m_edit, Qt::Key_Return);
        QTRY_COMPARE(marked(), u"Ueber|Sendr"_s);
        QCOMPARE(m_window->model("LvBhs")->index(1, 2).data().toString(), u"Ueber Sendr"_s);
    }

    void suggestionsAndOwnWords()
    {
        open(0);
        QTRY_COMPARE(marked(), u"Lste"_s);
        m_edit->moveCursor(QTextCursor::Start);
        QVERIFY(QTest::qWaitFor([&] { return inMenu(u"mnuSpell(1)"_s) == u"Liste"; }));
        QCOMPARE(m_edit->toPlainText().section(u' ', 1, 1), u"Liste"_s);
        m_edit->undo();
        QTRY_COMPARE(marked(), u"Lste"_s);
        QVERIFY(QTest::qWaitFor([&] { return inMenu(u"mnuSpellAdd"_s) == u"&Add Word"; }));
        QCOMPARE(marked(), QString());
        m_window->start();
        m_edit = m_window->find<QPlainTextEdit>("txtTranslation");
        m_window->openTheme();
        m_window->turnTo(4);
        open(0);
        m_window->select("LvBhs", 1);
        QTest::keyClicks(m_edit, u"Lste Lsten "_s);
        QTRY_COMPARE(marked(), u"Lsten"_s);
    }

private:
    void open(int language)
    {
        m_window->select("lvLang", language);
        m_window->choose("mnuLangOpen");
        m_window->select("LvBhs", 0);
        QVERIFY(m_edit->isVisible());
        m_edit->setFocus();
    }
    // The words that have a wave.
    QString marked() const
    {
        QStringList words;
        for (QTextBlock block = m_edit->document()->begin(); block.isValid(); block = block.next()) {
            for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
                if (range.format.underlineStyle() == QTextCharFormat::WaveUnderline)
                    words.append(block.text().mid(range.start, range.length));
            }
        }
        return words.join(u'|');
    }
    // Goes to the next misspelled word by F7, and chooses an item of the menu that comes; its text. Empty
    // while the box is not active, or the item is not there yet.
    QString inMenu(const QString &item)
    {
        QString text;
        const auto choose = [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            if (auto *action = menu->findChild<QAction *>(item)) {
                text = action->text();
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
            }
            menu->close();
        };
        m_window->skin->activateWindow(); // without a window manager a menu leaves nothing active
        m_edit->setFocus();
        QTimer::singleShot(0, m_edit, choose);
        QTest::keyClick(m_edit, Qt::Key_F7);
        return text;
    }

    std::unique_ptr<Window> m_window;
    QPlainTextEdit *m_edit = nullptr;
};

WINDOW_TEST_MAIN(TestSpelling)
#include "tst_spelling.moc"
