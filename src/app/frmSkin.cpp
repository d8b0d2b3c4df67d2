#include "app/frmSkin.h"

#include "app/CatalogueWork.h"
#include "app/CodePageChoice.h"
#include "app/ColourWork.h"
#include "app/Dialogs.h"
#include "app/FirstMinute.h"
#include "app/LanguageWork.h"
#include "app/ListEditing.h"
#include "app/Looks.h"
#include "app/NewThings.h"
#include "app/OpenDocument.h"
#include "app/PaneRound.h"
#include "app/QuickOpening.h"
#include "app/RowMenus.h"
#include "app/ShownChanges.h"
#include "app/SourceFinding.h"
#include "app/StatusLine.h"
#include "app/TabStrip.h"
#include "app/ThemeChecks.h"
#include "app/ThemeConverting.h"
#include "app/ThemeMenu.h"
#include "app/ThemeNames.h"
#include "app/ThemeOverview.h"
#include "app/ThemeTab.h"
#include "app/WindowRound.h"
#include "app/WorkRoom.h"
#include "browser/forms/WebBrowser.h"
#include "catalogues/forms/ColourTab.h"
#include "catalogues/forms/FontTab.h"
#include "catalogues/forms/ImageTab.h"
#include "catalogues/forms/KeymapTab.h"
#include "catalogues/forms/PanelTab.h"
#include "catalogues/forms/ScanCommands.h"
#include "checks/forms/CheckTab.h"
#include "controls/DirListBox.h"
#include "controls/ListView.h"
#include "controls/PageScroll.h"
#include "files/Paths.h"
#include "i18n/LanguageCatalogue.h"
#include "i18n/forms/LangTab.h"
#include "keeping/forms/KeptRows.h"
#include "keeping/forms/OutsideChanges.h"
#include "naming/forms/SourceHelp.h"
#include "preview/forms/PreviewFrame.h"
#include "source/forms/SourceBox.h"
#include "stage/forms/Stage.h"
#include "stage/forms/StageBar.h"
#include "stage/forms/StageTools.h"
#include "theme/forms/LiveIndex.h"
#include "widgets/forms/SourceTab.h"
#include "widgets/forms/WidgetTab.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>

#include <functional>

