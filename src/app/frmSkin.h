#pragma once

#include "app/MainMenu.h"
#include "asking/forms/WindowTalk.h"
#include "files/Files.h"
#include "theme/ThemeProject.h"

#include <QElapsedTimer>
#include <QMainWindow>

#include <memory>

namespace quillmere {

class ColourTab;
class Dialogs;
class FontTab;
class ImageTab;
class KeptRows;
class KeymapTab;
class PanelTab;
class LangTab;
class LiveIndex;
class OpenDocument;
class OutsideChanges;
class PreviewFrame;
class Prompts;
class ScanCommands;
class SourceHelp;
class SourceTab;
class Stage;
class StageTools;
class StatusLine;
class TabFrame;
class TabStrip;
class ThemeChecks;
class ThemeMenu;
class ThemeNames;
class ThemeOverview;
class ThemeTab;
class WidgetTab;
class WorkRoom;

// The main window: puts the tabs together, owns the menu bar and the layout, hands public operations through.
class frmSkin : public QMainWindow
{
    Q_OBJECT

public:
    // `prompts` asks the person; without one the window asks in boxes of its own.
    explicit frmSkin(Files &files, Prompts *prompts = nullptr, QWidget *parent = nullptr);
    ~frmSkin() override;

    // Shows the window where and as large as it was left; the first time large enough for a whole preview,
    // maximised where the screen is too small for that.
    void showFirst();
    // Chooses a folder in Dir1; one named "theme" is loaded.
    void openTheme(const QString &folder);
    // Offers ways to a theme, unless one is open. To be called once.
    void showStart();
    // Loads the text of a widget document, re-indented, into the source box; a missing one gives an empty
    // text. It is written back without a question where it lies in `theme`; of none, in its own folder.
    void openDocument(const QString &path, const QString &theme);
    void openDocument(const QString &path) { openDocument(path, m_theme.folder()); }

    QString GetImg(const QString &NamaImg) const { return m_theme.images.GetImg(NamaImg); }
    QString GetColor(const QString &NamaColor) const { return m_theme.colours.GetColor(NamaColor); }
    // Replaces the rows of LvBhs by the strings of a language file's text.
    void OpenLgXml(const QString &text);
    void BuildWidgetHtml(const QString &markup);
    void ShowPreview();
    void InsertCode(const QString &Awal, const QString &Akhir);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void makeTabs();
    void connectTabs();
    void makeMenu();
    void TabStrip4_Click();
    void enableSourceMenus();
    void Dir1_Change(const QString &path);
    bool loadTheme(const QString &folder);
    void themeLoaded();

    WindowTalk m_talk;
    Files &m_files;
    ThemeProject m_theme{m_files};
    MainMenu m_menu;
    QWidget *m_page;
    TabStrip *TabStrip4;
    QList<TabFrame *> frYt;
    WorkRoom *m_room = nullptr;
    ThemeTab *m_themeTab = nullptr;
    WidgetTab *m_widgetTab = nullptr;
    ImageTab *m_imageTab = nullptr;
    ColourTab *m_colourTab = nullptr;
    LangTab *m_langTab = nullptr;
    FontTab *m_fontTab = nullptr;
    KeymapTab *m_keymapTab = nullptr;
    PanelTab *m_panelTab = nullptr;
    SourceTab *m_sourceTab = nullptr;
    ScanCommands *m_scans = nullptr;
    PreviewFrame *frmWb;
    StatusLine *m_status;
    OutsideChanges *m_outside = nullptr;
    KeptRows *m_keptRows = nullptr;
    OpenDocument *m_document = nullptr;
    LiveIndex *m_index = nullptr;
    ThemeChecks *m_checks = nullptr;
    ThemeMenu *m_themeMenu = nullptr;
    ThemeNames *m_names = nullptr;
    SourceHelp *m_sourceHelp = nullptr;
    Stage *m_stage = nullptr;
    StageTools *m_stageTools = nullptr;
    ThemeOverview *m_overview = nullptr;
    int CurrentTab = 1; // 1-based
    QElapsedTimer m_sinceTheme;
    std::unique_ptr<Dialogs> m_dialogs;
};

} // namespace quillmere
