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
                     "<config><file_widget>widget.xml</file_widget><file_i18n>i18n.xml</file_i18n></config>");
        window.write("theme/widget.xml", "<interface><width>1280</width><height>720</height>"
                                         "<widget class=\"window\" name=\"first\"/></interface>");
        window.write("theme/first.xml", "<widget class=\"window\" name=\"first\"></widget>");
        window.write("theme/i18n.xml", "<language id=\"en\">en.xml</language>");
        window.openTheme();
        window.turnTo(1);
        window.select("LvWidget", 0)->setFocus();
        QTRY_VERIFY(window.skin->findChild<LiveIndex *>()->index());
        for (const char *item :
             {"mnuNewTheme", "mnuConvertTheme", "mnuRestore", "mnuWidgetNew", "mnuWidgetDuplicate",
              "mnuLangNew", "mnuLangCompare", "mnuTReplace", "mnuSearch", "mnuUses", "mnuRename",
              "mnuQuickOpen", "mnuShortcuts", "mnuGuide", "mnuAbout"}) {
            window.choose(item);
            const auto shown = [] {
                for (QWidget *each : QApplication::topLevelWidgets()) {
                    if (each->isVisible() && each->inherits("QDialog"))
                        return each;
                }
                return static_cast<QWidget *>(nullptr);
            };
            QTRY_VERIFY2(shown(), item);
            QCOMPARE(controlsWithout(*shown()).join(u" "_s), QString());
            while (shown())
                shown()->close();
            QTest::qWait(0); // those that delete themselves
        }
    }
};

WINDOW_TEST_MAIN(TestTips)
#include "tst_tips.moc"
