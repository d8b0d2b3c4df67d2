#include "app/WideChanges.h"

#include "asking/Talk.h"
#include "i18n/forms/LangTab.h"
#include "naming/forms/PlaceRows.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <QAction>

#include <algorithm>
#include <utility>

namespace quillmere {

WideChanges::WideChanges(SourceBox &source, ThemeEditing &editing, LiveIndex &index, ThemeProject &theme,
                         Talk &talk, QObject *parent)
    : QObject(parent), m_source(source), m_editing(editing), m_index(index), m_theme(theme), m_talk(talk)
{
    connect(&editing, &ThemeEditing::takenBack, this, [this](const QStringList &paths) {
        if (m_inverse)
            m_inverse->leaveOut(paths);
    });
    connect(&source, &SourceBox::changed, this, &WideChanges::tellOthers);
    // Later: the list says what it has done first.
    for (const ListRows *rows : std::initializer_list<const ListRows *>{
             &theme.images.rows, &theme.lvColor, &theme.LvBhs, &theme.widgets.LvWidget})
        connect(rows, &ListRows::edited, this, &WideChanges::tellOtherRows, Qt::QueuedConnection);
}

void WideChanges::setUndo(QAction *undo)
{
    m_undo = undo;
    m_undo->setEnabled(false);
}

bool WideChanges::make(const ThemeEdit &edit, const QString &done, const QString &undo,
                       const std::function<void()> &follow)
{
    std::optional<ThemeEdit> inverse = m_editing.apply(edit);
    if (!inverse)
        return false;
    m_inverse = std::move(inverse);
    m_follow = follow;
    m_undo->setText(undo);
    m_undo->setEnabled(true);
    m_talk.say(QString(done + u' ' + unsavedAfter(edit)).trimmed());
    return true;
}

bool WideChanges::mend(const ThemeEdit &edit, const QString &done)
{
    const QStringList paths = edit.paths();
    if (std::any_of(paths.begin(), paths.end(), [&](const QString &path) {
            return !edit.changesOf(path).isEmpty() && !m_editing.isOpenText(path);
        }))
        return make(edit, done, tr("Undo Mend"));
    if (!m_editing.apply(edit))
        return false;
    m_talk.say(QString(done + u' ' + unsavedAfter(edit)).trimmed());
    return true;
}

QString WideChanges::unsavedAfter(const ThemeEdit &edit) const
{
    QStringList unsaved;
    for (const QString &path : edit.paths()) {
        const QString now = edit.pathAfter(path);
        if (m_editing.isUnsaved(now))
            unsaved.append(shownPath(now, m_theme.folder()));
    }
    if (!unsaved.isEmpty())
        return tr("Not saved yet: %1.").arg(unsaved.join(QStringLiteral(", ")));
    for (const ThemeEdit::WholeBytes &file : edit.removed()) {
        if (file.path == m_index.openFile() || file.path == m_theme.language.document.path())
            return tr("%1 was deleted but is still open here; saving would create it again.")
                .arg(shownPath(file.path, m_theme.folder()));
    }
    return {};
}

void WideChanges::takeBack()
{
    if (!m_inverse)
        return;
    const ThemeEdit edit = *m_inverse;
    if (!m_editing.apply(edit))
        return;
    const auto follow = std::exchange(m_follow, {});
    forget();
    emit m_editing.allTakenBack();
    if (follow)
        follow();
    m_talk.say(QString(tr("Taken back.") + u' ' + unsavedAfter(edit)).trimmed());
}

void WideChanges::forget()
{
    m_inverse.reset();
    m_follow = {};
    if (m_undo)
        m_undo->setEnabled(false);
}

// Undoing in the source is one window's; nobody would guess that the other files have stayed as they are.
void WideChanges::tellOthers()
{
    if (!m_inverse || m_source.document()->availableRedoSteps() == 0 || m_inverse->paths().size() < 2 ||
        !m_inverse->isTakenBack(m_index.openFile(), m_source.text()))
        return;
    sayRest(tr("Taken back in this window alone"));
}

void WideChanges::tellOtherRows()
{
    const QStringList paths = m_inverse && m_inverse->paths().size() > 1 ? m_inverse->paths() : QStringList();
    const bool isBack = std::any_of(paths.begin(), paths.end(), [this](const QString &path) {
        const auto rows = m_editing.openRows(path);
        return rows && m_inverse->areTakenBack(path, *rows);
    });
    if (std::exchange(m_isToldOfRows, isBack) != isBack && isBack)
        sayRest(tr("Taken back in this list alone"));
}

void WideChanges::sayRest(const QString &what)
{
    m_talk.say(tr("%1; \"%2\" in the Tool menu takes back the rest.")
                   .arg(what, QString(m_undo->text()).remove(u'&')));
}

} // namespace quillmere
