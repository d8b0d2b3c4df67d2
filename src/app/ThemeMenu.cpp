#include "app/ThemeMenu.h"

#include "app/MainMenu.h"
#include "asking/Talk.h"
#include "files/Paths.h"
#include "making/forms/frmNewTheme.h"

#include <QDir>
#include <QFileDialog>
#include <QWidget>

namespace quillmere {

ThemeMenu::ThemeMenu(MainMenu &menu, std::function<void(const QString &)> open,
                     std::function<QString()> folder, Talk &talk, QWidget &window)
    : QObject(&window), m_open(std::move(open)), m_folder(std::move(folder)), m_talk(talk), m_window(window),
      m_recent(*menu.menu("mnuRecentThemes"), m_open)
{
    menu.on("mnuOpenTheme", [this] { mnuOpenTheme_Click(); });
    menu.action("mnuOpenTheme")->setShortcut(QKeySequence::Open);
    menu.on("mnuNewTheme", [this] { mnuNewTheme_Click(); });
}

QString ThemeMenu::themeIn(const QString &folder)
{
    const QString inner = joinPath(folder, u"theme");
    const bool isAround = !isThemeFolder(folder) && !findFile(joinPath(inner, u"theme.xml")).isEmpty();
    return isAround ? inner : folder;
}

void ThemeMenu::mnuOpenTheme_Click()
{
    // What is most likely wanted is what was open last.
    QString from = m_folder();
    if (const QString last = RecentThemes::folders().value(0); !isThemeFolder(from) && QDir(last).exists())
        from = last;
    const QString folder = QFileDialog::getExistingDirectory(&m_window, tr("Open Theme"), from);
    if (!folder.isEmpty())
        m_open(folder);
}

void ThemeMenu::mnuNewTheme_Click()
{
    const auto make = [this](const QString &folder, const NewTheme &theme) {
        bool made = false;
        m_talk.run([&] {
            writeNewFolder(folder, filesOf(theme));
            made = true;
            m_open(folder);
        });
        return made;
    };
    auto *dialog = new frmNewTheme(QDir::toNativeSeparators(QDir::homePath()), make, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace quillmere
