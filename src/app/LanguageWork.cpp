#include "app/LanguageWork.h"

#include "app/LanguageCompare.h"
#include "app/RecentThemes.h"
#include "checks/forms/LiveCheck.h"
#include "controls/Commands.h"
#include "controls/ListFilter.h"
#include "files/Files.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/forms/LangTab.h"
#include "i18n/forms/LanguageFiles.h"
#include "i18n/forms/Spelling.h"
#include "i18n/forms/StringFilters.h"
#include "i18n/forms/TranslationPanel.h"
#include "keeping/forms/OutsideChanges.h"
#include "theme/LanguageInTheme.h"
#include "theme/ThemeProject.h"

#include <QAction>
#include <QEvent>
#include <QMainWindow>
#include <QTabBar>

#include <algorithm>

namespace quillmere {

LanguageWork::LanguageWork(const Parts &parts, Commands &menu, QMainWindow &window)
    : QObject(&window), m_tab(parts.tab), m_theme(parts.theme), m_check(parts.check),
      m_compare(new LanguageCompare(parts.tab, parts.theme, parts.editing, parts.talk, window))
{
    m_compare->addCommands(menu);
    auto *spelling = new Spelling(*m_tab.panel->txtTranslation, menu, parts.talk);
    const auto spell = [this, spelling] {
        spelling->setLanguage(languageOf(m_theme.lvLang, m_theme.language.document.path()));
    };
    connect(&m_tab, &LangTab::languageOpened, this, spell);
    connect(&m_theme.lvLang, &QAbstractItemModel::modelReset, this, spell);
    // Elsewhere these keys are others': in the source, in the picture.
    auto *strip = window.findChild<QTabBar *>(QStringLiteral("TabStrip4"));
    const auto giveKey = [&](const char *name, const QKeySequence &key) {
        QAction *action = menu.action(name);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_tab.addAction(action);
        const auto follow = [this, strip, action] {
            if (m_tab.isVisible())
                strip->addAction(action);
            else
                strip->removeAction(action);
        };
        connect(strip, &QTabBar::currentChanged, action, follow, Qt::QueuedConnection);
    };
    giveKey("mnuLangNext", Qt::CTRL | Qt::Key_Down);
    giveKey("mnuLangPanel", Qt::Key_F4);
    window.installEventFilter(this);
    m_tab.otherThemes = [this] {
        QStringList folders = RecentThemes::folders();
        folders.removeAll(m_theme.folder());
        return folders;
    };
    m_tab.languageFileIn = languageFileIn;

    if (auto *filter = m_tab.findChild<ListFilter *>(QStringLiteral("filterLvBhs"))) {
        StringFilters *filters = m_tab.filters;
        filter->limitTo([filters](int row) { return filters->shows(row); });
        connect(filters, &StringFilters::changed, filter, &ListFilter::limitChanged);
    }
    connect(&m_check, &LiveCheck::changed, this, &LanguageWork::showProblems);
    connect(&m_tab, &LangTab::languageOpened, this, &LanguageWork::showProblems);

    const auto look = [this] {
        if (m_tab.isVisible() || m_compare->isShown())
            m_tab.languageFiles->lookAgain();
    };
    parts.files.onWritten(this, [look](const QString &) { look(); });
    connect(&parts.outside, &OutsideChanges::looked, this, look);
}

bool LanguageWork::eventFilter(QObject *watched, QEvent *event)
{
    // Before the window keeps what is not saved.
    if (event->type() == QEvent::Close && !m_tab.panel->mayClose()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

// The checks go by the rows as they were a moment ago.
void LanguageWork::showProblems()
{
    QHash<int, StringProblems> byRow;
    const QString path = m_theme.language.document.path();
    if (!path.isEmpty() && !m_theme.LvBhs.isEmpty()) {
        for (const Problem &problem : *m_check.problems()) {
            if (problem.row < 0 || problem.file != path)
                continue;
            StringProblems &row = byRow[problem.row];
            row.seal = quint32(qHashMulti(row.seal, int(problem.rule), problem.text(), problem.name));
            row.worst = std::min(row.worst, StringProblems::Mark(problem.severity()));
        }
    }
    m_tab.filters->setProblems(std::move(byRow), [this](int row) { return messagesOf(row); });
}

QStringList LanguageWork::messagesOf(int row) const
{
    QStringList messages;
    for (const Problem &problem : *m_check.problems()) {
        if (problem.row == row && problem.file == m_theme.language.document.path())
            messages.append(problem.message());
    }
    return messages;
}

} // namespace quillmere
