#include "platform/MessagePrompts.h"

#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

namespace quillmere {

namespace {

constexpr int kInputWidth = 560; // pixels

} // namespace

bool MessagePrompts::ask(const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, m_window);
    box.setTextFormat(Qt::PlainText); // names from a theme must not turn into markup
    return box.exec() == QMessageBox::Yes;
}

void MessagePrompts::tell(const QString &title, const QString &text, Icon icon)
{
    QMessageBox box(icon == Icon::Critical ? QMessageBox::Critical : QMessageBox::Information, title, text,
                    QMessageBox::Ok, m_window);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

std::optional<QString> MessagePrompts::input(const QString &title, const QString &prompt,
                                             const QString &preset)
{
    QInputDialog dialog(m_window);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(preset);
    for (QLabel *label : dialog.findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    // Wide enough to read a sentence in; a longer prompt is wrapped, a longer answer scrolls.
    dialog.resize(kInputWidth, dialog.heightForWidth(kInputWidth));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

} // namespace quillmere
