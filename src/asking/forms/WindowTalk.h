#pragma once

#include "asking/Talk.h"
#include "asking/forms/MessagePrompts.h"

class QMainWindow;

namespace quillmere {

// Talks to the person over a window and in its status bar.
class WindowTalk : public Talk
{
public:
    // `prompts` asks; without one the questions come in boxes over the window.
    WindowTalk(QMainWindow &window, Prompts *prompts);

    bool ask(const QString &title, const QString &text) override;
    bool askAbout(const QString &title, const QString &text, const QString &facts) override;
    bool askWarily(const QString &title, const QString &text) override;
    void tell(const QString &title, const QString &text, Icon icon) override;
    std::optional<QString> input(const QString &title, const QString &prompt, const QString &preset) override;
    std::optional<QString> chooseFile(FileFor purpose, const QString &title, const QString &preset,
                                      const QString &filters) override;
    void say(const QString &hint) override;
    void sayUntilEdit(const QString &hint) override;
    // Something was edited.
    void edited();
    void runLong(const QString &what, const std::function<void(const Progress &)> &work) override;

private:
    QMainWindow &m_window;
    MessagePrompts m_boxes;
    Prompts &m_prompts;
    QString m_untilEdit; // what was said last until then
};

} // namespace quillmere
