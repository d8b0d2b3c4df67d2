#pragma once

#include "files/NewFile.h"

#include <QSize>
#include <QString>

namespace quillmere {

struct NewTheme
{
    QString name; // for people
    QSize screen; // pixels
    QString font; // path of a TrueType file that goes along; empty for a theme that names no font
};

// The folder of the theme for a folder that a person chose: that one where it is named so, else one in it.
QString themeFolderFor(const QString &chosen);

// Why this cannot be the font of a theme, as a sentence for a person; empty where it can.
QString whyNotFont(const QString &path);

// The files of a small theme: three windows, colours, a language, keys, settings and styles. It names nothing
// that it does not hold. RunTimeError where the font cannot be read.
QList<NewFile> filesOf(const NewTheme &theme);

} // namespace quillmere
