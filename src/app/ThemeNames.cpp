#include "app/ThemeNames.h"

#include "controls/Commands.h"

#include <QAction>

namespace quillmere {

ThemeNames::ThemeNames(Going::Parts parts, ThemeProject &theme, Files &files, Talk &talk, QObject *parent)
    : QObject(parent), going(parts, talk, this), editing(parts.source, parts.document, theme, files, talk, this)
{
}

void ThemeNames::addCommands(Commands &menu)
{
    menu.on("mnuBack", [this] { going.back(); });
    menu.action("mnuBack")->setShortcut(Qt::ALT | Qt::Key_Left);
    menu.on("mnuForward", [this] { going.forward(); });
    menu.action("mnuForward")->setShortcut(Qt::ALT | Qt::Key_Right);
}

} // namespace quillmere