namespace quillmere {

namespace {

constexpr int kFirstWidth = 1792, kFirstHeight = 860; // pixels, for a whole 1280 x 720 preview
constexpr int kWindowBorder = 40;                     // pixels, generously
constexpr int kFrameLeft = 240, kFrameTop = 600;
constexpr int kSettling = 1000; // ms in which a window manager may still give a new window its size

const QString kGeometry = QStringLiteral("window/geometry");

} // namespace

frmSkin::frmSkin(Files &files, Prompts *prompts, QWidget *parent)
    : QMainWindow(parent), m_talk(*this, prompts), m_files(files), m_menu(*menuBar(), m_talk),
      m_page(new QWidget(this)), TabStrip4(new TabStrip(m_page)), frmWb(new PreviewFrame(m_page))
{
    setObjectName(QStringLiteral("frmSkin"));
    setWindowTitle(QStringLiteral(":: Quillmere ::"));
    new Looks(m_menu, *this);
    setCentralWidget(new PageScroll(m_page)); // where the window is smaller than what was laid out in it
    m_status = new StatusLine(*statusBar());
    m_talk.say(tr("Press Ctrl+O, or choose a folder named \"theme\" in the list, to open a theme."));
    makeTabs();
    makeMenu();
    connect(&m_theme, &ThemeProject::loaded, this, &frmSkin::themeLoaded);

    setTabOrder(m_sourceTab->txtSnippet, frmWb->wb); // the preview comes last
    m_room->Form_Resize(toTwips(kFirstWidth), toTwips(kFirstHeight));
    frmWb->showScreen(Screen::S1024x576);
    resize(kFirstWidth, kFirstHeight);
    TabStrip4_Click();
}

frmSkin::~frmSkin()
{
    hide(); // which ends a drag, and draws, while all that it draws from is there
}

void frmSkin::showFirst()
{
    const QSize room = screen()->availableSize();
    m_room->beSmallest(room); // or a screen too small keeps more
    m_room->restore();
    const bool fits =
        room.width() >= kFirstWidth + kWindowBorder && room.height() >= kFirstHeight + kWindowBorder;
    if (restoreGeometry(QSettings().value(kGeometry).toByteArray()) || fits)
        show();
    else {
        resize(room * 9 / 10);
        showMaximized();
    }
}

void frmSkin::makeTabs()
{
    m_themeTab = new ThemeTab(m_theme.lvTheme, m_theme.File1, m_page);
    m_widgetTab = new WidgetTab(m_theme.widgets, m_theme.File1, m_files, m_talk, m_page);
    m_imageTab = new ImageTab(m_theme.images, m_theme.widgets.LvWidget, m_files, m_talk, m_page);
    m_colourTab = new ColourTab(m_theme.lvColor, m_theme.colours, m_files, m_talk, m_page);
    m_langTab = new LangTab(m_theme.lvLang, m_theme.languageList, m_theme.language, m_theme.File1, m_files,
                            m_talk, m_page);
    m_fontTab = new FontTab(m_theme.lvFont, m_page);
    m_keymapTab = new KeymapTab(m_theme.lvKeyGroup, m_theme.lvKeyMap, m_theme.keymapFile, m_talk, m_page);
    m_panelTab = new PanelTab(m_talk, m_page);
    m_scans =
        new ScanCommands(m_theme.widgets.LvWidget, m_theme.images.document, m_theme.lvColor, m_talk, this);
    m_sourceTab = new SourceTab([this] { return m_theme.images.lookup(); }, m_theme.lvFont, m_theme.widgets,
                                m_talk, m_page);
    m_index = new LiveIndex(
        m_theme, *m_sourceTab->txtSnippet, m_files, [this] { return m_document->path(); }, this);
    m_checks = new ThemeChecks(*m_index, m_page, this);
    frYt = {m_themeTab, m_widgetTab, m_imageTab, m_colourTab, m_langTab,
            m_fontTab,  m_keymapTab, m_panelTab, m_sourceTab, m_checks->tab};
    for (TabFrame *frame : std::as_const(frYt)) {
        frame->move(toPixels(kFrameLeft), toPixels(kFrameTop));
        frame->hide();
    }
    m_room = new WorkRoom(*m_page, *TabStrip4, frYt, *frmWb, *this);
    m_outside = new OutsideChanges(*m_status->offers, m_theme, *m_langTab, m_files, m_talk, this);
    m_keptRows = new KeptRows(m_theme, m_files, *m_status->offers, m_talk, this);
    m_keptRows->watch(*m_langTab->panel);
    m_document =
        new OpenDocument(*m_sourceTab->txtSnippet, *frmWb, *m_status, *m_outside, m_files, m_talk, this);
    m_sourceHelp = new SourceHelp(*m_sourceTab->txtSnippet, *m_index, m_theme, this);
    new CodePageChoice(
        *m_status, m_theme, *m_document, [this] { loadTheme(m_theme.folder()); }, m_files, m_talk, this);
    m_names =
        new ThemeNames({*TabStrip4, frYt, *m_sourceTab->txtSnippet, *m_document, m_theme,
                        [this](const QString &path, const QString &theme) { openDocument(path, theme); },
                        [this](const QString &path) { m_langTab->openLanguage(path, m_theme.folder()); }},
                       *m_index, m_theme, m_files, m_talk, *this);
    m_checks->connectTo({*m_names, *m_sourceTab->txtSnippet, m_sourceHelp->hovers, *m_status, *m_outside,
                         *TabStrip4, int(frYt.indexOf(m_checks->tab)), m_theme, m_menu, m_talk});
    new ShownChanges(*m_status, *m_sourceTab->txtSnippet, *m_document, m_names->editing, m_theme, m_talk,
                     *this);
    m_stage = new Stage(*m_sourceTab, *frmWb, *m_index, this);
    m_stageTools = new StageTools(*m_stage, *m_sourceTab, *frmWb, m_theme, m_talk, *this);
    m_stageTools->setEndsAlone(std::bind_front(&WorkRoom::endAlone, m_room));
    m_stageTools->textInPlace.translate = std::bind_front(&LangTab::putTranslation, m_langTab);
    new StageBar(*frmWb, [this](const QString &code) { return m_theme.colours.nameOf(code); },
                 {m_menu.action("mnuLink"), m_menu.action("mnuRulers"), m_menu.action("mnuOverview")});
    m_overview = new ThemeOverview({*frmWb, m_theme, *m_index, m_checks->check, *m_sourceTab->txtSnippet,
                                    *m_widgetTab, *m_document, *m_outside, m_files, m_talk},
                                   *this);
    m_names->tellUses(*m_langTab, m_stageTools->receiver);
    new PaneRound(*this, *m_status->offers, [this] { return frYt[CurrentTab - 1]; });
    connectTabs();
}

void frmSkin::connectTabs()
{
    connect(m_langTab, &LangTab::languageOpened, this, [this](const QString &path) {
        if (const QString news = m_keptRows->takeNews(); !news.isEmpty())
            m_talk.say(path + u". " + news);
    });
    connect(m_outside, &OutsideChanges::reloaded, this,
            [this] { BuildWidgetHtml(m_sourceTab->txtSnippet->text()); });
    connect(&m_names->editing, &ThemeEditing::othersChanged, this,
            [this] { m_sourceTab->BuildWidgetHtml(m_sourceTab->txtSnippet->text()); });
    const auto showSource = [this] { TabStrip4->setCurrentIndex(int(frYt.indexOf(m_sourceTab))); };
    connect(m_document, &OpenDocument::textRestored, this, showSource);
    connect(m_document, &OpenDocument::expected, m_sourceTab, &SourceTab::expect);
    connect(m_document, &OpenDocument::leaving, m_sourceTab->lvBlock, &ListView::scrollToTop);
    connect(m_stageTools, &StageTools::sourceWanted, this, showSource);
    connect(m_room, &WorkRoom::sourceWanted, this, showSource);
    connect(TabStrip4, &TabStrip::currentChanged, this, &frmSkin::TabStrip4_Click);
    connect(TabStrip4, &TabStrip::tabBarClicked, this, [this](int index) {
        if (index == TabStrip4->currentIndex())
            TabStrip4_Click();
    });
    connect(m_themeTab->Dir1, &DirListBox::pathChanged, this,
            [this](const QString &path) { m_talk.run([&] { Dir1_Change(path); }); });
    connect(m_widgetTab, &WidgetTab::documentChosen, this, [this](const QString &path, const QString &theme) {
        m_talk.run([&] { openDocument(path, theme); });
    });
    connect(m_widgetTab, &WidgetTab::markupChosen, this, &frmSkin::BuildWidgetHtml);
    connect(m_imageTab, &ImageTab::putToWork, this,
            [this] { TabStrip4->setCurrentIndex(int(frYt.indexOf(m_imageTab))); });
    connect(m_sourceTab, &SourceTab::pageReady, frmWb->wb, &WebBrowser::write);
    connect(frmWb, &PreviewFrame::fixedChanged, m_sourceTab, &SourceTab::setFixed);
    connect(frmWb->wb, &WebBrowser::failed, this, [this](const QString &why) { m_talk.say(why); });
    connect(m_sourceTab, &SourceTab::textChanged, this, &frmSkin::enableSourceMenus);
    m_status->watchSource(*m_sourceTab, *frmWb->wb);
    connect(m_sourceTab, &SourceTab::blocksListed, this, &frmSkin::enableSourceMenus);
}

void frmSkin::makeMenu()
{
    m_themeMenu = new ThemeMenu(
        m_menu, std::bind_front(&frmSkin::openTheme, this), [this] { return m_themeTab->Dir1->path(); },
        m_talk, *this);
    m_menu.on("mnuSave", [this] { m_document->save(); });
    m_menu.action("mnuSave")->setShortcut(QKeySequence::Save);
    m_menu.on("mnuFlDefault", [this] {
        if (const QString folder = m_themeTab->Dir1->path(); isThemeFolder(folder))
            openDocument(joinPath(folder, u"style.xml"), folder);
    });
    m_menu.on("mnuExit", [] { QApplication::quit(); });
    m_widgetTab->addCommands(m_menu);
    m_colourTab->addCommands(m_menu);
    m_imageTab->addCommands(m_menu);
    m_scans->addCommands(m_menu);
    m_langTab->addCommands(m_menu);
    m_sourceTab->addCommands(m_menu);
    m_sourceHelp->addCommands(m_menu);
    frmWb->addCommands(m_menu);
    m_room->addCommands(m_menu);
    m_stageTools->addCommands(m_menu);
    (new ColourWork(*m_colourTab, m_theme, *m_sourceTab->txtSnippet, *frmWb, m_talk, *this))
        ->addCommands(m_menu);
    m_dialogs = std::make_unique<Dialogs>(
        *this, *m_sourceTab, m_theme, *m_index, m_files, m_talk,
        [this] { TabStrip4->setCurrentIndex(int(frYt.indexOf(m_sourceTab))); },
        [this](const QString &path) {
            m_outside->fileReplaced(path);
            m_talk.say(tr("%1 restored.").arg(path));
        });
    m_dialogs->addCommands(m_menu);
    auto *finding = new SourceFinding(*m_sourceTab->txtSnippet, *TabStrip4, m_menu, m_talk, *this);
    m_dialogs->findsInBar = std::bind_front(&SourceFinding::next, finding);
    m_names->addCommands(m_menu);
    (new NewThings({m_theme, *m_index, *m_names, *m_document, *m_sourceTab->txtSnippet, *TabStrip4, m_talk},
                   *this))
        ->addCommands(m_menu);
    new ThemeConverting({m_theme, *m_index, m_checks->check, *m_names, *m_status->changes, m_talk}, m_menu,
                        *this);
    connect(new ListEditing(m_theme, frYt, *TabStrip4, *m_sourceTab->txtSnippet, m_stageTools->translations,
                            m_files, m_menu, *this),
            &ListEditing::edited, this, [this] { m_talk.edited(); });
    new RowMenus(m_theme, frYt, m_menu, m_talk, this);
    new CatalogueWork({*m_imageTab, *m_fontTab, *m_sourceTab, m_theme, *m_outside, m_files, m_talk}, m_menu,
                      *this);
    new LanguageWork({*m_langTab, m_theme, m_checks->check, *m_outside, m_files, m_names->editing, m_talk},
                     m_menu, *this);
    m_overview->addCommands(m_menu);
    const auto openFile = [this](const QString &path, const QString &root = {}) { openDocument(path, root); };
    const auto openLanguage = [this](const QString &path) {
        m_langTab->openLanguage(path, m_theme.folder());
    };
    (new QuickOpening({*m_names, *m_index, m_theme, *m_sourceTab->txtSnippet, *TabStrip4, *menuBar(),
                       openFile, openLanguage, std::bind_front(&frmSkin::openTheme, this)},
                      m_talk, *this))
        ->addCommands(m_menu);
    new WindowRound(*m_document, m_theme, openFile, m_talk, *this);
}

void frmSkin::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_room->Form_Resize(toTwips(width()), toTwips(height()));
    if (event->spontaneous() && m_sinceTheme.isValid() && m_sinceTheme.elapsed() < kSettling)
        frmWb->startWith(screenOfTheme(m_theme.widgets.width, m_theme.widgets.height));
}

