#include "asking/forms/MessagePrompts.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

namespace quillmere {

namespace {

constexpr int kInputWidth = 560;   // pixels
constexpr int kMessageWidth = 340; // pixels, so that a title is not cut off above a short text

// A box belongs to the dialog that has it asked: the window system gives the keyboard back to the owner.
QWidget *ownerOf(QWidget *window)
{
    QWidget *dialog = QApplication::activeModalWidget();
    return dialog ? dialog : window;
}

// A box must not come up behind a dialog of ours that stays on top, or the program seems to hang.
void prepare(QMessageBox &box)
{
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.setTextFormat(Qt::PlainText); // names from a theme must not turn into markup
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout()))
        grid->addItem(new QSpacerItem(kMessageWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

} // namespace

bool MessagePrompts::askWith(QMessageBox::StandardButton preset, const QString &title, const QString &text)
{
    const bool warily = preset == QMessageBox::No;
    QMessageBox box(warily ? QMessageBox::Warning : QMessageBox::Question, title, text,
                    QMessageBox::Yes | QMessageBox::No, ownerOf(m_window));
    prepare(box);
    box.setDefaultButton(preset);
    return box.exec() == QMessageBox::Yes;
}

bool MessagePrompts::ask(const QString &title, const QString &text)
{
    return askWith(QMessageBox::Yes, title, text);
}

bool MessagePrompts::askWarily(const QString &title, const QString &text)
{
    return askWith(QMessageBox::No, title, text);
}

void MessagePrompts::tell(const QString &title, const QString &text, Icon icon)
{
    QMessageBox box(icon == Icon::Critical ? QMessageBox::Critical : QMessageBox::Information, title, text,
                    QMessageBox::Ok, ownerOf(m_window));
    prepare(box);
    box.exec();
}

std::optional<QString> MessagePrompts::input(const QString &title, const QString &prompt,
                                             const QString &preset)
{
    QInputDialog dialog(ownerOf(m_window));
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
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
