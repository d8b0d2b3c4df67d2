#pragma once

#include <QObject>

#include <memory>

class QMainWindow;

namespace quillmere {

class Commands;
class frmGuide;
class frmShortcuts;

// What helps: the user guide, the list of shortcuts, and the About box that leads to both.
class HelpMenu : public QObject
{
    Q_OBJECT

public:
    explicit HelpMenu(QMainWindow &window);
    ~HelpMenu() override;

    void addCommands(Commands &menu);

private:
    void mnuGuide_Click();
    void mnuShortcuts_Click();

    QMainWindow &m_window;
    // Made when they are first wanted.
    std::unique_ptr<frmGuide> m_frmGuide;
    std::unique_ptr<frmShortcuts> m_frmShortcuts;
};

} // namespace quillmere
