#pragma once

#include "controls/Commands.h"

#include <QHash>
#include <QString>

class QMenu;
class QMenuBar;

namespace quillmere {

// The menu tree. Every item is found by its name, "mnuSave" or "mnuV(0)". A command without a handler is
// disabled.
class MainMenu : public Commands
{
public:
    // `guard` runs a command and shows what goes wrong in it.
    MainMenu(QMenuBar &bar, std::function<void(const Command &)> guard);

    void on(const char *name, const Command &command) override;
    void setEnabled(const char *name, bool enabled);
    QAction *action(const char *name) const override;
    QAction *insert(const char *before, const QString &name, const QString &caption,
                    const Command &command) override;
    QMenu *menu(const char *name) const;

private:
    std::function<void(const Command &)> m_guard;
    QHash<QByteArray, QAction *> m_actions;
    QHash<QByteArray, QMenu *> m_menus;
};

} // namespace quillmere
