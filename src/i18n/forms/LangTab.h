#pragma once

#include "controls/TabFrame.h"
#include "i18n/Dictionary.h"
#include "i18n/forms/StringUses.h"

#include <QTimer>

#include <optional>

class QAction;
class QLineEdit;

namespace quillmere {

class Commands;
class Document;
class FileList;
class Files;
class LanguageFile;
class LanguageFiles;
class ListRows;
class ListView;
class StringFilters;
class Talk;
class TranslationPanel;

// The Lang tab: the languages of the theme, the strings of one of them, and what translates them.
class LangTab : public TabFrame
{
    Q_OBJECT

public:
    // The rows of `languages` were read from `catalogue`. `file1` is pointed at the folder of the
    // dictionaries.
    LangTab(ListRows &languages, const Document &catalogue, LanguageFile &file, FileList &file1, Files &files,
            Talk &talk, QWidget *parent = nullptr);

    void addCommands(Commands &menu);
    // Shows what the loader of the catalogue has read.
    void showCatalogue();
    // Replaces the strings by those of a language file; one that is empty or not there leaves them.
    void openLanguage(const QString &path, const QString &theme);
    // Puts a translation into the rows of a language of the catalogue, which is opened where another one is.
    // RunTimeError where its file is empty or not there.
    void putTranslation(const QString &languageName, const QString &source, const QString &translation);

    // Selects the next string without a translation of those that the list shows, from the top again behind
    // the last; says so where there is none.
    void goToNextUntranslated();

    // Folders of themes that were open before, the newest first; and the file of a language, by its ID, in
    // such a theme, which is asked for on another thread. Suggestions come from there as well.
    std::function<QStringList()> otherThemes;
    std::function<QString(const QString &theme, const QString &language)> languageFileIn;

    StringUses uses; // of the selected string
    LanguageFiles *languageFiles;
    StringFilters *filters;
    TranslationPanel *panel;

signals:
    void languageOpened(const QString &path, const QString &theme);
    // Somebody wants to see where a string stands, in the language that is open, by its name in the
    // catalogue; the name is empty for a file that the catalogue does not name.
    void useChosen(const quillmere::StringUse &use, const QString &language);

protected:
    void layOut(int height) override;
    void showEvent(QShowEvent *event) override;

private:
    void mnuLangOpen_Click();
    void mnuLangSave_Click();
    void mnuLangCopy_Click(CopiedColumn column);
    void mnuLangPaste_Click();
    void mnuLangSearch_Click();
    void LvBhs_DblClick();
    void LoadDictionaryMenu(Commands &menu);
    // `path` of the dictionary below the program folder.
    void translate(const QString &path);
    // 0-based row of the language that is selected; RunTimeError when none is.
    int selectedLanguage() const;
    // Row of the language that the catalogue calls so, their number without one; and the path of its file.
    int numberOf(const QString &languageName) const;
    QString pathOf(const QString &languageName) const;
    // Row from which on a column is copied or pasted, 0-based.
    int startRow() const;
    std::optional<StringCounts> shareOf(int language) const;
    void showCounts();
    void showUses();
    void makePanel();
    void mnuLangPanel_Click();
    void layOutStrings(const QRect &room);
    // The strings have come or gone.
    void placePanel();
    // Whether there is to be one, as was chosen, or as there is room; in pixels.
    bool hasPanel(int room) const;

    ListRows &m_languages;
    const Document &m_catalogue;
    LanguageFile &m_file;
    ListRows &m_strings;
    FileList &m_file1;
    Files &m_files;
    Talk &m_talk;
    QLineEdit *txtLang;
    ListView *lvLang;
    QLineEdit *txtLangFile;
    ListView *LvBhs;
    QList<QAction *> m_dictionaries; // mnuLangTrans(1) and on
    QTimer m_counting;
    QAction *m_panelItem = nullptr;
    int m_height = 0; // of the frame, twips
};

} // namespace quillmere
