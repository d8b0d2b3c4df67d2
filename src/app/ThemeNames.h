#pragma once

#include "app/Going.h"
#include "app/NamedLists.h"
#include "app/ThemeEditing.h"
#include "app/WideChanges.h"
#include "naming/FoundPlaces.h"

#include <memory>

class QAction;

namespace quillmere {

class Commands;
class LangTab;
class LiveIndex;
class ReceiverView;
class frmSearch;
class frmUses;
struct TextSearch;

// What the main window does with the names of a theme: leads to them, lists and renames them, and searches
// all windows.
class ThemeNames : public QObject
{
    Q_OBJECT

public:
    ThemeNames(Going::Parts parts, LiveIndex &index, ThemeProject &theme, Files &files, Talk &talk,
               QWidget &window);
    ~ThemeNames() override;

    void addCommands(Commands &menu);

    // Has the Lang tab tell where its strings stand, and shows a place that is chosen there in its language.
    void tellUses(LangTab &tab, ReceiverView &view);

    // Leads to where a name is defined; says so where nothing defines it.
    void goToName(const NamedThing &thing);
    // Asks for another name of a thing and gives it that in every place.
    void renameThing(const NamedThing &thing);

    Going going;
    ThemeEditing editing;
    WideChanges changes;

protected:
    // Ctrl and a click in the source.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void themeLoaded();
    // What the caret or the selected row stands at; nothing, after a hint, where it is nothing with a name.
    std::optional<NamedThing> thingHere() const;
    bool isInUses() const;
    std::optional<NamedThing> hint(const QString &text) const;
    // nullptr, after a hint, while the theme is still being read.
    const ThemeIndex *index() const;
    FoundPlaces find(const NamedThing &thing, const ThemeIndex &index) const;
    void goToDefinition();
    bool goToPartner();
    void showUses();
    void goToPlace(const FoundPlaces &found, int number,
                   const std::function<FoundPlaces(const QString &file, const QString &text)> &again);
    void rename();
    void followRename(const NamedThing &thing, const QString &newName);
    void search();

    LiveIndex &m_index;
    ThemeProject &m_theme;
    SourceBox &m_source;
    NamedLists m_lists;
    TabStrip &m_strip;
    Talk &m_talk;
    QWidget &m_window;
    QList<QAction *> m_dialogActions;   // with keys that work in the dialogs as well
    QList<QAction *> m_nameActions;     // about the name that is selected, or listed
    QString m_folder;                   // of the theme
    std::unique_ptr<frmUses> m_frmUses; // made when they are first wanted
    std::unique_ptr<frmSearch> m_frmSearch;
};

} // namespace quillmere
