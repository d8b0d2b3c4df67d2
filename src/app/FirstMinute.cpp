#include "app/FirstMinute.h"

#include "app/ExampleCopy.h"
#include "app/MainMenu.h"
#include "app/OpenDocument.h"
#include "app/RecentCards.h"
#include "app/RecentThemes.h"
#include "app/StartButton.h"
#include "app/StartPage.h"
#include "app/ThemeMenu.h"
#include "asking/Talk.h"
#include "gallery/forms/Overview.h"
#include "preview/forms/PreviewArea.h"
#include "preview/forms/PreviewFrame.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"
#include "widgets/forms/WidgetTab.h"

#include <QAction>
#include <QDir>

namespace quillmere {

FirstMinute::FirstMinute(const Parts &parts, QWidget &window)
    : QObject(&window), m_parts(parts), m_window(window), m_pictures(parts.theme, parts.overview.rows, this)
{
}

void FirstMinute::show()
{
    if (!m_parts.theme.folder().isEmpty() || !m_parts.document.path().isEmpty() ||
        !m_parts.source.txtSnippet->document()->isEmpty())
        return;
    if (!m_page)
        makePage();
    m_page->setRecent(RecentThemes::folders());
    m_page->appear();
}

void FirstMinute::makePage()
{
    m_page = new StartPage(m_parts.frame.area(), placeOfExample());
    const auto press = [this](StartButton *button, const char *item) {
        QAction *action = m_parts.menu.action(item);
        button->setIcon(action->icon());
        button->setKeys(action->shortcut());
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
    };
    press(m_page->cmdOpenTheme, "mnuOpenTheme");
    press(m_page->cmdNewTheme, "mnuNewTheme");
    m_page->cmdOpenExample->setIcon(m_parts.menu.action("mnuImgReplace")->icon()); // a picture
    connect(m_page->cmdOpenExample, &QPushButton::clicked, this,
            [this] { m_parts.talk.run([this] { openExample(); }); });
    connect(m_page->lvRecent, &RecentCards::chosen, this, m_parts.openTheme);
    connect(m_page->lvRecent, &RecentCards::removeWanted, this, &FirstMinute::forget);

    connect(&m_parts.theme, &ThemeProject::loaded, this, &FirstMinute::leave);
    connect(&m_parts.document, &OpenDocument::opened, this, &FirstMinute::leave);
    connect(&m_parts.document, &OpenDocument::textRestored, this, &FirstMinute::leave);
    connect(&m_parts.catalogue, &WidgetTab::markupChosen, this, &FirstMinute::leave);
    connect(&m_parts.source, &SourceTab::pageReady, this, &FirstMinute::leave);
}

// For good: from now on there is a theme, or a window.
void FirstMinute::leave()
{
    if (!m_page)
        return;
    const bool hadKeyboard = m_page->isAncestorOf(m_window.focusWidget());
    m_page->hide();
    m_page->deleteLater();
    m_page = nullptr;
    if (hadKeyboard) // which goes on where the theme is
        connect(
            &m_parts.overview, &Overview::shown, this, [this] { m_parts.overview.setFocus(); },
            Qt::SingleShotConnection);
}

void FirstMinute::openExample()
{
    bool isNew = false;
    const QString folder = copyOfExample(isNew);
    m_parts.openTheme(folder);
    if (isNew)
        m_parts.talk.say(
            tr("This is your own copy of the example: %1").arg(QDir::toNativeSeparators(folder)));
}

void FirstMinute::forget(const QString &folder)
{
    m_parts.themes.remove(folder);
    m_page->setRecent(RecentThemes::folders());
    if (RecentThemes::folders().isEmpty())
        m_page->cmdOpenTheme->setFocus();
    m_parts.talk.say(tr("%1 was removed from the list of recent themes; its files stay.").arg(folder));
}

} // namespace quillmere