void frmSkin::closeEvent(QCloseEvent *event)
{
    QSettings().setValue(kGeometry, saveGeometry());
    event->setAccepted(m_document->mayClose(*m_keptRows));
}

void frmSkin::TabStrip4_Click()
{
    const bool hadKeyboard = frYt[CurrentTab - 1]->isAncestorOf(focusWidget());
    frYt[CurrentTab - 1]->hide();
    CurrentTab = TabStrip4->currentIndex() + 1;
    frYt[CurrentTab - 1]->show();
    if (hadKeyboard)
        frYt[CurrentTab - 1]->takeKeyboard();
    for (const char *name : {"mnuCblock", "mnuView", "mnuSave"})
        m_menu.setEnabled(name, false);
    m_menu.setEnabled("mnuScan", CurrentTab == 1);
    enableSourceMenus();
}

void frmSkin::enableSourceMenus()
{
    if (frYt[CurrentTab - 1] != m_sourceTab)
        return;
    const bool hasText = !m_sourceTab->txtSnippet->document()->isEmpty();
    m_menu.setEnabled("mnuView", hasText);
    m_menu.setEnabled("mnuSave", hasText);
    m_menu.setEnabled("mnuCblock", !m_sourceTab->blocks.isEmpty());
}

void frmSkin::openTheme(const QString &folder)
{
    if (!m_themeTab->Dir1->setPath(ThemeMenu::themeIn(folder)))
        m_talk.say(tr("There is no folder %1.").arg(folder));
}

