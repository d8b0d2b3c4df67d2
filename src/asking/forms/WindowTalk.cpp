#include "asking/forms/WindowTalk.h"

#include "asking/forms/LongWork.h"

#include <QMainWindow>
#include <QStatusBar>

namespace quillmere {

WindowTalk::WindowTalk(QMainWindow &window, Prompts *prompts)
    : m_window(window), m_boxes(&window), m_prompts(prompts ? *prompts : m_boxes)
{
}

bool WindowTalk::ask(const QString &title, const QString &text)
{
    return m_prompts.ask(title, text);
}

bool WindowTalk::askAbout(const QString &title, const QString &text, const QString &facts)
{
    return m_prompts.askAbout(title, text, facts);
}

bool WindowTalk::askWarily(const QString &title, const QString &text)
{
    return m_prompts.askWarily(title, text);
}

void WindowTalk::tell(const QString &title, const QString &text, Icon icon)
{
    m_prompts.tell(title, text, icon);
}

std::optional<QString> WindowTalk::input(const QString &title, const QString &prompt, const QString &preset)
{
    return m_prompts.input(title, prompt, preset);
}

std::optional<QString> WindowTalk::chooseFile(FileFor purpose, const QString &title, const QString &preset,
                                              const QString &filters)
{
    return m_prompts.chooseFile(purpose, title, preset, filters);
}

void WindowTalk::say(const QString &hint)
{
    // It may hold a name of any length, and is laid out whenever it is drawn.
    constexpr qsizetype most = 5000; // units
    m_window.statusBar()->showMessage(hint.size() > most ? QString(hint.first(most) + u'\u2026') : hint);
    m_window.statusBar()->repaint(); // now: long work says how far it is without going back to the event loop
}

void WindowTalk::sayUntilEdit(const QString &hint)
{
    say(hint);
    m_untilEdit = hint;
}

void WindowTalk::edited()
{
    // Somebody else may have said something since.
    if (!m_untilEdit.isEmpty() && m_window.statusBar()->currentMessage() == m_untilEdit)
        m_window.statusBar()->clearMessage();
    m_untilEdit.clear();
}

void WindowTalk::runLong(const QString &what, const std::function<void(const Progress &)> &work)
{
    LongWork shown(*m_window.statusBar(), what);
    work([&shown](qsizetype done, qsizetype all) { shown.tell(done, all); });
}

} // namespace quillmere
