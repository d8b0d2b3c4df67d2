#include "app/ThemeMenu.h"

#include "app/MainMenu.h"
#include "files/Paths.h"

#include <QFileDialog>
#include <QWidget>

namespace quillmere {

ThemeMenu::ThemeMenu(MainMenu &menu, std::function<void(const QString &)> open,
                     std::function<QString()> folder, QWidget &window)
    : QObject(&window), m_open(std::move(open)), m_folder(std::move(folder)), m_window(window),
      m_recent(*menu.menu("mnuRecentThemes"), m_open)
{
    menu.on("mnuOpenTheme", [this] { mnuOpenTheme_Click(); });
    menu.action("mnuOpenTheme")->setShortcut(QKeySequence::Open);
}

void ThemeMenu::mnuOpenTheme_Click()
{
    const QString folder = QFileDialog::getExistingDirectory(&m_window, tr("Open Theme"), m_folder());
    // Themes are handed on in a folder of their own, and it is that one which people choose.
    const QString inner = joinPath(folder, u"theme");
    if (!folder.isEmpty())
        m_open(!isThemeFolder(folder) && !findFile(joinPath(inner, u"theme.xml")).isEmpty() ? inner : folder);
}

} // namespace quillmere
