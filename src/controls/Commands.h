#pragma once

#include <QString>

#include <functional>

class QAction;

namespace quillmere {

// The menu as a tab sees it: the tab gives the items that are its business their commands.
class Commands
{
public:
    using Command = std::function<void()>;

    virtual ~Commands() = default;
    // Gives an item its command and enables it. What goes wrong in the command is shown to the person.
    virtual void on(const char *name, const Command &command) = 0;
    virtual QAction *action(const char *name) const = 0;
    // Makes a further item, with its command, in front of an existing one. It is the caller's to delete.
    virtual QAction *insert(const char *before, const QString &name, const QString &caption,
                            const Command &command) = 0;
};

} // namespace quillmere
