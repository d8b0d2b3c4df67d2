#include "asking/forms/MessagePrompts.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kInputWidth = 560;   // pixels
constexpr int kMessageWidth = 340; // pixels, so that a title is not cut off above a short text

constexpr int kTextWidth = 380;             // pixels, what a box leaves a text at the least
constexpr qsizetype kMostCharacters = 4000; // of a text
constexpr double kFactsShare =
    0.5; // of the height of the screen; the text above them is a question of one line
constexpr qsizetype kMostInTitle = 120;

// A box belongs to the dialog that has it asked: the window system gives the keyboard back to the owner.
QWidget *ownerOf(QWidget *window)
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog)
        dialog = QApplication::activeWindow();
    return dialog ? dialog : window;
}

QString withoutMiddle(const QString &text, qsizetype most)
{
    if (text.size() <= most)
        return text;
    return text.first(most / 2) + u" \u2026 " + text.last(most / 2);
}

// As much of a text, which may hold a whole document, as leaves the buttons of its box on the screen.
QString fitted(const QString &text, const QWidget &box, double share = 0.6)
{
    const int most = int(box.screen()->availableSize().height() * share);
    const QRect room(0, 0, kTextWidth, QWIDGETSIZE_MAX);
    qsizetype size = kMostCharacters;
    QString shown = withoutMiddle(text, size);
    while (size > 2 && box.fontMetrics().boundingRect(room, Qt::TextWrapAnywhere, shown).height() > most) {
        size = std::min(size, text.size()) * 4 / 5;
        shown = withoutMiddle(text, size);
    }
    return shown;
}

// Long words may be broken anywhere: a label breaks between words only.
QString breakable(const QString &text, const QWidget &box)
{
    QString result;
    for (const QString &word : text.split(u' ')) {
        const bool isLong = box.fontMetrics().horizontalAdvance(word) > kTextWidth;
        result += result.isEmpty() ? QString() : QStringLiteral(" ");
        for (const QChar c : word) {
            result += c;
            if (isLong && !c.isHighSurrogate())
                result += QChar(0x200B);
        }
    }
    return result;
}

// A box must not come up behind a dialog of ours that stays on top, or the program seems to hang.
void prepare(QMessageBox &box)
{
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.setWindowTitle(withoutMiddle(box.windowTitle(), kMostInTitle));
    box.setTextFormat(Qt::PlainText); // names from a theme must not turn into markup
    box.setText(fitted(box.text(), box));
    const int width = std::min(kMessageWidth, box.screen()->availableSize().width() * 2 / 3);
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout()))
        grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

// The text format of the box is that of its first text alone. As markup a path would be read for pictures,
// devices among them.
void addFacts(QMessageBox &box, const QString &facts)
{
    box.setInformativeText(facts);
    for (QLabel *label : box.findChildren<QLabel *>()) {
        if (!label->text().isEmpty())
            label->setTextFormat(Qt::PlainText);
    }
}

} // namespace

bool MessagePrompts::askWith(QMessageBox::StandardButton preset, const QString &title, const QString &text,
                             const QString &facts)
{
    const bool warily = preset == QMessageBox::No;
    QMessageBox box(warily ? QMessageBox::Warning : QMessageBox::Question, title, text,
                    QMessageBox::Yes | QMessageBox::No, ownerOf(m_window));
    prepare(box);
    if (!facts.isEmpty())
        addFacts(box, breakable(fitted(facts, box, kFactsShare), box));
    box.setDefaultButton(preset);
    return box.exec() == QMessageBox::Yes;
}

bool MessagePrompts::ask(const QString &title, const QString &text)
{
    return askWith(QMessageBox::Yes, title, text);
}

bool MessagePrompts::askAbout(const QString &title, const QString &text, const QString &facts)
{
    return askWith(QMessageBox::Yes, title, text, facts);
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
    dialog.setWindowTitle(withoutMiddle(title, kMostInTitle));
    dialog.setLabelText(breakable(fitted(prompt, dialog), dialog));
    dialog.setTextValue(preset);
    for (QLabel *label : dialog.findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    // Wide enough to read a sentence in; a longer prompt is wrapped, a longer answer scrolls.
    const int width = std::min(kInputWidth, dialog.screen()->availableSize().width() * 9 / 10);
    dialog.resize(width, dialog.heightForWidth(width));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<QString> MessagePrompts::chooseFile(FileFor purpose, const QString &title,
                                                  const QString &preset, const QString &filters)
{
    if (purpose == FileFor::Reading) {
        const QString path = QFileDialog::getOpenFileName(ownerOf(m_window), title, preset, filters);
        return path.isEmpty() ? std::nullopt : std::optional(QDir::toNativeSeparators(path));
    }
    // A name without an ending gets that of the filter, before it is asked whether a file is written over.
    QFileDialog dialog(ownerOf(m_window), title, QFileInfo(preset).path(), filters);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(preset);
    const auto useFilter = [&dialog](const QString &filter) {
        static const QRegularExpression ending(QStringLiteral("\\*\\.(\\w+)"));
        dialog.setDefaultSuffix(ending.match(filter).captured(1));
    };
    useFilter(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, useFilter);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

} // namespace quillmere
