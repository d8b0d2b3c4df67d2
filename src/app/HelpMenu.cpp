#include "app/HelpMenu.h"

#include "app/WindowTips.h"
#include "app/frmAbout.h"
#include "app/frmGuide.h"
#include "app/frmShortcuts.h"
#include "controls/Commands.h"
#include "files/RunTimeError.h"
#include "files/ShippedFiles.h"

#include <QAction>
#include <QMainWindow>
#include <QTabBar>
#include <QTimer>

namespace quillmere {

HelpMenu::HelpMenu(QMainWindow &window) : QObject(&window), m_window(window) {}

HelpMenu::~HelpMenu() = default;

void HelpMenu::addCommands(Commands &menu)
{
    // When all controls are made, and the window is on its way to the screen.
    QTimer::singleShot(0, this, [this] { giveWindowTips(m_window); });
    menu.on("mnuGuide", [this] { mnuGuide_Click(); });
    menu.action("mnuGuide")->setShortcut(Qt::Key_F1);
    menu.on("mnuShortcuts", [this] { mnuShortcuts_Click(); });
    menu.on("mnuAbout", [this, shortcuts = menu.action("mnuShortcuts"), guide = menu.action("mnuGuide")] {
        auto *about = new frmAbout(*shortcuts, *guide, &m_window);
        about->setAttribute(Qt::WA_DeleteOnClose);
        about->open();
    });
}

// At what is said of the tab that is shown; before there is a theme, at its beginning.
void HelpMenu::mnuGuide_Click()
{
    if (!m_frmGuide) {
        const QString folder = guideFolder();
        if (folder.isEmpty())
            throw RunTimeError(tr("The guide is not there: no guide.md came with the program."));
        m_frmGuide = std::make_unique<frmGuide>(folder, m_window);
    }
    const auto *strip = m_window.findChild<QTabBar *>(QStringLiteral("TabStrip4"));
    const bool isStart = m_window.findChild<QWidget *>(QStringLiteral("startPage"));
    m_frmGuide->open(isStart ? QStringList()
                             : QStringList{strip->tabText(strip->currentIndex()), QStringLiteral("tab")});
}

void HelpMenu::mnuShortcuts_Click()
{
    if (!m_frmShortcuts)
        m_frmShortcuts = std::make_unique<frmShortcuts>(m_window);
    m_frmShortcuts->open();
}

} // namespace quillmere
