#include "theme/ThemeProject.h"

#include "catalogues/FontCatalogue.h"
#include "catalogues/KeymapCatalogue.h"
#include "files/Files.h"
#include "files/Paths.h"
#include "theme/ThemeConfig.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <algorithm>

namespace quillmere {

namespace {

Q_LOGGING_CATEGORY(lcTheme, "quillmere.theme", QtInfoMsg)
constexpr qsizetype kStepsOfEntry = 1000; // of the progress
} // namespace

// A kind of resource file, by its entry name in theme.xml, and what reads it.
struct ThemeProject::Entry
{
    QStringView name;
    void (ThemeProject::*load)(const QString &path, const QString &folder, const Progress &progress);
};

ThemeProject::ThemeProject(Files &files, QObject *parent)
    : QObject(parent), lvTheme({QStringLiteral("Nama"), QStringLiteral("Status")}),
      lvColor({QString(), QStringLiteral("Nama"), QStringLiteral("Code")}, ListRows::Checks::Yes),
      lvFont({QString(), QStringLiteral("Name"), QStringLiteral("File"), QStringLiteral("Size"),
              QStringLiteral("Style")}),
      lvKeyGroup({QStringLiteral("Display"), QStringLiteral("Group")}),
      lvKeyMap({QStringLiteral("Name"), QStringLiteral("Code")}), lvLang(makeLanguageRows()),
      LvBhs(makeStringRows()), m_files(files)
{
}

bool ThemeProject::LoadTheme(const QString &folder, const Progress &progress)
{
    QElapsedTimer clock;
    clock.start();
    LoadedForNow loadedFiles(m_files.loaded());
    ThemeProject aside(m_files);
    aside.rule = rule;
    const bool found = aside.read(folder, progress);
    if (!found) {
        loadedFiles.keep();
        lvTheme.clear();
        return false;
    }
    keepRows();
    loadedFiles.keep();
    assign(aside);
    qCDebug(lcTheme) << "opened" << folder << "in" << clock.elapsed() << "ms";
    emit loaded();
    return true;
}

// Before anything changes: rows that cannot be kept have to stay.
void ThemeProject::keepRows()
{
    images.document.keep();
    colours.document.keep();
}

bool ThemeProject::read(const QString &folder, const Progress &progress)
{
    m_folder = folder;
    const QString text = Document::open(m_files, joinPath(folder, u"theme.xml"), folder, rule).text();
    if (text.isEmpty())
        return false;

    QList<ListRows::Row> entries;
    // The one behind the last closing tag is no element, yet it is shown like the others.
    for (const ConfigEntry &entry : configEntries(text))
        entries.append({entry.name, {entry.value}});
    lvTheme.assign(entries);

    const qsizetype all = entries.size() * kStepsOfEntry;
    for (qsizetype entry = 0; entry < entries.size(); ++entry) {
        const qsizetype before = entry * kStepsOfEntry;
        tell(progress, before, all);
        runLoader(entries[entry].text, entries[entry].sub(1), [&](qsizetype done, qsizetype of) {
            tell(progress, before + done * kStepsOfEntry / std::max<qsizetype>(of, 1), all);
        });
    }
    loadPanel();
    return true;
}

// What no loader has touched has no path.
void ThemeProject::assign(const ThemeProject &read)
{
    m_folder = read.m_folder;
    m_problems = read.m_problems;
    lvTheme.assign(read.lvTheme.rows());
    if (!read.File1.path().isEmpty())
        File1.setPath(read.File1.path());
    if (!read.widgets.document.path().isEmpty())
        widgets.assign(read.widgets);
    if (!read.images.document.path().isEmpty())
        images.assign(read.images);
    if (!read.colours.document.path().isEmpty())
        colours.assign(read.colours);
    if (!read.languageList.path().isEmpty()) {
        lvLang.assign(read.lvLang.rows());
        languageList = read.languageList;
    }
    if (!read.fontFile.path().isEmpty()) {
        lvFont.assign(read.lvFont.rows());
        fontFile = read.fontFile;
        cbFont = read.cbFont;
    }
    if (!read.keymapFile.path().isEmpty()) {
        lvKeyGroup.assign(read.lvKeyGroup.rows());
        lvKeyMap.clear(); // the keys of a group of another file
        keymapFile = read.keymapFile;
    }
    panel = read.panel;
}

const ThemeProject::Entry *ThemeProject::entryOf(QStringView name)
{
    static constexpr Entry kinds[] = {
        {u"file_widget", &ThemeProject::loadWidgets}, {u"file_image", &ThemeProject::loadImages},
        {u"file_color", &ThemeProject::loadColours},  {u"file_i18n", &ThemeProject::loadLanguages},
        {u"file_font", &ThemeProject::loadFonts},     {u"file_keymap", &ThemeProject::loadKeymap},
    };
    const auto found = std::find_if(std::begin(kinds), std::end(kinds),
                                    [&](const Entry &kind) { return kind.name == name; });
    return found == std::end(kinds) ? nullptr : found;
}

QString ThemeProject::pathOf(const QString &value) const
{
    return joinPath(m_folder, u"") + withOwnSeparators(value);
}

Document ThemeProject::open(const QString &path)
{
    try {
        return Document::open(m_files, path, m_folder, rule);
    } catch (const RunTimeError &error) {
        m_problems.add(error);
    }
    Document unread;
    unread.setPath(path, m_folder);
    return unread;
}

void ThemeProject::runLoader(const QString &name, const QString &value, const Progress &progress)
{
    if (const Entry *kind = entryOf(name)) {
        const QString path = pathOf(value);
        (this->*kind->load)(path, folderOf(path).toString(), progress);
    }
}

QStringList ThemeProject::files() const
{
    if (m_folder.isEmpty())
        return {};
    QStringList paths = {joinPath(m_folder, u"theme.xml")};
    for (const ListRows::Row &row : lvTheme.rows()) {
        if (entryOf(row.text))
            paths.append(pathOf(row.sub(1)));
    }
    paths.append(joinPath(m_folder, u"default.xml"));
    paths.removeDuplicates();
    return paths;
}

QStringList ThemeProject::allFiles() const
{
    QStringList paths = files();
    for (const ListRows *rows : {&lvLang, &widgets.LvWidget}) {
        for (const ListRows::Row &row : rows->rows())
            paths.append(row.text);
    }
    return paths;
}

void ThemeProject::reload(const QString &path)
{
    const QStringList all = files();
    if (path == all.value(0)) {
        LoadTheme(m_folder);
        return;
    }
    if (!all.contains(path))
        return;
    LoadBytes(path); // throws before any list is emptied
    keepRows();
    m_problems = {};
    if (path == all.last())
        loadPanel();
    for (const ListRows::Row &row : lvTheme.rows()) {
        if (pathOf(row.sub(1)) == path)
            runLoader(row.text, row.sub(1));
    }
    emit loaded();
}

void ThemeProject::loadWidgets(const QString &path, const QString &folder, const Progress &progress)
{
    widgets.LoadWidgetList(open(path), folder, File1, progress);
}

void ThemeProject::loadImages(const QString &path, const QString &folder, const Progress &progress)
{
    images.LoadImageList(open(path), folder, File1, progress);
}

void ThemeProject::loadColours(const QString &path, const QString &, const Progress &)
{
    colours.LoadColorList(open(path));
}

void ThemeProject::loadFonts(const QString &path, const QString &folder, const Progress &)
{
    fontFile = open(path);
    LoadFontList(lvFont, fontFile);
    File1.setPath(folder);
    cbFont.clear();
    for (const QString &name : File1.files()) {
        if (name.endsWith(u".ttf"))
            cbFont.append(name);
    }
}

void ThemeProject::loadKeymap(const QString &path, const QString &, const Progress &)
{
    keymapFile = open(path);
    LoadKeymapList(lvKeyGroup, keymapFile);
    lvKeyMap.clear(); // the keys of a group of another file
}

void ThemeProject::loadPanel()
{
    panel = LoadPanelConfig(open(joinPath(m_folder, u"default.xml")));
}

void ThemeProject::loadLanguages(const QString &path, const QString &folder, const Progress &)
{
    languageList = open(path);
    LoadLanguageList(lvLang, languageList, folder);
}

} // namespace quillmere