void frmSkin::Dir1_Change(const QString &path)
{
    m_theme.File1.setPath(path);
    setWindowTitle(u" :: Quillmere :: " + path);
    if (!isThemeFolder(path)) {
        m_talk.say(tr("%1 is not a theme folder: its name is not \"theme\".").arg(path));
        return;
    }
    m_sinceTheme.start();
    if (loadTheme(path))
        m_overview->themeOpened();
    else
        m_talk.say(tr("There is no theme.xml in %1; what was open stays open.").arg(path));
}

void frmSkin::showStart()
{
    (new FirstMinute({*frmWb, m_theme, m_overview->overview(), *m_document, *m_sourceTab, *m_widgetTab,
                      m_menu, *m_themeMenu, std::bind_front(&frmSkin::openTheme, this), m_talk},
                     *this))
        ->show();
}

bool frmSkin::loadTheme(const QString &folder)
{
    bool found = false;
    m_talk.runLong(tr("Opening the theme"),
                   [&](const Progress &progress) { found = m_theme.LoadTheme(folder, progress); });
    return found;
}

void frmSkin::themeLoaded()
{
    frmWb->wb->setThemeFolder(m_theme.folder());
    m_widgetTab->showCatalogue();
    m_imageTab->showCatalogue(m_theme.folder());
    m_colourTab->showCatalogue();
    m_langTab->showCatalogue();
    m_fontTab->showCatalogue(m_theme.fontFile.path(), m_theme.cbFont);
    m_keymapTab->showCatalogue();
    frmWb->startWith(screenOfTheme(m_theme.widgets.width, m_theme.widgets.height));
    m_themeMenu->add(m_theme.folder());
    const QString news = m_keptRows->takeNews(), left = m_document->leftFromAnother(m_theme.folder());
    m_talk.say(tr("Theme opened: %1 windows, %2 images, %3 colours, %4 fonts. %5 %6")
                   .arg(m_theme.widgets.LvWidget.count())
                   .arg(m_theme.images.rows.count())
                   .arg(m_theme.lvColor.count())
                   .arg(m_theme.lvFont.count())
                   .arg(left.isEmpty() ? tr("Double-click a window to open it.") : left)
                   .arg(news)
                   .trimmed());
    if (m_theme.panel)
        m_panelTab->showSettings(*m_theme.panel);
    if (!m_theme.problems().isEmpty())
        m_talk.tell(QStringLiteral("Quillmere"), m_theme.problems().text(), Talk::Icon::Critical);
}

void frmSkin::openDocument(const QString &path, const QString &theme)
{
    m_document->open(path, theme.isEmpty() ? folderOf(path).toString() : theme, m_theme.rule);
}

void frmSkin::OpenLgXml(const QString &text)
{
    quillmere::OpenLgXml(m_theme.LvBhs, text);
}

void frmSkin::BuildWidgetHtml(const QString &markup)
{
    frmWb->wb->beginDocument();
    m_sourceTab->BuildWidgetHtml(markup);
    frmWb->wb->beginDocument(); // then it is the open window's turn again
}

void frmSkin::ShowPreview()
{
    m_sourceTab->ShowPreview();
}

void frmSkin::InsertCode(const QString &Awal, const QString &Akhir)
{
    m_sourceTab->InsertCode(Awal, Akhir);
}

} // namespace quillmere
