#include "app/WindowFixture.h"

#include "controls/RowsHistory.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/forms/LangTab.h"

#include <QDesktopServices>
#include <QRandomGenerator>

using namespace quillmere;

namespace {

void undo(ListView *list)
{
    QCoreApplication::processEvents();
    list->setFocus();
    QTest::keySequence(list, QKeySequence::Undo);
}

void redo(ListView *list)
{
    QTest::keySequence(list, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
}

} // namespace

class TestListEditing : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<Window>();
        m_window->write("theme/theme.xml",
                        "<config><file_color>color.xml</file_color><file_i18n>i18n.xml</file_i18n>"
                        "</config>");
        m_window->write("theme/color.xml",
                        "<color name=\"a\">#010203</color><color name=\"b\">#040506</color>"
                        "<color name=\"c\">#070809</color>");
        m_window->write("theme/i18n.xml",
                        "<language id=\"de\">de.xml</language><language id=\"fr\">fr.xml</language>");
        m_window->write("theme/de.xml", "<language name=\"de\"><tran id=\"Yes\">Ja</tran></language>");
        m_window->write("theme/fr.xml", "<language name=\"fr\"><tran id=\"Yes\">Oui</tran></language>");
        m_window->openTheme();
    }
    void cleanup() { m_window.reset(); }

    // Whatever comes at random is undone to each state before, ticks too, and redone to each after.
    void backAndForth()
    {
        ListRows rows({u"A"_s, u"B"_s}, ListRows::Checks::Yes);
        RowsHistory history(rows);
        QRandomGenerator random(3);
        const auto any = [&] { return int(random.bounded(qMax(1, rows.count()))); };
        QStringList states = {rowsAsText(&rows)};
        for (int step = 0; step < 150; ++step) {
            for (int times = random.bounded(1, 4); times > 0; --times) {
                const int what = int(random.bounded(5));
                if (what == 0 || rows.isEmpty())
                    rows.add(QString::number(step), {u"x"_s});
                else if (what == 1)
                    rows.remove(any());
                else if (what == 2)
                    rows.setSub(any(), 1, QString::number(random.bounded(9)));
                else if (what == 3)
                    rows.setChecked(any(), random.bounded(2) != 0);
                else
                    rows.edit(rows.rows().mid(any()));
            }
            QCoreApplication::processEvents();
            if (const QString now = rowsAsText(&rows); now != states.last())
                states.append(now);
        }
        QCOMPARE(history.steps.count(), int(states.size()) - 1);
        for (qsizetype i = states.size() - 2; i >= 0; --i) {
            history.steps.undo();
            QCOMPARE(rowsAsText(&rows), states[i]);
        }
        for (qsizetype i = 1; i < states.size(); ++i) {
            history.steps.redo();
            QCOMPARE(rowsAsText(&rows), states[i]);
        }
    }

    // By the keys; a command that replaces all rows is one step, the star goes with what is saved, and saving
    // ends nothing.
    void ofColours()
    {
        m_window->turnTo(3);
        auto *list = m_window->find<ListView>("lvColor");
        auto *strip = m_window->find<QTabBar>("TabStrip4");
        const QString whole = m_window->shown("lvColor");
        for (const int row : {0, 2})
            list->model()->setData(list->model()->index(row, 0), Qt::Checked, Qt::CheckStateRole);
        QCoreApplication::processEvents();
        const QString ticked = m_window->shown("lvColor");
        m_window->choose("mnuCHapus");
        QCOMPARE(list->model()->rowCount(), 1);
        QTRY_COMPARE(strip->tabToolTip(3), u"Not saved"_s);
        undo(list);
        QCOMPARE(m_window->shown("lvColor"), ticked);
        QTRY_COMPARE(strip->tabToolTip(3), QString());
        undo(list);
        QCOMPARE(m_window->shown("lvColor"), whole);
        redo(list);
        redo(list);
        QCOMPARE(list->model()->rowCount(), 1);
    }

    // A block that is hidden by a tick is seen again when the tick is undone.
    void ofBlocks()
    {
        const QString path = m_window->write("theme/w.xml", "<widget name=\"a\" class=\"text\">");
        m_window->skin->openDocument(path);
        m_window->turnTo(8);
        ListView *list = m_window->select("lvBlock", 0);
        const QString before = m_window->style(u"a"_s, u"display"_s);
        list->model()->setData(list->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
        QTRY_VERIFY(m_window->style(u"a"_s, u"display"_s) != before);
        undo(list);
        QVERIFY(!m_window->shown("lvBlock").startsWith(u'*'));
        QTRY_COMPARE(m_window->style(u"a"_s, u"display"_s), before);
    }

    // Rows that do not match are hidden and nothing else: their numbers stay, and so do ticks.
    void filters()
    {
        m_window->turnTo(3);
        auto *list = m_window->find<ListView>("lvColor");
        const QRect whole = list->geometry();
        const auto seen = [list] {
            QString rows;
            for (int row = 0; row < list->model()->rowCount(); ++row)
                rows += list->isRowHidden(row, {}) ? u""_s : QString::number(row);
            return rows;
        };
        list->setFocus();
        QTest::keySequence(list, QKeySequence::Find);
        auto *text = m_window->find<QLineEdit>("txtFilterlvColor");
        QVERIFY(text->hasFocus());
        QVERIFY(list->geometry().top() > whole.top() && list->geometry().bottom() == whole.bottom());
        QTest::keyClicks(text, u"#0102"_s);
        QCOMPARE(seen(), u"0"_s);
        text->setText(u"B"_s);
        QCOMPARE(seen(), u"1"_s);
        text->clear();
        list->model()->setData(list->model()->index(2, 0), Qt::Checked, Qt::CheckStateRole);
        m_window->find<QComboBox>("cboTickslvColor")->setCurrentIndex(2);
        QCOMPARE(seen(), u"01"_s);
        m_window->skin->resize(1400, 800);
        QVERIFY(list->geometry().top() > whole.top());
        m_window->choose("mnuCHapus");
        QTRY_COMPARE(seen(), u"01"_s);
        QTest::keyClick(text, Qt::Key_Escape);
        QVERIFY(!text->isVisible() && list->hasFocus());
        QCOMPARE(list->geometry().top(), whole.top());
        QCOMPARE(seen(), u"01"_s);
    }

    // The selected row goes on being seen where rows above it go, in the order of the view; one that was out
    // of sight stays there.
    void filterKeepsInView()
    {
        m_window->turnTo(3);
        auto *list = m_window->find<ListView>("lvColor");
        QList<ListRows::Row> rows;
        for (int i = 0; i < 400; ++i)
            rows.append({QString(), {(i % 2 ? u"odd%1"_s : u"even%1"_s).arg(i, 3), u"#000000"_s}});
        qobject_cast<ListRows *>(list->model())->assign(rows);
        list->sortBy(1, Qt::DescendingOrder);
        list->setFocus();
        QTest::keySequence(list, QKeySequence::Find);
        const auto isSeen = [&](int row) {
            return list->viewport()->rect().intersects(list->visualRect(list->model()->index(row, 0)));
        };
        list->setCurrentIndex(list->model()->index(201, 0));
        list->scrollTo(list->currentIndex());
        auto *text = m_window->find<QLineEdit>("txtFilterlvColor");
        text->setText(u"1"_s);
        QTRY_VERIFY(isSeen(201));
        text->clear();
        QTRY_VERIFY(isSeen(201));
        QCoreApplication::processEvents();
        list->scrollToTop();
        QVERIFY(!isSeen(201));
        text->setText(u"odd"_s);
        QCoreApplication::processEvents();
        QVERIFY(!isSeen(201));
    }

    // Strings of another language are not undone into those of this one, even where both happen at once.
    void otherRowsBeginAnew()
    {
        m_window->turnTo(4);
        auto *list = m_window->find<ListView>("LvBhs");
        auto *tab = m_window->skin->findChild<LangTab *>();
        tab->putTranslation(u"de"_s, u"Yes"_s, u"Jawohl"_s);
        QCoreApplication::processEvents();
        tab->putTranslation(u"fr"_s, u"Yes"_s, u"Si"_s);
        QCOMPARE(m_window->shown("LvBhs"), u"*  | Yes | Si\n"_s);
        undo(list);
        QCOMPARE(m_window->shown("LvBhs"), u" | Yes | Oui\n"_s);
        undo(list);
        QCOMPARE(m_window->shown("LvBhs"), u" | Yes | Oui\n"_s);
    }

    // What a row's menu offers, by the key that opens it, in the order in which it stands there.
    void menus_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QStringList>("items");
        const QStringList undo = {u"mnuRowsUndo"_s, u"mnuRowsRedo"_s};
        const QStringList name = {u"mnuGoTo"_s, u"mnuUses"_s, u"mnuRename"_s};
        const QStringList file = {u"mnuCopyPath"_s, u"mnuShowFolder"_s};
        const QStringList open = {u"mnuRowOpen"_s}, copyName = {u"mnuCopyName"_s}, copy = {u"mnuRowCopy"_s};
        QTest::newRow("theme") << 0 << u"lvTheme"_s << copyName + file + copy;
        QTest::newRow("colours") << 3 << u"lvColor"_s
                                 << undo + open + name + QStringList{u"mnuRemoveTicked"_s} + copyName +
                                        QStringList{u"mnuRowRemove"_s} + copy;
        QTest::newRow("languages") << 4 << u"lvLang"_s << open + name + copyName + file + copy;
    }

    void menus()
    {
        QFETCH(int, tab);
        QFETCH(QString, list);
        m_window->turnTo(tab);
        ListView *view = m_window->select(list.toUtf8().constData(), 0);
        QStringList items;
        for (const QAction *item : menuOf(view)->actions()) {
            if (!item->objectName().isEmpty())
                items.append(item->objectName());
        }
        QTEST(items, "items");
    }

    // By the menu: a colour goes and comes back, names and paths are copied, a folder is shown; never a file,
    // and never a folder outside of the theme.
    void menuCommands()
    {
        m_window->turnTo(3);
        const QString whole = m_window->shown("lvColor");
        ListView *colours = m_window->select("lvColor", 1);
        choose(colours, u"mnuCopyName"_s);
        QCOMPARE(QApplication::clipboard()->text(), u"b"_s);
        choose(colours, u"mnuRowRemove"_s);
        QCOMPARE(colours->model()->rowCount(), 2);
        QCoreApplication::processEvents();
        choose(colours, u"mnuRowsUndo"_s);
        QCOMPARE(m_window->shown("lvColor"), whole);

        QDesktopServices::setUrlHandler(u"file"_s, this, "show");
        m_window->turnTo(0);
        const QString theme = m_window->path("theme");
        choose(m_window->select("lvTheme", 0), u"mnuShowFolder"_s);
        QCOMPARE(m_shown, QList<QUrl>{QUrl::fromLocalFile(theme)});
        m_window->write("outside/secret.xml", "x");
        QVERIFY(QFile::link(m_window->path("outside"), m_window->path("theme/inside")));
        m_window->write("theme/theme.xml", "<config><a>../outside/secret.xml</a><b>inside/secret.xml</b>"
                                           "<c>nowhere/none.xml</c><d>color.xml</d></config>");
        m_window->openTheme();
        for (const int row : {0, 1, 2}) {
            ListView *list = m_window->select("lvTheme", row);
            QVERIFY(!itemOf(menuOf(list), u"mnuShowFolder"_s)->isEnabled());
        }
        choose(m_window->select("lvTheme", 3), u"mnuShowFolder"_s);
        QCOMPARE(m_shown.size(), 2);
        QCOMPARE(m_shown.last(), QUrl::fromLocalFile(theme));
        QDesktopServices::unsetUrlHandler(u"file"_s);
    }

public slots:
    void show(const QUrl &url) { m_shown.append(url); }

private:
    static QMenu *menuOf(ListView *list)
    {
        delete list->findChild<QMenu *>(u"mnuRow"_s);
        QTest::keyClick(list, Qt::Key_F10, Qt::ShiftModifier);
        return list->findChild<QMenu *>(u"mnuRow"_s);
    }
    static QAction *itemOf(const QMenu *menu, const QString &name)
    {
        for (QAction *item : menu->actions()) {
            if (item->objectName() == name)
                return item;
        }
        qFatal("There is no %s", qPrintable(name));
    }
    static void choose(ListView *list, const QString &name)
    {
        QMenu *menu = menuOf(list);
        menu->hide(); // as a click on the item does before its command runs
        itemOf(menu, name)->trigger();
    }

    QList<QUrl> m_shown;
    std::unique_ptr<Window> m_window;
};

WINDOW_TEST_MAIN(TestListEditing)
#include "tst_listediting.moc"
