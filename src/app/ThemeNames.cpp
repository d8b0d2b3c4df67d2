#include "app/ThemeNames.h"

#include "app/SelectedRows.h"
#include "app/TabStrip.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "controls/ListView.h"
#include "controls/TabFrame.h"
#include "files/Paths.h"
#include "files/RunTimeError.h"
#include "i18n/forms/LangTab.h"
#include "naming/Destination.h"
#include "naming/SamePlaces.h"
#include "naming/TextSearch.h"
#include "naming/forms/PlaceRows.h"
#include "naming/forms/frmRename.h"
#include "naming/forms/frmSearch.h"
#include "naming/forms/frmUses.h"
#include "source/forms/SourceBox.h"
#include "stage/forms/ReceiverView.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <QAction>
#include <QFileInfo>
#include <QMouseEvent>

#include <algorithm>

namespace quillmere {

namespace {
constexpr int kSourceTab = 8;         // in the strip
constexpr qsizetype kMostTaken = 200; // units of a selection that a search begins with
} // namespace

ThemeNames::ThemeNames(Going::Parts parts, LiveIndex &index, ThemeProject &theme, Files &files, Talk &talk,
                       QWidget &window)
    : QObject(&window), going(parts, talk, this),
      editing(parts.source, parts.document, theme, files, talk, this),
      changes(parts.source, editing, index, theme, talk, this), m_index(index), m_theme(theme),
      m_source(parts.source), m_lists(parts.tabs, parts.strip, index), m_strip(parts.strip), m_talk(talk),
      m_window(window)
{
    m_source.viewport()->installEventFilter(this);
    connect(&theme, &ThemeProject::loaded, this, &ThemeNames::themeLoaded);
}

ThemeNames::~ThemeNames() = default;

void ThemeNames::addCommands(Commands &menu)
{
    const auto add = [&](const char *name, const QKeySequence &keys, const Commands::Command &command) {
        menu.on(name, command);
        menu.action(name)->setShortcut(keys);
    };
    add("mnuGoTo", Qt::Key_F12, [this] { goToDefinition(); });
    add("mnuUses", Qt::SHIFT | Qt::Key_F12, [this] { showUses(); });
    add("mnuBack", Qt::ALT | Qt::Key_Left, [this] { going.back(); });
    add("mnuForward", Qt::ALT | Qt::Key_Right, [this] { going.forward(); });
    add("mnuSearch", Qt::CTRL | Qt::SHIFT | Qt::Key_F, [this] { search(); });
    add("mnuRename", Qt::Key_F2, [this] { rename(); });
    add("mnuUndoRename", {}, [this] { changes.takeBack(); });
    changes.setUndo(menu.action("mnuUndoRename"));
    for (const char *name : {"mnuBack", "mnuForward", "mnuSearch"})
        m_dialogActions.append(menu.action(name));
    for (const char *name : {"mnuGoTo", "mnuUses", "mnuRename"})
        m_nameActions.append(menu.action(name));
    m_lists.addMenus(m_nameActions);
    new SelectedRows(editing, m_lists.all(), this);
}

// What was found in another theme is of no use in this one.
void ThemeNames::themeLoaded()
{
    if (m_theme.folder() == m_folder)
        return;
    m_folder = m_theme.folder();
    changes.forget();
    if (m_frmUses)
        m_frmUses->hide();
    if (m_frmSearch)
        m_frmSearch->forget();
}

bool ThemeNames::isInUses() const
{
    return m_frmUses && m_frmUses->isActiveWindow();
}

std::optional<NamedThing> ThemeNames::hint(const QString &text) const
{
    m_talk.say(text);
    return std::nullopt;
}

std::optional<NamedThing> ThemeNames::thingHere() const
{
    if (isInUses())
        return m_frmUses->thing();
    if (const ListView *list = m_lists.inUse()) {
        const auto thing = m_lists.thingOf(*list);
        return thing ? thing : hint(tr("Select a row with a name first."));
    }
    if (m_strip.currentIndex() != kSourceTab)
        return hint(tr("Select a row of a list first, or put the caret on a name in the source."));
    const auto thing =
        thingAt(m_index.outline(), m_source.selectionStart(), m_index.openFile(), m_index.index());
    return thing ? thing : hint(tr("There is no name at the caret."));
}

const ThemeIndex *ThemeNames::index() const
{
    if (!m_index.index())
        m_talk.say(m_theme.folder().isEmpty() ? tr("Open a theme first.")
                                              : tr("The theme is still being read. Try again in a moment."));
    return m_index.index();
}

FoundPlaces ThemeNames::find(const NamedThing &thing, const ThemeIndex &index) const
{
    FoundPlaces found;
    m_talk.runLong(tr("Looking for the name"), [&](const Progress &progress) {
        found = placesOf(
            thing, index, m_index.sources(), [this](const QString &path) { return editing.openRows(path); },
            progress);
    });
    return found;
}

bool ThemeNames::goToPartner()
{
    const QString style = joinPath(m_theme.folder(), u"style.xml");
    const ThemeSources sources = m_index.sources();
    const QString text = textOf(sources, {style, findFile(style)}).value_or(QString());
    const auto partner =
        partnerAt(m_index.outline(), m_source.selectionStart(), m_index.openFile(), style, text);
    if (partner)
        going.goTo(partner->file, partner->range, partner->row);
    return partner.has_value();
}

void ThemeNames::goToDefinition()
{
    const ThemeIndex *names = index();
    if (!names || (!isInUses() && !m_lists.inUse() && m_strip.currentIndex() == kSourceTab && goToPartner()))
        return;
    const auto thing = thingHere();
    if (!thing)
        return;
    if (isInUses())
        m_window.activateWindow();
    if (!thing->kind) {
        QList<FoundPlace> blocks = find(*thing, *names).places;
        std::stable_partition(blocks.begin(), blocks.end(),
                              [](const FoundPlace &place) { return place.isSure; });
        if (!blocks.isEmpty())
            going.goTo(blocks.first().file, blocks.first().range, -1);
        return;
    }
    goToName(*thing);
}

void ThemeNames::goToName(const NamedThing &thing)
{
    const ThemeIndex *names = index();
    const auto there = names ? definitionOf(thing, *names, m_theme.language.document.path()) : std::nullopt;
    if (!there) {
        if (names)
            m_talk.say(tr("Nothing defines the %1 \"%2\".").arg(wordFor(thing.kind), shownName(thing.name)));
        return;
    }
    going.goTo(there->file, there->range, there->row);
    if (const qsizetype count = names->definitions(*thing.kind, thing.name).size(); count > 1)
        m_talk.say(tr("\"%1\" is defined %2 times; this is one of the places.")
                       .arg(shownName(thing.name), QString::number(count)));
}

void ThemeNames::showUses()
{
    const ThemeIndex *names = index();
    const auto thing = names ? thingHere() : std::nullopt;
    if (!thing)
        return;
    const FoundPlaces uses = frmUses::usesOf(*thing, find(*thing, *names));
    if (!m_frmUses) {
        m_frmUses = std::make_unique<frmUses>(m_index, m_window);
        m_frmUses->addActions(m_dialogActions + m_nameActions);
        connect(m_frmUses.get(), &frmUses::placeChosen, this, [this](const FoundPlaces &listed, int row) {
            m_talk.run([&] {
                goToPlace(listed, row, [this](const QString &file, const QString &) {
                    const NamedThing &named = m_frmUses->thing();
                    FoundPlaces now = m_index.index() ? find(named, *m_index.index()) : FoundPlaces();
                    now.places.removeIf([&](const FoundPlace &place) { return place.file != file; });
                    return frmUses::usesOf(named, now);
                });
            });
        });
    }
    m_frmUses->showUses(*thing, uses);
}

// A list of places may be a moment behind its files: then the place is looked for again.
void ThemeNames::goToPlace(const FoundPlaces &found, int number,
                           const std::function<FoundPlaces(const QString &, const QString &)> &again)
{
    FoundPlace place = found.places.value(number);
    const auto text = textOf(m_index.sources(), {place.file, findFile(place.file)});
    if (!text)
        throw RunTimeError(tr("\"%1\" can no longer be read.").arg(shownPath(place.file, m_theme.folder())));
    if (ThemeEdit::markOf(*text) != found.marks.value(place.file)) {
        FoundPlaces before = found;
        before.places.removeIf([&](const FoundPlace &each) { return each.file != place.file; });
        const auto first = std::find_if(found.places.begin(), found.places.end(),
                                        [&](const FoundPlace &each) { return each.file == place.file; });
        const FoundPlaces now = again(place.file, *text);
        const qsizetype there = SamePlaces(before, now).numberOf(number - (first - found.places.begin()));
        if (there < 0)
            throw RunTimeError(tr("That place is no longer there."));
        place = now.places[there];
    }
    // The list of windows may be behind its file as well.
    if (m_theme.widgets.LvWidget.rows().value(place.row).sub(1) != place.text)
        place.row = -1;
    going.goTo(place.file, place.range, place.row);
    m_window.activateWindow();
}

void ThemeNames::tellUses(LangTab &tab, ReceiverView &view)
{
    tab.uses.usesOf = [this](const QString &source) {
        QList<StringUse> uses;
        const ThemeIndex *names = m_index.index();
        if (!names)
            return uses;
        for (const NamePlace &place : names->uses(NameKind::String, source)) {
            const IndexedFile &file = names->files().at(place.file);
            if (file.role == FileRole::Window)
                uses.append({QFileInfo(file.path).completeBaseName(), file.path, place.range, place.line});
        }
        return uses;
    };
    connect(&m_index, &LiveIndex::changed, &tab.uses, [&tab] {
        if (tab.isVisible())
            tab.uses.refresh();
    });
    connect(&tab, &LangTab::useChosen, this, [this, &view](const StringUse &use, const QString &language) {
        going.goTo(use.file, use.range, -1);
        // Unless the person would rather keep the window that is open.
        if (m_index.openFile() == use.file && !language.isEmpty())
            view.showLanguage(language);
    });
}

void ThemeNames::rename()
{
    if (const auto thing = index() ? thingHere() : std::nullopt)
        renameThing(*thing);
}

void ThemeNames::renameThing(const NamedThing &thing)
{
    const ThemeIndex *names = index();
    if (!names)
        return;
    const FoundPlaces found = find(thing, *names);
    if (found.places.isEmpty()) {
        m_talk.say(tr("\"%1\" does not occur in the theme.").arg(shownName(thing.name)));
        return;
    }
    const auto make = [this, thing](const QString &newName, const ThemeEdit &edit) {
        bool made = false;
        m_talk.run([&] {
            made = changes.make(edit,
                                tr("\"%1\" was renamed to \"%2\" in %3.")
                                    .arg(shownName(thing.name), shownName(newName),
                                         counted(edit.paths().size(), tr("file"), tr("files"))),
                                tr("Undo Rename"), [this, thing, newName] {
                                    NamedThing renamed = thing;
                                    renamed.name = newName;
                                    followRename(renamed, thing.name);
                                });
        });
        if (made)
            followRename(thing, newName);
        return made;
    };
    auto *dialog = new frmRename(thing, found, m_index.sharedIndex(), m_theme.folder(), make, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

// The list of uses goes on showing those of the thing.
void ThemeNames::followRename(const NamedThing &thing, const QString &newName)
{
    if (m_frmUses && m_frmUses->thing() == thing)
        m_frmUses->renamed(newName);
}

void ThemeNames::search()
{
    if (!m_frmSearch) {
        const auto make = [this](const ThemeEdit &edit) {
            return changes.make(
                edit, tr("Replaced in %1.").arg(counted(edit.paths().size(), tr("file"), tr("files"))),
                tr("Undo Replace"));
        };
        m_frmSearch = std::make_unique<frmSearch>(m_index, make, m_talk, m_window);
        m_frmSearch->addActions(m_dialogActions);
        connect(m_frmSearch.get(), &frmSearch::placeChosen, this,
                [this](const FoundPlaces &found, int number, const TextSearch &search) {
                    m_talk.run([&] {
                        goToPlace(found, number, [&](const QString &file, const QString &text) {
                            return placesIn(search, file, text);
                        });
                    });
                });
    }
    const QString selected = m_source.textCursor().selectedText();
    const bool isLine = selected.size() <= kMostTaken && !selected.contains(QChar::ParagraphSeparator) &&
                        !selected.contains(QChar::ObjectReplacementCharacter);
    m_frmSearch->openFor(isLine ? selected : QString());
}

bool ThemeNames::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        // The press has put the caret there.
        if (mouse->button() == Qt::LeftButton && mouse->modifiers() == Qt::ControlModifier &&
            !m_source.textCursor().hasSelection())
            QMetaObject::invokeMethod(
                this, [this] { m_talk.run([this] { goToDefinition(); }); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quillmere
