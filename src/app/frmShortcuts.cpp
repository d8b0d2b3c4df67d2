#include "app/frmShortcuts.h"

#include "app/MenuCommands.h"
#include "controls/ListView.h"
#include "controls/Named.h"

#include <QAction>
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QSet>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kWidth = 760, kHeight = 560; // pixels

struct Keys
{
    const char *where;
    const char *keys;
    const char *what;
};

// Keys that belong to no command, since they are what a list, a text or the picture lives by.
constexpr Keys kKeys[] = {
    {"Anywhere", "F6, Shift+F6", "Focus the next or the previous part of the window"},
    {"Anywhere", "Ctrl+Tab, Ctrl+Shift+Tab", "Go through the windows that were open last"},
    {"Lists", "Enter", "Open the row"},
    {"Lists", "Space", "Tick the row"},
    {"Lists", "Delete", "Remove the row"},
    {"Lists", "Ctrl+C", "Copy the cell"},
    {"Lists", "Menu, Shift+F10", "Open the context menu"},
    {"Folder list", "Backspace", "Go up a folder"},
    {"Tabs", "Ctrl+S", "Save what the tab is about"},
    {"Source", "Tab, Shift+Tab", "Indent, unindent"},
    {"Source", "Ctrl+D", "Double the line or the selection"},
    {"Source", "Ctrl+Space, Alt+/", "List the names that fit"},
    {"Source", "Ctrl+F1", "Show what the name stands for"},
    {"Picture", "Arrows; with Shift", "Move the selected blocks by 1 pixel; by 10"},
    {"Picture", "Ctrl and arrows; with Shift", "Size the selected blocks by 1 pixel; by 10"},
    {"Picture", "Tab, Shift+Tab", "Select the next or the previous block"},
    {"Picture", "Ctrl+A, Esc", "Select all, select nothing"},
    {"Picture", "Ctrl+C, Ctrl+X, Ctrl+V", "Copy, cut and paste whole elements"},
    {"Picture", "Space and the left button", "Drag the picture"},
    {"Translation", "Enter, Ctrl+Enter", "Take the translation; take it and go on to the next"},
    {"Translation", "Shift+Enter", "Break the line"},
    {"Translation", "Alt+1 to Alt+9", "Take a suggestion"},
};

QString keysOf(const QAction &action)
{
    QStringList keys;
    for (const QKeySequence &each : action.shortcuts())
        keys.append(each.toString(QKeySequence::NativeText));
    return keys.join(QStringLiteral(", "));
}

// What an action says beyond its caption.
QString tipOf(const QAction &action)
{
    const QString tip = action.toolTip();
    return tip == plainCaption(action) ? QString() : tip;
}

} // namespace

frmShortcuts::frmShortcuts(QMainWindow &owner)
    : ModelessDialog(QStringLiteral("frmShortcuts"), owner), m_window(owner),
      txtShortcuts(named(new QLineEdit, "txtShortcuts", tr("Filter"))),
      lvShortcuts(new ListView(QStringLiteral("lvShortcuts"), tr("Keyboard shortcuts"), m_rows)),
      lblShortcuts(named(new QLabel, "lblShortcuts", tr("Number of rows")))
{
    setWindowTitle(tr("Keyboard Shortcuts"));
    txtShortcuts->setPlaceholderText(tr("Type a command, a key or a word to filter"));
    txtShortcuts->setToolTip(tr("Leaves only the rows that contain all of these words."));
    txtShortcuts->setClearButtonEnabled(true);
    txtShortcuts->installEventFilter(this);
    lvShortcuts->setToolTip(tr("Every command and key, with what it does."));
    lvShortcuts->setTextElideMode(Qt::ElideRight);
    m_rows.setHorizontalHeaderLabels({tr("Command"), tr("Keys"), tr("What it does")});
    lvShortcuts->setColumnShares({3, 2, 4});
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *below = new QHBoxLayout;
    below->addWidget(lblShortcuts, 1);
    below->addWidget(buttons);
    auto *column = new QVBoxLayout(this);
    column->addWidget(txtShortcuts);
    column->addWidget(lvShortcuts, 1);
    column->addLayout(below);
    resize(kWidth, kHeight);
    connect(txtShortcuts, &QLineEdit::textChanged, this, &frmShortcuts::filter);
}

void frmShortcuts::open()
{
    gather();
    filter();
    present(Keyboard::Takes);
    txtShortcuts->setFocus();
    txtShortcuts->selectAll();
}

void frmShortcuts::add(const QString &caption, const QString &keys, const QString &what)
{
    m_rows.appendRow({new QStandardItem(caption), new QStandardItem(keys), new QStandardItem(what)});
}

void frmShortcuts::gather()
{
    m_rows.removeRows(0, m_rows.rowCount());
    for (const MenuCommand &command : commandsOf(m_window.menuBar()->actions())) {
        if (command.action->objectName().isEmpty())
            continue; // a recent theme
        add(command.caption, keysOf(*command.action), tipOf(*command.action));
    }
    gatherKeys();
}

// Of commands that stand in no menu of the menu bar, then of what is no command at all.
void frmShortcuts::gatherKeys()
{
    QSet<QString> known;
    for (int row = 0; row < m_rows.rowCount(); ++row)
        known.insert(m_rows.item(row, 1)->text());
    const QList<QAction *> actions = m_window.findChildren<QAction *>();
    for (const QAction *action : actions) {
        const QString keys = keysOf(*action);
        if (keys.isEmpty() || action->text().isEmpty() || known.contains(keys))
            continue;
        known.insert(keys);
        add(plainCaption(*action), keys, tipOf(*action));
    }
    for (const Keys &each : kKeys)
        add(QLatin1String(each.where), QLatin1String(each.keys), QLatin1String(each.what));
}

void frmShortcuts::filter()
{
    const QStringList words = txtShortcuts->text().split(u' ', Qt::SkipEmptyParts);
    int found = 0;
    for (int row = 0; row < m_rows.rowCount(); ++row) {
        QString text;
        for (int column = 0; column < m_rows.columnCount(); ++column)
            text += QString(m_rows.item(row, column)->text() + u'\n');
        const bool fits = std::all_of(words.begin(), words.end(), [&](const QString &word) {
            return text.contains(word, Qt::CaseInsensitive);
        });
        lvShortcuts->setRowHidden(row, {}, !fits);
        found += fits;
    }
    lblShortcuts->setText(tr("%1 of %2").arg(found).arg(m_rows.rowCount()));
}

bool frmShortcuts::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtShortcuts && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down) {
        lvShortcuts->setFocus();
        return true;
    }
    return ModelessDialog::eventFilter(watched, event);
}

} // namespace quillmere
