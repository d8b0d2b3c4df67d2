#include "WindowFixture.h"

#include "theme/forms/LiveIndex.h"

using namespace quillmere;

namespace {

// What Qt makes for itself, and what only holds other controls.
bool isOwn(const QObject &object)
{
    return !object.objectName().isEmpty() && !object.objectName().startsWith(u"qt_"_s) &&
           !object.objectName().startsWith(u"_q_"_s) && !object.objectName().startsWith(u"Scroll"_s);
}

// The picture, the source and the tab strip say more, about each place in them.
const QStringList kOfPlaces = {u"wb"_s, u"txtSnippet"_s, u"TabStrip4"_s, u"lvOverview"_s, u"lvRecent"_s};

QStringList controlsWithout(const QWidget &window)
{
    QStringList without;
    for (const QWidget *each : window.findChildren<QWidget *>()) {
        if (each->window() != &window || !isOwn(*each) || kOfPlaces.contains(each->objectName()))
            continue;
        if (each->focusPolicy() != Qt::NoFocus && each->toolTip().isEmpty() && !each->inherits("QMenuBar") &&
            !each->inherits("QScrollArea"))
            without.append(each->objectName());
    }
    return without;
}

// The tooltip of an action without one is its caption.
QStringList actionsWithout(const QWidget &window)
{
    QStringList without;
    for (const QAction *each : window.findChildren<QAction *>()) {
        const QString caption = QString(each->text()).remove(u'&').remove(u"..."_s);
        if (!each->isSeparator() && isOwn(*each) && !each->text().isEmpty() &&
            (each->toolTip().isEmpty() || each->toolTip() == caption))
            without.append(each->objectName());
    }
    return without;
}

} // namespace

class TestTips : public QObject
{
    Q_OBJECT

private slots:
    void window()
    {
        const Window window;
        QTRY_VERIFY(!window.find<QWidget>("lvTheme")->toolTip().isEmpty());
        QCOMPARE(controlsWithout(*window.skin).join(u" "_s), QString());
        QCOMPARE(actionsWithout(*window.skin).join(u" "_s), QString());
    }

