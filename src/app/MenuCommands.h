#pragma once

#include <QList>
#include <QString>

class QAction;

namespace quillmere {

// A command of the menus.
struct MenuCommand
{
    QAction *action;
    QString caption;  // with those of the menus above, as a person reads them: "File > Save"
    bool isAvailable; // can be chosen now
};

// All commands of these items and of the menus below them, in their order.
QList<MenuCommand> commandsOf(const QList<QAction *> &items);

// A caption without the signs for the keyboard.
QString plainCaption(const QAction &item);

} // namespace quillmere
