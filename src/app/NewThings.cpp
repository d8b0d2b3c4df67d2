#include "app/NewThings.h"

#include "app/OpenDocument.h"
#include "app/TabStrip.h"
#include "app/ThemeNames.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "making/WindowLook.h"
#include "making/forms/frmNewLanguage.h"
#include "making/forms/frmNewWindow.h"
#include "source/SavedText.h"
#include "source/forms/SourceBox.h"
#include "theme/ReceiverParts.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

namespace quillmere {

namespace {

constexpr int kSourceTab = 8; // in the strip

ListView &listOfWindows(const QWidget &window)
{
    return *window.findChild<ListView *>(QStringLiteral("LvWidget"));
}

} // namespace

NewThings::NewThings(const Parts &parts, QWidget &window) : QObject(&window), m_parts(parts), m_window(window)
{
}

void NewThings::addCommands(Commands &menu)
{
    menu.on("mnuWidgetNew", [this] { mnuWidgetNew_Click(); });
    menu.on("mnuWidgetDuplicate", [this] { mnuWidgetDuplicate_Click(); });
    menu.on("mnuWidgetRename", [this] { mnuWidgetRename_Click(); });
    menu.on("mnuLangNew", [this] { mnuLangNew_Click(); });
}

void NewThings::requireWindows() const
{
    if (m_parts.theme.folder().isEmpty())
        throw RunTimeError(tr("Open a theme first."));
    if (m_parts.theme.widgets.document.path().isEmpty())
        throw RunTimeError(tr("The theme.xml of this theme names no window catalogue."));
}

int NewThings::windowInHand() const
{
    const ListRows &windows = m_parts.theme.widgets.LvWidget;
    int row = listOfWindows(m_window).selectedRow();
    if (m_parts.strip.currentIndex() == kSourceTab) {
        row = 0;
        while (row < windows.count() && windows.text(row) != m_parts.document.path())
            ++row;
    }
    if (row >= 0 && row < windows.count())
        return row;
    m_parts.talk.say(tr("Select a window on the Widget tab first."));
    return -1;
}

void NewThings::mnuWidgetNew_Click()
{
    requireWindows();
    const auto make = [this](const QString &name, WindowTemplate kind) {
        const WindowLook look = lookOf(m_parts.theme, m_parts.index.sources());
        return makeWindow(name, windowText(kind, name, look), CodePage::Utf8);
    };
    auto *dialog = new frmNewWindow({}, WindowNames(m_parts.theme), make, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void NewThings::mnuWidgetDuplicate_Click()
{
    requireWindows();
    const int row = windowInHand();
    if (row < 0)
        return;
    const QString path = m_parts.theme.widgets.LvWidget.text(row);
    const QString original = m_parts.theme.widgets.LvWidget.sub(row, 1);
    // What is not saved yet is what one sees, and counts.
    const bool isUnsaved = m_parts.names.editing.isOpenText(path) && m_parts.names.editing.isUnsaved(path);
    const DecodedText text = isUnsaved ? DecodedText{textToSave(m_parts.source.text()),
                                                     m_parts.document.document().encoding().page}
                                       : LoadText(path, m_parts.theme.rule);
    if (text.text.isEmpty())
        throw RunTimeError(
            tr("The window \"%1\" has no document, so there is nothing to duplicate.").arg(original));
    const auto make = [this, text, original](const QString &name, WindowTemplate) {
        return makeWindow(name, withWindowName(text.text, original, name), text.page);
    };
    auto *dialog = new frmNewWindow(original, WindowNames(m_parts.theme), make, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void NewThings::mnuWidgetRename_Click()
{
    if (const int row = windowInHand(); row >= 0)
        m_parts.names.renameThing({NameKind::Window, m_parts.theme.widgets.LvWidget.sub(row, 1)});
}

void NewThings::mnuLangNew_Click()
{
    if (m_parts.theme.folder().isEmpty())
        throw RunTimeError(tr("Open a theme first."));
    if (m_parts.theme.languageList.path().isEmpty())
        throw RunTimeError(tr("The theme.xml of this theme names no language catalogue."));
    auto *dialog = new frmNewLanguage(
        LanguageNames(m_parts.theme), languageNames(m_parts.theme),
        [this](const NewLanguage &language, int model) { return makeLanguage(language, model); }, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

bool NewThings::makeLanguage(const NewLanguage &language, int model)
{
    bool made = false;
    m_parts.talk.run([&] {
        const ThemeSources sources = m_parts.index.sources();
        QStringList texts;
        if (model >= 0)
            texts = sourcesOf(sources, m_parts.theme.lvLang.text(model));
        else if (const auto index = m_parts.index.sharedIndex())
            texts = textsOfWindows(*index);
        else // it is still being made
            texts = textsOfWindows(*ThemeIndex::build(sources));
        int leftOut = 0;
        const ThemeEdit edit = newLanguage(m_parts.theme, sources, language, texts, leftOut);
        QString done = tr("Made the language \"%1\".").arg(language.id);
        if (leftOut > 0)
            done +=
                u' ' + tr("Texts with a quote or \">\", which no language file can hold, are left out: %1.")
                           .arg(leftOut);
        made = m_parts.names.changes.make(edit, done, tr("Undo New Language"));
        if (!made)
            return;
        for (const ListRows::Row &row : m_parts.theme.lvLang.rows()) {
            if (row.sub(1) == language.id)
                m_parts.names.going.goTo(withOwnSeparators(row.text), {}, 0);
        }
        m_parts.talk.say(QString(done + u' ' + m_parts.names.changes.unsavedAfter(edit)).trimmed());
    });
    return made;
}

bool NewThings::makeWindow(const QString &name, const QString &text, CodePage page)
{
    bool made = false;
    m_parts.talk.run([&] {
        const ThemeEdit edit = newWindow(m_parts.theme, m_parts.index.sources(), name, text, page);
        const QString done = tr("Made the window \"%1\".").arg(name);
        made = m_parts.names.changes.make(edit, done, tr("Undo New Window"));
        if (!made)
            return;
        QString path = edit.created().first().path;
        const ListRows &windows = m_parts.theme.widgets.LvWidget;
        for (int row = 0; row < windows.count(); ++row) {
            if (windows.sub(row, 1) != name)
                continue;
            listOfWindows(m_window).setCurrentIndex(windows.index(row, 0));
            path = windows.text(row);
        }
        m_parts.names.going.goTo(path, {}, -1);
        m_parts.talk.say(QString(done + u' ' + m_parts.names.changes.unsavedAfter(edit)).trimmed());
    });
    return made;
}

} // namespace quillmere
