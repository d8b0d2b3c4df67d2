#pragma once

#include "browser/PageFonts.h"
#include "receiver/ReceiverPage.h"

namespace quillmere {

class ThemeProject;

// What a theme, as it stands now, gives to the receiver's pages; its answers stay, and may be asked for on
// any thread.
struct ReceiverParts
{
    ReceiverTheme theme; // without the sizes of pictures
    QList<PageFont> fonts;
};
ReceiverParts receiverParts(const ThemeProject &theme);

// What the strings of a language file stand for; empty for those that it does not translate. RunTimeError
// says why a file that is there cannot be read.
std::function<QString(const QString &source)> translationBy(const QString &languageFile);

// The full path of the file of a language, by the name that the catalogue gives it; empty for none.
QString languageFileOf(const ThemeProject &theme, const QString &languageName);
// The languages of the theme as the catalogue names them, in its order.
QStringList languageNames(const ThemeProject &theme);
// What strings stand for in the language of this name; nothing set where the theme does not have it. The rows
// of the language that is open count instead of its file. RunTimeError as above.
std::function<QString(const QString &source)> translationOf(const ThemeProject &theme,
                                                            const QString &languageName);

} // namespace quillmere
