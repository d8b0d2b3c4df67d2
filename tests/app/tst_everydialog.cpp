#include "Failure.h"
#include "app/WindowFixture.h"

#include <QAction>
#include <QGroupBox>
#include <QMenuBar>
#include <QScreen>
#include <QToolButton>

using namespace quillmere;

namespace {

// Captions that have always been so, and their clashes with them.
const QStringList kKnown = {u"mnuView C"_s, u"frmReplace E"_s, u"frmReplace F"_s, u"frmReplace R"_s};

QString mnemonicOf(const QString &caption)
{
    return QKeySequence::mnemonic(caption).toString().section(u'+', -1);
}

QStringList clashesIn(const QString &name, const QStringList &captions)
{
    QStringList clashes, seen;
    for (const QString &caption : captions) {
        const QString key = mnemonicOf(caption);
        const QString clash = name + u' ' + key;
        if (!key.isEmpty() && seen.contains(key) && !kKnown.contains(clash))
            clashes.append(clash + u": "_s + caption);
        seen.append(key);
    }
    return clashes;
}

QStringList captionsIn(const QWidget &dialog)
{
    QStringList captions;
    for (const auto *button : dialog.findChildren<QAbstractButton *>()) {
        if (button->isVisible())
            captions.append(button->text());
    }
    for (const auto *label : dialog.findChildren<QLabel *>()) {
        if (label->isVisible() && label->buddy())
            captions.append(label->text());
    }
    for (const auto *box : dialog.findChildren<QGroupBox *>())
        captions.append(box->title());
    return captions;
}

// Where Tab goes back up and to the left, except from the last control to the first.
QStringList turnsBack(const QWidget &dialog)
{
    QList<const QWidget *> round;
    const QWidget *at = &dialog;
    do {
        if (at != &dialog && at->isVisible() && at->isEnabled() && (at->focusPolicy() & Qt::TabFocus) &&
            !at->focusProxy())
            round.append(at);
        at = at->nextInFocusChain();
    } while (at != &dialog && at->window() == &dialog);
    QStringList turns;
    for (qsizetype i = 1; i < round.size(); ++i) {
        const auto place = [&](const QWidget *one) {
            return QRect(one->mapTo(&dialog, QPoint()), one->size());
        };
        const QRect before = place(round[i - 1]), now = place(round[i]);
        if (now.bottom() < before.top() && now.left() <= before.left())
            turns.append(round[i - 1]->objectName() + u" to "_s + round[i]->objectName());
    }
    return turns;
}

QString faultsOf(QDialog &dialog)
{
    const QString name = dialog.objectName();
    QStringList faults = clashesIn(name, captionsIn(dialog));
    const auto buttons = dialog.findChildren<QPushButton *>();
    const bool hasButtons =
        std::any_of(buttons.begin(), buttons.end(), [](auto *button) { return button->isVisible(); });
    const bool hasDefault = std::any_of(buttons.begin(), buttons.end(), [](const QPushButton *button) {
        return button->isVisible() && button->isDefault();
    });
    if (hasButtons && !hasDefault)
        faults.append(name + u" has no default button"_s);
    for (const QString &turn : turnsBack(dialog))
        faults.append(name + u": Tab goes from "_s + turn);
    if (const QSize most = dialog.screen()->availableSize(); dialog.size().boundedTo(most) != dialog.size())
        faults.append(name + u" is larger than the screen"_s);
    const QPointer<QDialog> left = &dialog; // some are gone for good then
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCoreApplication::processEvents();
    if (left && left->isVisible()) {
        faults.append(name + u" stays on Escape"_s);
        left->close();
    }
    return faults.join(u'\n');
}

} // namespace

class TestEveryDialog : public QObject
{
    Q_OBJECT

private slots:
    void menusHaveNoClashes()
    {
        const Window window;
        QStringList clashes;
        for (const QMenu *menu : window.skin->menuBar()->findChildren<QMenu *>()) {
            QStringList captions;
            for (const QAction *item : menu->actions())
                captions.append(item->text());
            clashes += clashesIn(menu->objectName(), captions);
        }
        QCOMPARE(clashes.join(u'\n'), QString());
    }

