#pragma once

#include "naming/FoundPlaces.h"

#include <QList>
#include <QObject>

#include <optional>

class QAction;

namespace quillmere {

class ListView;
class LiveIndex;
class TabFrame;
class TabStrip;

// The lists whose rows have names: windows, images, colours, strings, languages, fonts, and the blocks of the
// open window.
class NamedLists : public QObject
{
    Q_OBJECT

public:
    NamedLists(const QList<TabFrame *> &tabs, const TabStrip &strip, const LiveIndex &index,
               QObject *parent = nullptr);

    QList<ListView *> all() const;
    // Gives each row of each list a context menu of these commands.
    void addMenus(const QList<QAction *> &commands);
    // The list that has the focus, else, off the Source tab, the first one shown that has a selected row;
    // nullptr where there is none.
    ListView *inUse() const;
    // What the selected row of a list is about; nothing where none is, or it has no name.
    std::optional<NamedThing> thingOf(const ListView &list) const;

private:
    struct Named
    {
        int tab;
        ListView *list;
        std::optional<NameKind> kind; // none for blocks
    };

    QList<Named> m_lists;
    const TabStrip &m_strip;
    const LiveIndex &m_index;
};

} // namespace quillmere
