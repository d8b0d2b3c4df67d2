#pragma once

#include "controls/Commands.h"

#include <QHash>
#include <QString>

class QMenu;
class QMenuBar;

namespace quillmere {

class Talk;

// The menu tree. Every item is found by its name, "mnuSave" or "mnuV(0)". A command without a handler is
// disabled.
class MainMenu : public Commands
{
public:
    MainMenu(QMenuBar &bar, Talk &talk);

    void on(const char *name, const Command &command) override;
    void setEnabled(const char *name, bool enabled);
    QAction *action(const char *name) const override;
    QAction *insert(const char *before, const QString &name, const QString &caption,
                    const Command &command) override;
    QMenu *menu(const char *name) const;

private:
    Talk &m_talk; // runs the commands
    QHash<QByteArray, QAction *> m_actions;
    QHash<QByteArray, QMenu *> m_menus;
};

} // namespace quillmere
