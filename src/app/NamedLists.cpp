#include "app/NamedLists.h"

#include "app/TabStrip.h"
#include "controls/ListView.h"
#include "controls/TabFrame.h"
#include "markup/mndIni.h"
#include "rows/ListRows.h"
#include "theme/forms/LiveIndex.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kSourceTab = 8; // in the strip

const struct
{
    int tab;
    const char *name;
    std::optional<NameKind> kind;
} kLists[] = {{1, "LvWidget", NameKind::Window},    {2, "lvImage", NameKind::Image},
              {3, "lvColor", NameKind::Colour},     {4, "LvBhs", NameKind::String},
              {4, "lvLang", NameKind::Language},    {5, "lvFont", NameKind::Font},
              {kSourceTab, "lvBlock", std::nullopt}};

} // namespace

NamedLists::NamedLists(const QList<TabFrame *> &tabs, const TabStrip &strip, const LiveIndex &index,
                       QObject *parent)
    : QObject(parent), m_strip(strip), m_index(index)
{
    for (const auto &[tab, name, kind] : kLists)
        m_lists.append({tab, tabs[tab]->findChild<ListView *>(QLatin1String(name)), kind});
}

QList<ListView *> NamedLists::all() const
{
    QList<ListView *> lists;
    for (const Named &named : m_lists)
        lists.append(named.list);
    return lists;
}

void NamedLists::addMenus(const QList<QAction *> &commands)
{
    for (const Named &named : std::as_const(m_lists)) {
        connect(named.list, &ListView::menuWanted, this,
                [commands](QMenu &menu, int) { menu.addActions(commands); });
    }
}

ListView *NamedLists::inUse() const
{
    ListView *shown = nullptr;
    for (const Named &named : m_lists) {
        if (named.tab != m_strip.currentIndex())
            continue;
        if (named.list->hasFocus())
            return named.list;
        if (!shown && named.tab != kSourceTab && named.list->selectedRow() >= 0)
            shown = named.list;
    }
    return shown;
}

std::optional<NamedThing> NamedLists::thingOf(const ListView &list) const
{
    const auto named = std::ranges::find(m_lists, &list, &Named::list);
    const auto *rows = qobject_cast<const ListRows *>(list.model());
    const int row = list.selectedRow();
    if (named == m_lists.end() || !rows || row < 0)
        return std::nullopt;
    NamedThing thing = {named->kind, rows->sub(row, 1)};
    if (thing.kind == NameKind::Image || thing.kind == NameKind::Colour)
        thing.name = StripControlChars(thing.name);
    if (!thing.kind) {
        thing.file = m_index.openFile();
        thing.blockRow = row;
    }
    return thing.name.isEmpty() ? std::nullopt : std::optional(thing);
}

} // namespace quillmere
