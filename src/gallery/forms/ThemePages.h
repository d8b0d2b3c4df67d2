#pragma once

#include "browser/PageFonts.h"
#include "theme/ReceiverParts.h"

#include <QSize>

namespace quillmere {

struct ThemeWindow
{
    QString name;
    QString document; // full path; empty where the catalogue has no such window

    // What a message calls it: windows without a name go by their file's.
    QString label() const;
};

// The windows of these names in the order of the names; all in catalogue order where there are none.
QList<ThemeWindow> windowsOf(const ThemeProject &theme, const QStringList &names = {});

// Pixels of the screen that the theme is made for.
QSize screenPixels(const ThemeProject &theme);

// Makes pages of windows, each from its document as it lies in its file.
class ThemePages
{
public:
    // The preview with the View menu as it is at first.
    static ThemePages preview(const ThemeProject &theme);
    // What becomes of a window that is hidden as a whole until the receiver shows it.
    enum class HiddenWindows { AsInReceiver, Shown };
    // RunTimeError for a language that the theme does not have, or whose file cannot be read.
    static ThemePages receiver(const ThemeProject &theme, HiddenWindows hidden, const QString &language = {},
                               const ReceiverOptions &options = {});

    // RunTimeError where there is no document, or it cannot be read.
    QString pageOf(const ThemeWindow &window) const { return m_make(textOf(window)); }
    static QString textOf(const ThemeWindow &window);
    // In the receiver view: a text that only pages of other themes with the same picture have. Empty where
    // that cannot be told without drawing.
    QString keyOf(const ThemeWindow &window) const { return m_key(textOf(window)); }
    const QList<PageFont> &fonts() const { return m_fonts; }
    // Nothing in them is placed by the height of the view.
    bool areReceivers() const { return m_areReceivers; }

private:
    std::function<QString(const QString &text)> m_make, m_key;
    QList<PageFont> m_fonts;
    bool m_areReceivers = false;
};

} // namespace quillmere
