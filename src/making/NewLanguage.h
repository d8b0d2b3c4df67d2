#pragma once

#include "theme/ThemeEdit.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace quillmere {

class ThemeIndex;
class ThemeProject;
struct ThemeSources;

// What a new language is called, and by the catalogue; its file lies beside that.
struct NewLanguage
{
    QString id, name, file;
};

// What these names are held to: asked for once, and then at every key.
class LanguageNames
{
public:
    explicit LanguageNames(const ThemeProject &theme);

    // Why no language can be called so, as a sentence for a person; empty where one can.
    QString whyNot(const NewLanguage &language) const;

private:
    QSet<QString> m_ids, m_files; // folded
    Encoding m_encoding;          // of the catalogue
};

// The texts of all windows that need a translation, each once, in the order of the windows.
QStringList textsOfWindows(const ThemeIndex &index);
// The sources of a language file, each once; rows that are not written count instead of it.
QStringList sourcesOf(const ThemeSources &sources, const QString &languageFile);

// The edit that makes a language file with these sources, none translated, and its entry in the catalogue.
// `leftOut` becomes the number of sources that no language file can hold. RunTimeError where the catalogue
// cannot be read or has no end to put the entry before.
ThemeEdit newLanguage(const ThemeProject &theme, const ThemeSources &sources, const NewLanguage &language,
                      const QStringList &texts, int &leftOut);

} // namespace quillmere
