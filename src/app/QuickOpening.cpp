#include "app/QuickOpening.h"

#include "app/MenuCommands.h"
#include "app/RecentThemes.h"
#include "app/TabStrip.h"
#include "app/ThemeNames.h"
#include "asking/Talk.h"
#include "controls/Commands.h"
#include "files/Paths.h"
#include "quick/forms/frmQuickOpen.h"
#include "source/forms/SourceBox.h"
#include "theme/ThemeProject.h"
#include "theme/forms/LiveIndex.h"

#include <QFileInfo>
#include <QMenuBar>
#include <QScrollBar>
#include <QSettings>

#include <utility>

namespace quillmere {

namespace {

constexpr qsizetype kMostUsed = 60;    // that are remembered
constexpr qsizetype kMostOfName = 500; // units; the settings are read and written as a whole
constexpr qsizetype kMostText = 200;   // units of a string that are shown

const QString kUsed = QStringLiteral("quickOpen/used");

constexpr std::pair<NameKind, QuickEntry::Kind> kNamed[] = {{NameKind::Image, QuickEntry::Kind::Image},
                                                            {NameKind::Colour, QuickEntry::Kind::Colour},
                                                            {NameKind::Font, QuickEntry::Kind::Font},
                                                            {NameKind::String, QuickEntry::Kind::String},
                                                            {NameKind::Language, QuickEntry::Kind::Language}};

// The tab that a catalogue is worked on in.
int tabOf(FileRole role)
{
    switch (role) {
    case FileRole::WindowCatalogue:
        return 1;
    case FileRole::ImageCatalogue:
        return 2;
    case FileRole::ColourCatalogue:
        return 3;
    case FileRole::LanguageCatalogue:
        return 4;
    case FileRole::FontCatalogue:
        return 5;
    default:
        return -1;
    }
}

} // namespace

QuickOpening::QuickOpening(const Parts &parts, Talk &talk, QWidget &window)
    : QObject(&window), m_parts(parts), m_talk(talk), m_window(window)
{
}

QuickOpening::~QuickOpening() = default;

void QuickOpening::addCommands(Commands &menu)
{
    menu.on("mnuQuickOpen", [this] { present(); });
    menu.action("mnuQuickOpen")->setShortcut(Qt::CTRL | Qt::Key_P);
}

void QuickOpening::present()
{
    if (!m_frmQuickOpen) {
        m_frmQuickOpen = std::make_unique<frmQuickOpen>(m_window);
        connect(m_frmQuickOpen.get(), &frmQuickOpen::chosen, this, [this](const QuickEntry &entry) {
            m_window.activateWindow();
            m_talk.run([&] { goTo(entry); });
        });
    }
    gather();
    m_frmQuickOpen->present(m_entries, QSettings().value(kUsed).toStringList());
    m_entries.clear();
}

void QuickOpening::add(QuickEntry::Kind kind, const QString &text, const QString &detail, qsizetype id)
{
    m_entries.append({kind, text, detail, id});
}

// Below the theme where it is there.
QString QuickOpening::shortPath(const QString &path) const
{
    const QString folder = joinPath(m_parts.theme.folder(), u"");
    return path.startsWith(folder) ? path.sliced(folder.size()) : path;
}

void QuickOpening::gather()
{
    m_entries.clear();
    m_windows.clear();
    for (const ListRows::Row &row : m_parts.theme.widgets.LvWidget.rows()) {
        add(QuickEntry::Kind::Window, row.sub(1), shortPath(row.text), m_windows.size());
        m_windows.append(row.text);
    }
    gatherBlocks();
    gatherNames();
    gatherFiles();
    m_themes = RecentThemes::folders();
    for (qsizetype i = 0; i < m_themes.size(); ++i)
        add(QuickEntry::Kind::Theme, QFileInfo(QFileInfo(m_themes.at(i)).path()).fileName(), m_themes.at(i),
            i);
    gatherCommands();
}

void QuickOpening::gatherBlocks()
{
    const Outline outline(m_parts.source.text());
    for (size_t i = 0; i < outline.blocks().size(); ++i) {
        const auto name = outline.nameAttribute(outline.blocks()[i]);
        if (name && !name->value.isEmpty())
            add(QuickEntry::Kind::Block, name->value.in(outline.text()).toString().simplified(),
                QFileInfo(m_parts.index.openFile()).fileName(), qsizetype(i));
    }
}

void QuickOpening::gatherNames()
{
    m_names.clear();
    const ThemeIndex *index = m_parts.index.index();
    if (!index)
        return;
    for (const auto &[name, kind] : kNamed) {
        index->eachName(name, [&, of = name, shown = kind](const QString &text) {
            add(shown, of == NameKind::String ? text.left(kMostText).simplified() : text, {}, m_names.size());
            NamedThing thing;
            thing.kind = of;
            thing.name = text;
            m_names.append(thing);
        });
    }
}

void QuickOpening::gatherFiles()
{
    m_files.clear();
    const ThemeIndex *index = m_parts.index.index();
    for (const IndexedFile &file : index ? index->files() : QList<IndexedFile>()) {
        if ((file.role == FileRole::Window && file.isListed) || !file.isReadable)
            continue;
        add(QuickEntry::Kind::File, fileNameOf(file.path).toString(), shortPath(file.path), m_files.size());
        m_files.append(file);
    }
}

void QuickOpening::gatherCommands()
{
    m_commands.clear();
    for (const MenuCommand &command : commandsOf(m_parts.menus.actions())) {
        // In a menu that is closed, what the window itself has can still be chosen.
        const QAction *item = command.action;
        if (!command.isAvailable && !(item->isEnabled() && m_window.actions().contains(item)))
            continue;
        add(QuickEntry::Kind::Command, command.caption,
            command.action->shortcut().toString(QKeySequence::NativeText), m_commands.size());
        m_commands.append(command.action);
    }
}

void QuickOpening::goTo(const QuickEntry &entry)
{
    QStringList used = QSettings().value(kUsed).toStringList();
    if (const QString name = QuickList::nameOf(entry); name.size() <= kMostOfName) {
        used.removeAll(name);
        used.prepend(name);
        QSettings().setValue(kUsed, used.mid(0, kMostUsed));
    }
    switch (entry.kind) {
    case QuickEntry::Kind::Window:
        m_parts.openDocument(m_windows.at(entry.id));
        break;
    case QuickEntry::Kind::Block:
        goToBlock(entry.id);
        break;
    case QuickEntry::Kind::File:
        goToFile(m_files.at(entry.id));
        break;
    case QuickEntry::Kind::Theme:
        m_parts.openTheme(m_themes.at(entry.id));
        break;
    case QuickEntry::Kind::Command:
        if (QAction *command = m_commands.at(entry.id))
            command->trigger();
        break;
    default:
        m_parts.names.goToName(m_names.at(entry.id));
    }
}

// It may have moved since, where the text was loaded again.
void QuickOpening::goToBlock(qsizetype number)
{
    const Outline outline(m_parts.source.text());
    if (number >= qsizetype(outline.blocks().size()))
        return;
    if (const auto name = outline.nameAttribute(outline.blocks()[size_t(number)])) {
        m_parts.names.going.goTo(m_parts.index.openFile(), name->value, -1);
        m_parts.source.horizontalScrollBar()->setValue(0); // its properties are to be seen more than its name
    }
}

void QuickOpening::goToFile(const IndexedFile &file)
{
    if (file.role == FileRole::Language)
        m_parts.openLanguage(file.path);
    else if (const int tab = tabOf(file.role); tab >= 0)
        m_parts.strip.setCurrentIndex(tab);
    else
        m_parts.openDocument(file.path);
}

} // namespace quillmere
