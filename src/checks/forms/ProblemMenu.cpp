#include "checks/forms/ProblemMenu.h"

#include "asking/Talk.h"
#include "checks/WindowReport.h"
#include "checks/forms/LiveCheck.h"
#include "controls/ListColumns.h"
#include "controls/ListView.h"
#include "files/Paths.h"
#include "theme/forms/LiveIndex.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostShown = 300; // letters of a line that a question shows

QString shortened(const QString &line)
{
    return line.size() > kMostShown ? QString(line.first(kMostShown) + u'\u2026') : line;
}

// A name may hold what a menu takes for the mark of a key.
QString asCaption(QString text)
{
    return text.replace(u'&', QLatin1String("&&"));
}

} // namespace

ProblemMenu::ProblemMenu(LiveCheck &check, const LiveIndex &index, ThemeEditor editor, Talk &talk,
                         QObject *parent)
    : QObject(parent), m_check(check), m_index(index), m_editor(std::move(editor)), m_talk(talk)
{
}

void ProblemMenu::popup(const QList<Problem> &problems, const QPoint &at, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("mnuProblem"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    for (const Problem &problem : problems) {
        if (problems.size() > 1)
            menu->addSection(asCaption(problem.message()));
        addMends(*menu, problem);
        menu->addSeparator();
        addIgnoring(*menu, problem);
    }
    addIgnored(*menu);
    if (auto *list = qobject_cast<ListView *>(parent)) {
        menu->addSeparator();
        if (!problems.isEmpty()) {
            QAction *copy = menu->addAction(tr("Copy Message"));
            copy->setObjectName(QStringLiteral("mnuCopyMessage"));
            copy->setToolTip(tr("Copies the text of the problem."));
            connect(copy, &QAction::triggered, this, [message = problems.first().message()] {
                QGuiApplication::clipboard()->setText(message);
            });
        }
        list->columns().addItems(*menu->addMenu(tr("Columns")));
    }
    menu->popup(at);
    if (!menu->actions().isEmpty())
        menu->setActiveAction(menu->actions().first());
}

void ProblemMenu::addMends(QMenu &menu, const Problem &problem)
{
    if (!m_index.index())
        return;
    const ThemeSources sources = m_index.sources();
    for (const Mend &each : mendsFor(problem, {sources, *m_index.index(), m_editor.openRows})) {
        QAction *item = menu.addAction(asCaption(each.title));
        item->setObjectName(QStringLiteral("mnuMend"));
        item->setToolTip(tr("Mends the problem. A file that is not open is shown before it is written."));
        connect(item, &QAction::triggered, this, [this, each] { mend(each); });
    }
}

// What is open is seen to change; a file that is closed is shown before it is written.
bool ProblemMenu::mayChange(const Mend &mend)
{
    if ((mend.before.isEmpty() && mend.after.isEmpty()) || m_editor.isOpenText(mend.file))
        return true;
    const QString file = quoted(fileNameOf(mend.file)), before = shortened(mend.before),
                  after = shortened(mend.after);
    QString question = tr("Change this in %1?\n\n%2\n\nIt becomes:\n\n%3").arg(file, before, after);
    if (mend.before.isEmpty())
        question = tr("Add this to %1?\n\n%2").arg(file, after);
    else if (mend.after.isEmpty())
        question = tr("Remove this from %1?\n\n%2").arg(file, before);
    return m_talk.ask(tr("Change File"), question);
}

void ProblemMenu::mend(const Mend &mend)
{
    if (!mayChange(mend))
        return;
    m_talk.run([&] {
        if (!m_editor.apply(mend.edit, mend.done))
            return;
        if (mend.row >= 0)
            m_editor.goTo(mend.file, mend.row);
    });
}

void ProblemMenu::addIgnoring(QMenu &menu, const Problem &problem)
{
    const QString rule = QLatin1String(textOf(problem.rule).id);
    const auto add = [&](const QString &caption, const char *name, const QString &tip,
                         const IgnoredRule &ignored) {
        QAction *item = menu.addAction(asCaption(caption));
        item->setObjectName(QLatin1String(name));
        item->setToolTip(tip);
        connect(item, &QAction::triggered, this, [this, ignored] { ignore(ignored); });
    };
    if (!problem.name.isEmpty())
        add(tr("Ignore %1 for %2 in This Theme").arg(rule, quoted(problem.name)), "mnuIgnoreName",
            tr("No longer reports this rule for this name."), {problem.rule, problem.name});
    add(tr("Ignore %1 in This Theme").arg(rule), "mnuIgnoreRule", tr("No longer reports this rule."),
        {problem.rule, std::nullopt});
}

void ProblemMenu::addIgnored(QMenu &menu)
{
    if (m_check.ignored().isEmpty())
        return;
    menu.addSeparator();
    QMenu *ignored = menu.addMenu(tr("Report Again"));
    ignored->setToolTipsVisible(true);
    for (const IgnoredRule &each : m_check.ignored()) {
        QAction *item = ignored->addAction(asCaption(textOf(each)));
        item->setObjectName(QStringLiteral("mnuTellAgain"));
        item->setToolTip(tr("Reports again what is ignored now."));
        connect(item, &QAction::triggered, this, [this, each] {
            QList<IgnoredRule> left = m_check.ignored();
            left.removeAll(each);
            m_check.setIgnored(left);
        });
    }
}

void ProblemMenu::ignore(const IgnoredRule &rule)
{
    QList<IgnoredRule> ignored = m_check.ignored();
    if (!ignored.contains(rule))
        ignored.append(rule);
    m_check.setIgnored(ignored);
    m_talk.say(
        tr("%1 is ignored in this theme. The context menu of the Check tab undoes that.").arg(textOf(rule)));
}

} // namespace quillmere
