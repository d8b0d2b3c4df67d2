#pragma once

#include "asking/Prompts.h"

#include <QMessageBox>

namespace quillmere {

// Asks the person, in boxes over the given window.
class MessagePrompts : public Prompts
{
public:
    explicit MessagePrompts(QWidget *window) : m_window(window) {}

    bool ask(const QString &title, const QString &text) override;
    bool askAbout(const QString &title, const QString &text, const QString &facts) override;
    bool askWarily(const QString &title, const QString &text) override;
    void tell(const QString &title, const QString &text, Icon icon) override;
    std::optional<QString> input(const QString &title, const QString &prompt, const QString &preset) override;
    std::optional<QString> chooseFile(FileFor purpose, const QString &title, const QString &preset,
                                      const QString &filters) override;

private:
    bool askWith(QMessageBox::StandardButton preset, const QString &title, const QString &text,
                 const QString &facts = {});

    QWidget *m_window;
};

} // namespace quillmere