    void tabStopsAreControls()
    {
        const Window window;
        window.skin->openTheme(QStringLiteral(EXAMPLES_FOLDER "/aurora/theme"));
        QStringList odd;
        for (int tab = 0; tab < 10; ++tab) {
            window.turnTo(tab);
            for (const QWidget *at = window.skin->nextInFocusChain(); at != window.skin.get();
                 at = at->nextInFocusChain()) {
                if (!at->isVisible() || !at->isEnabled() || !(at->focusPolicy() & Qt::TabFocus) ||
                    at->window() != window.skin.get() || at->focusProxy())
                    continue;
                const bool isEmpty = at->metaObject() == &QScrollArea::staticMetaObject ||
                                     at->metaObject() == &QWidget::staticMetaObject || at->width() < 8 ||
                                     at->height() < 8 || at->accessibleName().isEmpty();
                if (isEmpty)
                    odd.append(u"%1: %2 %3"_s.arg(tab).arg(QLatin1String(at->metaObject()->className()),
                                                           at->objectName()));
            }
        }
        QCOMPARE(odd.join(u'\n'), QString());
    }

    void dialogsAreAlike()
    {
        Window window;
        window.skin->openTheme(QStringLiteral(EXAMPLES_FOLDER "/aurora/theme"));
        window.turnTo(1);
        emit window.select("LvWidget", 0)->rowOpened(0);
        window.turnTo(4);
        window.select("lvLang", 0);
        window.turnTo(8);
        const auto opened = [] {
            QDialog *found = nullptr;
            for (QWidget *each : QApplication::topLevelWidgets()) {
                if (auto *dialog = qobject_cast<QDialog *>(each); dialog && dialog->isVisible())
                    found = dialog;
            }
            return found;
        };
        QStringList faults;
        const auto look = [&](const char *how) {
            QDialog *dialog = nullptr;
            const auto isOpen = [&] {
                if (QByteArray(how).startsWith("mnu") && window.said() == u"The theme is still being read."_s)
                    window.choose(how);
                return (dialog = opened()) != nullptr;
            };
            if (!QTest::qWaitFor(isOpen)) {
                faults.append(QLatin1String(how) + u" opens nothing"_s);
                return;
            }
            QCoreApplication::processEvents();
            faults.append(faultsOf(*dialog));
        };
        for (const char *item :
             {"mnuNewTheme", "mnuConvertTheme", "mnuRestore", "mnuWidgetNew", "mnuWidgetDuplicate",
              "mnuWidgetRename", "mnuLangNew", "mnuLangCompare", "mnuTReplace", "mnuSearch", "mnuQuickOpen",
              "mnuAbout", "mnuShortcuts", "mnuGuide"}) {
            window.choose(item);
            look(item);
        }
        emit window.select("lvColor", 0)->rowOpened(0);
        look("lvColor");
        emit window.select("lvBlock", 0)->rowOpened(0);
        look("lvBlock");
        window.prompts.expectInput(u"Widget Porition"_s, u"Input distance"_s, u"10"_s);
        window.choose("mnuTD(1)");
        window.find<QToolButton>("cmdShowChanges")->click();
        look("cmdShowChanges");
        window.turnTo(1);
        window.select("LvWidget", 0)->setFocus();
        for (const char *item : {"mnuUses", "mnuRename"}) {
            window.choose(item);
            look(item);
        }
        emit window.select("lvLang", 0)->rowOpened(0);
        const QString file = window.write(
            "back.csv", "Source,Translation\n" + window.model("LvBhs")->index(0, 1).data().toByteArray() +
                            ",Another\nNowhere,Left out\n");
        window.prompts.expectInput(u"Import"_s, {}, file);
        window.choose("mnuLangImport");
        look("mnuLangImport");
        faults.removeAll(QString());
        QCOMPARE(faults.join(u'\n'), QString());
    }
};

WINDOW_TEST_MAIN(TestEveryDialog)
#include "tst_everydialog.moc"
