#include "app/CodePageChoice.h"

#include "app/OpenDocument.h"
#include "app/StatusLine.h"
#include "asking/Talk.h"
#include "files/Files.h"
#include "theme/ThemeProject.h"

#include <QScopeGuard>
#include <QSettings>

#include <utility>

namespace quillmere {

namespace {
const QString kCodePage = QStringLiteral("codePage");
}

CodePageChoice::CodePageChoice(StatusLine &status, ThemeProject &theme, OpenDocument &window,
                               std::function<void()> loadTheme, Files &files, Talk &talk, QObject *parent)
    : QObject(parent), m_status(status), m_theme(theme), m_window(window), m_loadTheme(std::move(loadTheme)),
      m_files(files), m_talk(talk)
{
    if (QSettings().value(kCodePage).toString() == u"1252")
        m_theme.rule = CodePageRule::Windows1252;
    m_status.showRule(m_theme.rule);
    connect(&status, &StatusLine::ruleChosen, this,
            [this](CodePageRule rule) { m_talk.run([&] { choose(rule); }); });
}

void CodePageChoice::choose(CodePageRule rule)
{
    if (rule == m_theme.rule)
        return;
    const CodePageRule before = std::exchange(m_theme.rule, rule);
    auto takeBack = qScopeGuard([&] {
        m_theme.rule = before;
        m_status.showRule(before);
    });
    const Document open = m_window.document();
    const bool again = !open.path().isEmpty() && !open.isEdited();
    // Whatever is cancelled, nothing has been shown yet.
    LoadedForNow loadedFiles(m_files.loaded());
    ReadyWindow window;
    if (again)
        window = m_window.read(open.path(), open.theme(), rule);
    if (!m_theme.folder().isEmpty())
        m_loadTheme();
    loadedFiles.keep();
    takeBack.dismiss();
    QSettings().setValue(kCodePage, rule == CodePageRule::Windows1252 ? QStringLiteral("1252") : QString());
    if (again)
        m_window.show(std::move(window));
    else if (!open.path().isEmpty())
        m_talk.say(tr("The open text keeps its code page until it is saved and opened again."));
}

} // namespace quillmere
