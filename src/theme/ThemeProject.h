#pragma once

#include "catalogues/ColourCatalogue.h"
#include "catalogues/ImageCatalogue.h"
#include "catalogues/PanelSettings.h"
#include "files/FileList.h"
#include "files/ReadProblems.h"
#include "i18n/LanguageCatalogue.h"
#include "rows/ListRows.h"
#include "widgets/WidgetCatalogue.h"

#include <QObject>
#include <QStringList>

#include <optional>

namespace quillmere {

// The open theme: the rows of every catalogue and the loader that fills them from a theme folder.
class ThemeProject : public QObject
{
    Q_OBJECT

public:
    explicit ThemeProject(Files &files, QObject *parent = nullptr);

    // Reads theme.xml of the folder, lists its <config> entries in lvTheme and runs the loader of each, in
    // file order; then default.xml. A kind that no entry names keeps what it held. Without a theme.xml,
    // lvTheme is empty, nothing else changes, and the answer is false. Nothing at all changes before all has
    // been read, so that whoever cancels keeps the theme that was open, with what was changed in it.
    bool LoadTheme(const QString &folder, const Progress &progress = {});

    // Loads one of files() again, theme.xml with all that it names; nothing for another file. RunTimeError
    // says why one cannot be read, and what it held stays then.
    void reload(const QString &path);
    // The files that were read: theme.xml, those of the catalogues, default.xml.
    QStringList files() const;
    // Those, the languages and the documents of the windows: all that the theme leads to for editing.
    QStringList allFiles() const;

    const QString &folder() const { return m_folder; }
    // What could not be read when the theme, or one of its files, was last loaded; its list is empty.
    const ReadProblems &problems() const { return m_problems; }

    CodePageRule rule = CodePageRule::Automatic; // for what is opened next
    FileList File1;
    ListRows lvTheme; // text = entry name, sub-item 1 = value as written
    WidgetCatalogue widgets;
    ImageCatalogue images;
    ListRows lvColor; // text empty, sub-item 1 = name, 2 = code
    ColourCatalogue colours{lvColor};
    ListRows lvFont;
    ListRows lvKeyGroup;                // text = display name, sub-item 1 = group name
    ListRows lvKeyMap;                  // the keys of one group: text = name, sub-item 1 = code
    std::optional<PanelSettings> panel; // nothing where the theme has none
    ListRows lvLang, LvBhs;             // see LanguageCatalogue.h
    LanguageFile language{LvBhs};       // opened by the person, stays when another theme is opened

    Document fontFile, keymapFile, languageList; // what lvFont, lvKeyGroup and lvLang were read from
    QStringList cbFont;                          // names of the .ttf files beside the font catalogue

signals:
    // Everything that LoadTheme fills has been filled.
    void loaded();

private:
    struct Entry;
    static const Entry *entryOf(QStringView name); // nullptr for another name
    QString pathOf(const QString &value) const;
    void keepRows();
    bool read(const QString &folder, const Progress &progress);
    void assign(const ThemeProject &read);
    void runLoader(const QString &name, const QString &value, const Progress &progress = {});
    // `path` of the resource file, and its folder with the separator at its end.
    // One that cannot be read is empty, and a problem.
    Document open(const QString &path);
    void loadWidgets(const QString &path, const QString &folder, const Progress &progress);
    void loadImages(const QString &path, const QString &folder, const Progress &progress);
    void loadColours(const QString &path, const QString &folder, const Progress &progress);
    void loadLanguages(const QString &path, const QString &folder, const Progress &progress);
    void loadFonts(const QString &path, const QString &folder, const Progress &progress);
    void loadKeymap(const QString &path, const QString &folder, const Progress &progress);
    void loadPanel();

    Files &m_files;
    QString m_folder;
    ReadProblems m_problems;
};

} // namespace quillmere
