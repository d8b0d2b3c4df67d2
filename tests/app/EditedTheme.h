#pragma once

#include "app/WindowFixture.h"

#include "keeping/UnsavedTexts.h"

#include <QRegularExpression>
#include <QToolButton>

namespace quillmere {

inline void openLanguage(const Window &window, int row)
{
    window.select("lvLang", row);
    window.choose("mnuLangOpen");
}

// A theme with a file of each kind that is written back, opened with its window "main" and its language.
inline void openAll(const Window &window)
{
    window.write("theme/theme.xml",
                 "<config><file_widget>widget.xml</file_widget><file_image>image.xml</file_image>"
                 "<file_color>color.xml</file_color><file_i18n>lang.xml</file_i18n></config>");
    window.write("theme/widget.xml",
                 "<interface><widget class=\"window\" style=\"default\" name=\"main\"/></interface>");
    window.write("theme/main.xml", "<interface>\n</interface>\n");
    window.write("theme/other.xml", "<x/>\n");
    window.write("theme/image.xml", "<image id=\"i\">i.png</image>");
    window.write("theme/color.xml", "<color name=\"navy\">#000080</color>");
    window.write("theme/lang.xml",
                 "<language id=\"English\">en.xml</language><language id=\"x\">x.xml</language>");
    window.write("theme/en.xml", "<language name=\"English\"><tran id=\"Yes\">Ja</tran></language>");
    window.write("theme/x.xml", "<language name=\"x\"></language>");
    window.openTheme();
    window.openDocument("theme/main.xml");
    openLanguage(window, 0);
}

class EditedWindow : public Window
{
public:
    EditedWindow() { openAll(*this); }
};

inline void type(const Window &window, const char *text)
{
    auto *source = window.source();
    window.turnTo(8);
    source->setFocus();
    QTest::keyClicks(source, QLatin1String(text));
}

inline QString text(const Window &window)
{
    return window.source()->text();
}

inline QString offer(const Window &window)
{
    const auto *label = window.find<QLabel>("lblOffer");
    return label->isVisible() ? label->text() : QString();
}

inline bool offers(const Window &window, const QString &pattern)
{
    const QRegularExpression wanted(QRegularExpression::anchoredPattern(pattern));
    return QTest::qWaitFor([&] { return wanted.match(offer(window)).hasMatch(); }, 5000);
}

inline void answer(const Window &window, const char *button)
{
    window.find<QToolButton>(button)->click();
}

// How many unsaved versions are kept of a document.
inline qsizetype kept(const Window &window, const QString &document, UnsavedKind kind = UnsavedKind::Text)
{
    return unsavedTextsOf(window.disk.recoveryFolder(), document, InUse::Include, kind).size();
}

inline const QString kUnsaved = u"Unsaved text of \\d\\d:\\d\\d\\."_s;

} // namespace quillmere
