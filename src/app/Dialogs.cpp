#include "app/Dialogs.h"

#include "app/HelpMenu.h"
#include "app/LanguageExchange.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "keeping/forms/frmRestore.h"
#include "replace/forms/frmReplace.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"
#include "widgets/forms/SourceTab.h"

#include <QAction>
#include <QMainWindow>

namespace quillmere {

Dialogs::Dialogs(QMainWindow &window, SourceTab &sourceTab, ThemeProject &theme, const LiveIndex &index,
                 Files &files, Talk &talk, std::function<void()> showSource,
                 std::function<void(const QString &)> restored)
    : m_window(window), m_sourceTab(sourceTab), m_theme(theme), m_index(index), m_files(files), m_talk(talk),
      m_showSource(std::move(showSource)), m_restored(std::move(restored)),
      m_findNext(new QAction(QObject::tr("Find Next"), &window))
{
    m_findNext->setObjectName(QStringLiteral("findNext"));
    m_findNext->setShortcut(Qt::Key_F3);
    m_window.addAction(m_findNext);
    QObject::connect(m_findNext, &QAction::triggered, &window,
                     [this] { m_talk.run([this] { findNext(); }); });
}

Dialogs::~Dialogs() = default;

void Dialogs::addCommands(Commands &menu)
{
    m_save = menu.action("mnuSave");
    menu.on("mnuTReplace", [this] { replaceDialog().open(); });
    menu.action("mnuTReplace")->setShortcut(Qt::CTRL | Qt::Key_H);
    menu.on("mnuRestore", [this] { openRestore(); });
    (new LanguageExchange(m_theme, m_index, m_files, m_talk, m_window))->addCommands(menu);
    (new HelpMenu(m_window))->addCommands(menu);
}

frmReplace &Dialogs::replaceDialog()
{
    if (!m_replace) {
        SourceBox *source = m_sourceTab.txtSnippet;
        m_replace = std::make_unique<frmReplace>(
            SourceAccess{[source] { return source->text(); },
                         [source](const QString &text) { source->rewriteAll(text); },
                         [source] { return source->selectionStart(); },
                         [source] { return source->selectionLength(); },
                         [this, source](qsizetype start, qsizetype length) {
                             m_showSource();
                             source->select(start, length);
                             source->setFocus(); // of its window; the keyboard stays in the dialog
                         },
                         [this] { return m_theme.rule; },
                         [this, source] {
                             // The item is disabled on other tabs; the dialog is open on all of them.
                             if (!source->document()->isEmpty())
                                 emit m_save->triggered();
                         },
                         [source] { source->stepBack(); }, [source] { source->stepForward(); }},
            m_files, m_talk, m_window);
        m_replace->addAction(m_findNext);
    }
    return *m_replace;
}

void Dialogs::findNext()
{
    const bool isOpen = m_replace && m_replace->isVisible();
    if (!isOpen && findsInBar && findsInBar())
        return;
    if (!replaceDialog().findNext())
        replaceDialog().open(); // for there is nothing yet to look for
}

void Dialogs::openRestore()
{
    auto *restore = new frmRestore(m_theme.folder(), m_theme.allFiles(), m_files, m_talk, &m_window);
    restore->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(restore, &frmRestore::restored, &m_window, m_restored);
    restore->open();
}

} // namespace quillmere