    void emptyLists()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_color>color.xml</file_color></config>");
        window.write("theme/color.xml", "<color name=\"ivory\">#fffff0</color>");
        window.turnTo(3);
        const auto hint = [&] {
            const auto *label = window.find<QLabel>("hintlvColor");
            return label->isVisible() ? label->text() : QString();
        };
        QTRY_VERIFY(window.skin->findChild<QLabel *>(u"hintlvColor"_s));
        QVERIFY(hint().contains(u"Open a theme"));
        window.openTheme();
        QCOMPARE(hint(), QString());
        window.find<QWidget>("lvColor")->setFocus();
        QTest::keyClick(window.find<QWidget>("lvColor"), Qt::Key_F, Qt::ControlModifier);
        auto *filter = window.find<QLineEdit>("txtFilterlvColor");
        QTest::keyClicks(filter, u"ivy"_s);
        QCOMPARE(hint(), u"No row contains \"ivy\"."_s);
        filter->setText(u"ivo"_s);
        QCOMPARE(hint(), QString());
        filter->setText(u"ivy"_s);
        QTest::keyClick(filter, Qt::Key_Escape);
        QCOMPARE(hint(), QString());
    }

    void dialogs()
    {
        Window window;
        window.write("theme/theme.xml",
                     "<config><file_widget>widget.xml</file_widget><file_i18n>i18n.xml</file_i18n>"
                     "<file_color>color.xml</file_color></config>");
        window.write("theme/widget.xml", "<interface><width>1280</width><height>720</height>"
                                         "<widget class=\"window\" name=\"first\"/></interface>");
        window.write(
            "theme/first.xml",
            "<widget class=\"window\" name=\"first\"><property><rect>[0,0,9,9]</rect></property></widget>");
        window.write("theme/i18n.xml", "<language id=\"en\">en.xml</language>");
        window.write("theme/color.xml", "<color name=\"ivory\">#fffff0</color>");
        window.write("theme/en.xml", "<language name=\"en\"><tran id=\"Menu\">Menu</tran></language>");
        window.openTheme();
        window.turnTo(1);
        window.select("LvWidget", 0)->setFocus();
        QTRY_VERIFY(window.skin->findChild<LiveIndex *>()->index());
        const auto shown = [] {
            for (QWidget *each : QApplication::topLevelWidgets()) {
                if (each->isVisible() && each->inherits("QDialog"))
                    return each;
            }
            return static_cast<QWidget *>(nullptr);
        };
        const auto look = [&shown](const char *how) {
            QTRY_VERIFY2(shown(), how);
            QCOMPARE(controlsWithout(*shown()).join(u" "_s), QString());
            while (shown())
                shown()->close();
            QTest::qWait(0); // those that delete themselves
        };
        for (const char *item :
             {"mnuNewTheme", "mnuConvertTheme", "mnuRestore", "mnuWidgetNew", "mnuWidgetDuplicate",
              "mnuLangNew", "mnuLangCompare", "mnuTReplace", "mnuSearch", "mnuUses", "mnuRename",
              "mnuQuickOpen", "mnuShortcuts", "mnuGuide", "mnuAbout"}) {
            window.choose(item);
            look(item);
        }
        window.openDocument("theme/first.xml");
        emit window.select("lvBlock", 0)->rowOpened(0);
        look("lvBlock");
        window.prompts.expectInput(u"Widget Porition"_s, u"Input distance"_s, u"10"_s);
        window.choose("mnuTD(1)");
        window.find<QAbstractButton>("cmdShowChanges")->click();
        look("cmdShowChanges");
        window.turnTo(3);
        emit window.select("lvColor", 0)->rowOpened(0);
        look("lvColor");
        emit window.select("lvLang", 0)->rowOpened(0);
        window.prompts.expectInput(u"Import"_s, {}, window.write("back.csv", "Source,Translation\nMenu,M\n"));
        window.choose("mnuLangImport");
        look("mnuLangImport");
    }

    void contextMenus()
    {
        Window window;
        window.write("theme/theme.xml", "<config><file_widget>widget.xml</file_widget>"
                                        "<file_color>color.xml</file_color></config>");
        window.write("theme/widget.xml", "<widget class=\"window\" name=\"first\"/>");
        window.write("theme/color.xml", "<color name=\"ivory\">#fffff0</color>");
        window.write("theme/first.xml", "<widget class=\"window\" name=\"first\">\n<property>\n"
                                        "<rect>[0,0,900,600]</rect>\n<backcolor>[lamp]</backcolor>\n"
                                        "</property>\n</widget>\n");
        window.openTheme();
        window.openDocument("theme/first.xml");
        const struct
        {
            int tab;
            const char *asked, *menu, *item;
        } menus[] = {{1, "LvWidget", "mnuRow", "mnuShowFolder"},
                     {3, "lvColor", "mnuRow", "mnuFileOrder"},
                     {9, "lvCheck", "mnuProblem", "mnuIgnoreName"},
                     {9, "lvCheck", "mnuProblem", "mnuTellAgain"},
                     {8, "wb", "mnuPicture", "mnuPictureHide"}};
        for (const auto &each : menus) {
            window.turnTo(each.tab);
            auto *asked = window.find<QWidget>(each.asked);
            QPoint at(60, 60);
            if (auto *list = qobject_cast<ListView *>(asked)) {
                QTRY_VERIFY(list->model()->rowCount() > 0);
                list->setCurrentIndex(list->model()->index(0, 0));
                at = list->visualRect(list->currentIndex()).center();
                asked = list->viewport();
            }
            QMenu *menu = nullptr;
            const auto isOpen = [&] {
                delete menu;
                QContextMenuEvent event(QContextMenuEvent::Mouse, at, asked->mapToGlobal(at));
                QApplication::sendEvent(asked, &event);
                menu = window.skin->findChild<QMenu *>(QLatin1String(each.menu));
                return menu && menu->findChild<QAction *>(QLatin1String(each.item));
            };
            QTRY_VERIFY2(isOpen(), each.item);
            QVERIFY2(menu->toolTipsVisible(), each.item);
            QCOMPARE(actionsWithout(*menu).join(u" "_s), QString());
            if (auto *ignore = menu->findChild<QAction *>(u"mnuIgnoreName"_s))
                ignore->trigger();
            delete menu;
        }
    }
};

WINDOW_TEST_MAIN(TestTips)
#include "tst_tips.moc"
