#include "app/ThemeChecks.h"

#include "app/StatusLine.h"
#include "app/TabStrip.h"
#include "app/ThemeNames.h"
#include "asking/Talk.h"
#include "checks/forms/CheckTab.h"
#include "checks/forms/ProblemMarks.h"
#include "checks/forms/ProblemMenu.h"
#include "checks/forms/ReadPicture.h"
#include "checks/forms/TextFitCommand.h"
#include "keeping/forms/OutsideChanges.h"
#include "naming/forms/Hovers.h"
#include "source/forms/SourceBox.h"
#include "theme/forms/LiveIndex.h"

#include <QAction>

namespace quillmere {

ThemeChecks::ThemeChecks(LiveIndex &index, QWidget *page, QObject *parent)
    : QObject(parent), check(index, readPicture, this), tab(new CheckTab(check, page)), m_index(index)
{
}

void ThemeChecks::connectTo(const Parts &parts)
{
    connect(&parts.outside, &OutsideChanges::looked, &m_index, &LiveIndex::lookAgain);
    connect(&parts.outside, &OutsideChanges::looked, &check, &LiveCheck::lookAgain);
    connect(tab, &CheckTab::placeChosen, &parts.names.going, &Going::goTo);
    connect(tab, &CheckTab::summaryChanged, &parts.status, &StatusLine::showProblems);
    connect(&parts.status, &StatusLine::problemsChosen, &parts.strip,
            [this, &strip = parts.strip, number = parts.tab] {
                strip.setCurrentIndex(number);
                tab->takeKeyboard();
            });
    new ProblemMarks(check, parts.source, this);
    (new TextFitCommand(check, m_index, parts.theme, parts.talk, this))->addCommands(parts.menu);
    parts.hovers.problemsAt = [this](qsizetype position) {
        QList<Hovers::Fault> faults;
        for (const Problem &problem : check.problemsAt(position))
            faults.append({problem.range, problem.message()});
        return faults;
    };

    ThemeNames &names = parts.names;
    const ThemeEditor editor = {
        [&names](const ThemeEdit &edit, const QString &done) { return names.changes.mend(edit, done); },
        [&names](const QString &path, qint32 row) { names.going.goTo(path, {}, row); },
        [&names](const QString &path) { return names.editing.isOpenText(path); },
        [&names](const QString &path) { return names.editing.openRows(path); }};
    auto *menu = new ProblemMenu(check, m_index, editor, parts.talk, this);
    connect(tab, &CheckTab::menuWanted, menu, &ProblemMenu::popup);
    auto *mend = new QAction(tr("Mend"), &parts.source);
    mend->setShortcuts({Qt::ALT | Qt::Key_Return, Qt::ALT | Qt::Key_Enter});
    mend->setShortcutContext(Qt::WidgetShortcut);
    parts.source.addAction(mend);
    connect(mend, &QAction::triggered, menu, [this, menu, &source = parts.source, &talk = parts.talk] {
        const qsizetype caret = source.selectionStart();
        QList<Problem> problems = check.problemsAt(caret);
        if (problems.isEmpty())
            problems = check.problemsAt(caret - 1); // the caret may stand behind the last letter
        if (problems.isEmpty())
            talk.say(tr("There is no problem at the caret."));
        else
            menu->popup(problems, source.viewport()->mapToGlobal(source.cursorRect().bottomLeft()), &source);
    });
}

} // namespace quillmere
