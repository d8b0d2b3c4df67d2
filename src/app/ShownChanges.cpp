#include "app/ShownChanges.h"

#include "app/OpenDocument.h"
#include "app/StatusLine.h"
#include "app/ThemeEditing.h"
#include "asking/Talk.h"
#include "files/TextFile.h"
#include "gallery/forms/ThemePages.h"
#include "gallery/forms/frmChanges.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"

#include <QFileInfo>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

// What the changes lead to; nothing for another text than they were made for.
std::optional<QString> textAfter(const QString &text, const QList<RangeChange> &changes)
{
    const bool fits = std::all_of(changes.begin(), changes.end(), [&text](const RangeChange &change) {
        return change.range.end <= text.size() && change.range.in(text) == change.before;
    });
    return fits ? std::optional(changedText(text, changes)) : std::nullopt;
}

} // namespace

ShownChanges::ShownChanges(StatusLine &status, SourceBox &source, OpenDocument &document,
                           ThemeEditing &editing, const ThemeProject &theme, Talk &talk, QWidget &window)
    : QObject(&window), m_source(source), m_document(document), m_editing(editing), m_theme(theme),
      m_talk(talk), m_window(window), m_button(status.changes)
{
    connect(m_button, &QToolButton::clicked, this, [this] { m_talk.run([this] { show(); }); });
    connect(&source, &SourceBox::rewrittenAll, this, [this](const QString &before) {
        m_inverse.reset();
        m_before = PackedText(before);
        m_parts = receiverParts(m_theme);
        offer(true);
    });
    connect(&source, &SourceBox::changed, this, [this] {
        if (!m_source.isRewriting() && m_before)
            offer(false);
    });
    connect(&editing, &ThemeEditing::applying, this, [this] {
        m_partsBefore = receiverParts(m_theme);
        m_screenBefore = screenPixels(m_theme);
    });
    connect(&editing, &ThemeEditing::made, this, [this](const ThemeEdit &inverse) {
        ++m_edits;
        m_before.reset();
        m_parts = std::exchange(m_partsBefore, {});
        m_inverse = inverse;
        const QStringList paths = inverse.paths();
        offer(std::any_of(paths.begin(), paths.end(),
                          [&](const QString &path) { return !inverse.changesOf(path).isEmpty(); }));
    });
    connect(&editing, &ThemeEditing::allTakenBack, this, [this] { offer(false); });
    connect(&theme, &ThemeProject::loaded, this, [this] {
        offer(false);
        if (m_frmChanges) // of the theme that was open
            m_frmChanges->close();
    });
}

ShownChanges::~ShownChanges() = default;

void ShownChanges::offer(bool offered)
{
    m_button->setVisible(offered);
    if (offered)
        return;
    m_inverse.reset();
    m_before.reset();
    m_parts = {};
}

QString ShownChanges::textNow(const QString &path) const
{
    return m_editing.isOpenText(path) ? m_source.text() : LoadFile(path, m_theme.rule);
}

QList<ChangedWindow> ShownChanges::windows() const
{
    QList<ChangedWindow> changed;
    const QList<ThemeWindow> known = windowsOf(m_theme);
    const auto nameOf = [&known](const QString &path) {
        for (const ThemeWindow &window : known) {
            if (window.document == path)
                return window.name;
        }
        return QFileInfo(path).completeBaseName();
    };
    if (m_before) {
        changed.append({nameOf(m_document.path()), m_document.path(), m_before->text(), m_source.text()});
        return changed;
    }
    for (const QString &path : m_inverse ? m_inverse->paths() : QStringList()) {
        const bool isWindow = std::any_of(known.begin(), known.end(), [&path](const ThemeWindow &window) {
            return window.document == path;
        });
        const QString after = isWindow ? textNow(path) : QString();
        const QList<RangeChange> changes = m_inverse->changesOf(path);
        if (const auto before = textAfter(after, changes); isWindow && before && !changes.isEmpty())
            changed.append({nameOf(path), path, *before, after});
    }
    return changed;
}

void ShownChanges::show()
{
    const QList<ChangedWindow> changed = windows();
    if (changed.isEmpty()) {
        m_talk.say(tr("No window looks different, or all have changed again since."));
        return;
    }
    const bool writes = std::any_of(changed.begin(), changed.end(), [this](const ChangedWindow &window) {
        return !m_editing.isOpenText(window.path);
    });
    std::function<void(const QList<ChangedWindow> &)> takesBack;
    if (writes && m_inverse) // what is shown, whatever else was changed while it was looked at
        takesBack = [this, inverse = *m_inverse, number = m_edits](const QList<ChangedWindow> &left) {
            m_talk.run([&] { takeBack(left, inverse, number); });
        };
    const QSize now = screenPixels(m_theme), screen = m_inverse ? now.expandedTo(m_screenBefore) : now;
    const ChangesTheme theme{m_theme.folder(), screen, m_parts, receiverParts(m_theme)};
    m_frmChanges = std::make_unique<frmChanges>(changed, theme, takesBack, m_window);
    m_frmChanges->present(ModelessDialog::Keyboard::Takes);
}

// As one edit: a window that was changed again since lets none be written.
void ShownChanges::takeBack(const QList<ChangedWindow> &windows, const ThemeEdit &inverse, int number)
{
    ThemeEdit edit, left = inverse;
    for (const ChangedWindow &window : windows)
        edit.replace(window.path, ThemeEdit::markOf(window.after), inverse.changesOf(window.path));
    const bool isLast = number == m_edits;
    const ReceiverParts parts = m_parts;
    const QSize screen = m_screenBefore;
    if (!m_editing.apply(edit))
        return;
    left.leaveOut(edit.paths());
    emit m_editing.takenBack(edit.paths());
    if (isLast) { // what is shown from now on is the rest
        m_inverse = left;
        m_parts = parts;
        m_screenBefore = screen;
        offer(!left.paths().isEmpty());
    }
    m_talk.say(windows.size() == 1 ? tr("Taken back in 1 window.")
                                   : tr("Taken back in %1 windows.").arg(windows.size()));
}

} // namespace quillmere
