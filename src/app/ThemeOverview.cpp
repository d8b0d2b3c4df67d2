#include "app/ThemeOverview.h"

#include "app/OpenDocument.h"
#include "asking/Talk.h"
#include "checks/forms/LiveCheck.h"
#include "controls/Commands.h"
#include "files/Files.h"
#include "keeping/forms/OutsideChanges.h"
#include "preview/forms/PreviewFrame.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"
#include "widgets/forms/WidgetTab.h"

#include <QAction>
#include <QHash>

namespace quillmere {

namespace {

void count(const Problem &problem, WindowProblems &found)
{
    const bool isWorst = problem.severity() == Severity::Error     ? found.errors == 0
                         : problem.severity() == Severity::Warning ? found.errors + found.warnings == 0
                                                                   : found == WindowProblems();
    if (isWorst)
        found.first = problem.message();
    ++(problem.severity() == Severity::Error     ? found.errors
       : problem.severity() == Severity::Warning ? found.warnings
                                                 : found.notes);
}

} // namespace

ThemeOverview::ThemeOverview(const Parts &parts, QWidget &window)
    : QObject(&window), m_parts(parts), m_window(window)
{
    const auto text = [&index = parts.index, &source = parts.source](const QString &path) {
        return path == index.openFile() ? std::optional(source.text()) : std::nullopt;
    };
    m_overview = new Overview(parts.frame, parts.theme, text, parts.talk);
    const auto once = [this](QTimer &timer, auto slot) {
        timer.setSingleShot(true);
        timer.setInterval(0);
        connect(&timer, &QTimer::timeout, this, slot);
    };
    once(m_windows, &ThemeOverview::showWindows);
    once(m_problems, &ThemeOverview::showProblems);

    connect(m_overview, &Overview::windowChosen, this, [this](const QString &path) {
        emit m_parts.windows.documentChosen(path, m_parts.theme.widgets.document.theme());
    });
    connect(&parts.windows, &WidgetTab::markupChosen, this, &ThemeOverview::leave);
    connect(m_overview, &Overview::shown, &m_problems, qOverload<>(&QTimer::start));
    connect(&parts.document, &OpenDocument::opened, this, &ThemeOverview::leave);
    connect(&parts.document, &OpenDocument::textRestored, this, &ThemeOverview::leave);
    connect(&parts.source, &SourceBox::changed, this, [this] {
        if (m_cameItself)
            leave();
    });

    connect(&parts.theme, &ThemeProject::loaded, this, &ThemeOverview::showWindows);
    const auto later = [this] { m_windows.start(); };
    connect(&parts.theme.widgets.LvWidget, &QAbstractItemModel::modelReset, this, later);
    connect(&parts.theme.widgets.LvWidget, &ListRows::edited, this, later);

    OverviewPictures &pictures = m_overview->pictures;
    connect(&parts.index, &LiveIndex::changed, &pictures, &OverviewPictures::changed);
    connect(&parts.outside, &OutsideChanges::looked, &pictures, &OverviewPictures::changed);
    parts.files.onWritten(this, [&pictures](const QString &) { pictures.changed(); });
    connect(&parts.check, &LiveCheck::changed, this, [this] {
        if (m_overview->isVisible())
            m_problems.start();
    });
}

// Not with the frame, which goes when the theme and what is known of it have gone.
ThemeOverview::~ThemeOverview()
{
    delete m_overview;
}

void ThemeOverview::addCommands(Commands &menu)
{
    QAction *item = menu.action("mnuOverview");
    item->setShortcut(Qt::ALT | Qt::Key_Home);
    m_window.addAction(item);
    menu.on("mnuOverview", [this, item] {
        toggle();
        item->setChecked(m_overview->isVisible());
    });
    connect(m_overview, &Overview::shown, item, &QAction::setChecked);
}

void ThemeOverview::toggle()
{
    if (m_overview->isVisible())
        m_overview->leave();
    else if (m_parts.theme.folder().isEmpty())
        m_parts.talk.say(tr("Open a theme first."));
    else
        m_overview->appear(Overview::Keyboard::Comes);
    m_cameItself = false;
}

void ThemeOverview::themeOpened()
{
    if (!m_parts.document.path().isEmpty() || !m_parts.source.document()->isEmpty() ||
        m_parts.theme.widgets.LvWidget.isEmpty())
        return;
    m_cameItself = m_cameItself || !m_overview->isVisible();
    m_overview->appear(Overview::Keyboard::Stays);
}

void ThemeOverview::leave()
{
    m_overview->leave();
}

void ThemeOverview::showWindows()
{
    m_windows.stop();
    m_overview->showWindows();
    if (m_overview->isVisible())
        m_problems.start();
}

void ThemeOverview::showProblems()
{
    const ThemeIndex *index = m_parts.index.index();
    if (!m_overview->isVisible() || !index)
        return;
    QHash<QString, WindowProblems> byFile;
    WindowProblems *found = nullptr;
    const QString *file = nullptr;
    for (const Problem &problem : *m_parts.check.problems()) {
        if (!file || *file != problem.file) { // they are sorted by it
            file = &problem.file;
            found = &byFile[problem.file];
        }
        count(problem, *found);
    }
    OverviewRows &rows = m_overview->rows;
    QList<WindowProblems> problems;
    for (int number = 0; number < rows.windows(); ++number) {
        const QList<qint32> files = index->numbersOf(rows.window(number).path);
        const IndexedFile at = files.isEmpty() ? IndexedFile() : index->files().at(files.first());
        problems.append(byFile.value(at.found.isEmpty() ? at.path : at.found));
    }
    rows.setProblems(problems);
}

} // namespace quillmere
