#pragma once

#include <QString>

namespace quillmere {

// A text from a theme, of one line or several, as a tooltip: never taken for markup, and not larger than a
// screen.
inline QString plainToolTip(const QString &text)
{
    constexpr qsizetype most = 600;
    const QString shown = text.size() > most ? QString(text.first(most) + u'\u2026') : text;
    const QString body = shown.toHtmlEscaped().replace(u'\n', QLatin1String("<br>"));
    if (shown.isRightToLeft())
        return u"<qt><p dir=\"rtl\">" + body + u"</p></qt>";
    return shown.isEmpty() ? QString() : QString(u"<qt>" + body + u"</qt>");
}

} // namespace quillmere
