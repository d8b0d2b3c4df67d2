#pragma once

#include "app/EditedTheme.h"

#include "theme/forms/LiveIndex.h"

namespace quillmere {

inline const QByteArray kWindow = "<interface>\n <widget class=\"image\" name=\"a\"><img/>\n\n"
                                  "\t<img>logo</img></widget>\n</interface>\n";

// A theme in which every kind of name is used, with its window "main" open.
inline void openNames(Window &window)
{
    window.write(
        "theme/theme.xml",
        "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
        "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n><file_font>font.xml</file_font>"
        "</config>");
    window.write("theme/widget.xml",
                 "<interface>\n<widget class=\"window\" style=\"default\" name=\"main\"/>\n"
                 "<widget class=\"window\" style=\"default\" name=\"other\"/>\n</interface>");
    window.write("theme/main.xml", kWindow);
    window.write("theme/other.xml", kWindow);
    window.write("theme/image.xml", "<image id=\"icon\">i.png</image>\n<image id=\"logo\">l.png</image>");
    window.write("theme/color.xml", "<color name=\"navy\">#000080</color>");
    window.write("theme/font.xml",
                 "<fonts><font><name>big</name><file>b.ttf</file><size>20</size></font></fonts>");
    window.write("theme/lang.xml", "<language id=\"English\">en.xml</language>");
    window.write(
        "theme/en.xml",
        "<language name=\"English\"><tran id=\"No\">Nein</tran><tran id=\"Yes\">Ja</tran></language>");
    window.openTheme();
    window.openDocument("theme/main.xml");
}

inline void openIndexed(Window &window)
{
    openNames(window);
    QVERIFY(
        QTest::qWaitFor([&] { return window.skin->findChild<LiveIndex *>()->index() != nullptr; }, 10000));
}

// A control of a dialog that has the keyboard.
template <typename Kind>
Kind *in(const char *form, const char *name)
{
    QWidget *dialog = dialogNamed(form);
    if (!QTest::qWaitFor([&] { return dialog->isActiveWindow(); }))
        qFatal("%s does not become active", form);
    return childOf<Kind>(*dialog, name);
}

// No window manager gives the keyboard back when a dialog closes.
inline void bringToFront(const Window &window)
{
    window.skin->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window.skin.get());
}

// Puts the caret into a text in the source.
inline void putCaret(const Window &window, const char *at)
{
    window.turnTo(8);
    const qsizetype position = text(window).indexOf(QLatin1String(at));
    QVERIFY(position >= 0);
    window.source()->select(position + 1, 0);
    window.source()->setFocus();
}

inline void selectRow(const Window &window, const char *list, int row)
{
    auto *view = window.find<ListView>(list);
    for (int tab = 0; tab < 9; ++tab) {
        if (window.find<QWidget>(qPrintable(u"frYt(%1)"_s.arg(tab)))->isAncestorOf(view))
            window.turnTo(tab);
    }
    view->setCurrentIndex(view->model()->index(row, 1));
    view->setFocus();
}

inline void press(const Window &window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : window.skin.get(), key, modifiers);
}

inline void renameSelected(const Window &window, const QString &name)
{
    press(window, Qt::Key_F2);
    QTest::keyClicks(in<QLineEdit>("frmRename", "txtRename"), name);
    QTest::keyClick(in<QLineEdit>("frmRename", "txtRename"), Qt::Key_Return);
}

} // namespace quillmere
