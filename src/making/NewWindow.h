#pragma once

#include "theme/ThemeEdit.h"

#include <QSet>
#include <QString>

#include <optional>

namespace quillmere {

class ThemeProject;
struct ThemeSources;

// What names of new windows are held to: asked for once, and then at every key.
class WindowNames
{
public:
    explicit WindowNames(const ThemeProject &theme);

    // Why no window can have this name, as a sentence for a person; empty where one can.
    QString whyNot(const QString &name) const;
    // The first of `stem`, `stem_2`, `stem_3` ... that no window has.
    QString free(const QString &stem) const;

private:
    QSet<QString> m_taken; // windows, and files beside the catalogue without their endings; folded
    Encoding m_encoding;   // of the catalogue
};

// The edit that makes a document with this text and its entry in the window catalogue, which becomes bytes by
// the rule of the sources. RunTimeError where the catalogue has no end to put the entry before.
ThemeEdit newWindow(const ThemeProject &theme, const ThemeSources &sources, const QString &name,
                    const QString &text, CodePage page = CodePage::Utf8);

// The text of a document for a window of another name: the outermost block is called like it, where it was
// called like the old one.
QString withWindowName(const QString &text, const QString &oldName, const QString &newName);

} // namespace quillmere
