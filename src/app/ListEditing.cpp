#include "app/ListEditing.h"

#include "app/TabStrip.h"
#include "controls/Commands.h"
#include "controls/ListFilter.h"
#include "controls/ListView.h"
#include "controls/TabFrame.h"
#include "files/Files.h"
#include "source/forms/SourceBox.h"
#include "stage/forms/TranslationSteps.h"
#include "theme/ThemeProject.h"

#include <QAction>
#include <QMainWindow>
#include <QStatusBar>

namespace quillmere {

namespace {

enum Tab { Widgets = 1, Images, Colours, Languages, Fonts, Keys, Source = 8 }; // in the strip
constexpr int kSoon = 100;                                                     // ms

const struct
{
    Tab tab;
    const char *command;
} kSaves[] = {{Images, "mnuImgSave"}, {Colours, "mnuCSave"}, {Languages, "mnuLangSave"}};

// Those that Ctrl+F filters.
const struct
{
    Tab tab;
    const char *list;
} kFiltered[] = {{Widgets, "LvWidget"}, {Images, "lvImage"}, {Colours, "lvColor"},
                 {Languages, "LvBhs"},  {Fonts, "lvFont"},   {Keys, "lvKeyMap"}};

// The rows of a list that no theme holds.
ListRows &rowsOf(const TabFrame &tab, const char *list)
{
    auto *rows = qobject_cast<ListRows *>(tab.findChild<ListView *>(QLatin1String(list))->model());
    Q_ASSERT(rows);
    return *rows;
}

} // namespace

ListEditing::ListEditing(ThemeProject &theme, const QList<TabFrame *> &tabs, TabStrip &strip,
                         const SourceBox &source, TranslationSteps &translations, Files &files,
                         const Commands &menu, QMainWindow &window)
    : QObject(&window), m_theme(theme), m_strip(strip), m_source(source),
      m_windows(theme.widgets.LvWidget, RowsHistory::Of::Ticks), m_images(theme.images.rows),
      m_colours(theme.lvColor), m_strings(theme.LvBhs),
      m_blocks(rowsOf(*tabs[Source], "lvBlock"), RowsHistory::Of::Ticks)
{
    translations.setStrings(m_strings);
    const struct
    {
        RowsHistory &history;
        Tab tab;
        const char *list;
        const ListRows &rows;
    } lists[] = {{m_windows, Widgets, "LvWidget", theme.widgets.LvWidget},
                 {m_images, Images, "lvImage", theme.images.rows},
                 {m_colours, Colours, "lvColor", theme.lvColor},
                 {m_strings, Languages, "LvBhs", theme.LvBhs}};
    const auto soon = [this] { m_soon.start(); };
    for (const auto &[history, tab, list, rows] : lists) {
        history.addTo(*tabs[tab]->findChild<ListView *>(QLatin1String(list)));
        connect(&rows, &ListRows::edited, this, soon);
        connect(&rows, &ListRows::edited, this, &ListEditing::edited);
        connect(&rows, &ListRows::modelReset, this, soon);
    }
    m_blocks.addTo(*tabs[Source]->findChild<ListView *>(QStringLiteral("lvBlock")));
    // What the line below says of the command that is taken back is no longer so.
    for (const TabFrame *tab : tabs) {
        for (const auto &[name, said] :
             {std::pair("mnuRowsUndo", tr("Undone.")), std::pair("mnuRowsRedo", tr("Redone."))}) {
            for (const QAction *step : tab->findChildren<QAction *>(QLatin1String(name)))
                connect(step, &QAction::triggered, &window,
                        [&window, said = said] { window.statusBar()->showMessage(said); });
        }
    }
    connect(&source, &SourceBox::changed, this, soon);
    connect(&source, &SourceBox::changed, this, &ListEditing::edited);
    files.onWritten(this, [soon](const QString &) { soon(); });
    for (const TabFrame *tab : tabs) {
        for (ListView *list : tab->findChildren<ListView *>())
            connect(&theme, &ThemeProject::loaded, list, [list] { list->sortBy(-1, Qt::AscendingOrder); });
    }
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoon);
    connect(&m_soon, &QTimer::timeout, this, &ListEditing::showMarks);

    // On the Source tab it is File > Save that has the key.
    for (const auto &[tab, command] : kSaves)
        connect(addKey(window, tab, QKeySequence::Save), &QAction::triggered, menu.action(command),
                &QAction::trigger);
    for (const auto &[tab, name] : kFiltered) {
        auto *filter = new ListFilter(*tabs[tab]->findChild<ListView *>(QLatin1String(name)));
        connect(menu.action("mnuFind"), &QAction::triggered, filter, [this, filter, at = tab] {
            if (m_strip.currentIndex() == at)
                filter->open();
        });
    }
}

QAction *ListEditing::addKey(QMainWindow &window, int tab, const QKeySequence &key)
{
    auto *action = new QAction(this);
    action->setShortcut(key);
    window.addAction(action);
    const auto enable = [this, action, tab] { action->setEnabled(m_strip.currentIndex() == tab); };
    connect(&m_strip, &QTabBar::currentChanged, action, enable);
    enable();
    return action;
}

void ListEditing::showMarks()
{
    m_strip.setMarked(Images, m_theme.images.document.isEdited());
    m_strip.setMarked(Colours, m_theme.colours.document.isEdited());
    m_strip.setMarked(Languages, m_theme.language.document.isEdited());
    m_strip.setMarked(Source, m_source.document()->isModified());
}

} // namespace quillmere
