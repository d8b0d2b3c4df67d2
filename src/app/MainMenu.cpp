#include "app/MainMenu.h"

#include "asking/Talk.h"

#include <QMenu>
#include <QMenuBar>

namespace quillmere {

namespace {

enum class Kind { Menu, Command, Check, Separator };

struct Item
{
    const char *above; // name of the menu it stands in; nullptr for the menu bar
    const char *name;
    const char *caption;
    Kind kind = Kind::Command;
};

constexpr Item kItems[] = {
    {nullptr, "mnuFile", "&File", Kind::Menu},
    {"mnuFile", "mnuOpenTheme", "&Open Theme..."},
    {"mnuFile", "mnuNewTheme", "&New Theme..."},
    {"mnuFile", "mnuRecentThemes", "&Recent Themes", Kind::Menu},
    {"mnuFile", "mnuConvertTheme", "&Convert Theme..."},
    {"mnuFile", "hrOpenTheme", "", Kind::Separator},
    {"mnuFile", "mnuSave", "&Save"},
    {"mnuFile", "mnuRestore", "Res&tore..."},
    {"mnuFile", "mnuFlDefault", "&Default"},
    {"mnuFile", "mnuExit", "&Exit"},

    {nullptr, "mnuWidget", "&Widget", Kind::Menu},
    {"mnuWidget", "mnuWidgetOpen", "&Open"},
    {"mnuWidget", "mnuWidgetSel", "Select No File"},
    {"mnuWidget", "mnuWidgetDel", "&Delete Widget"},
    {"mnuWidget", "hrwg1", "", Kind::Separator},
    {"mnuWidget", "mnuWidgetFile", "Add From File"},
    {"mnuWidget", "mnuWidgetDelFile", "D&elete File"},
    {"mnuWidget", "mnuhrwidget", "", Kind::Separator},
    {"mnuWidget", "mnuInfoChannel", "&Info Channel"},
    {"mnuWidget", "mnuWwbZ", "Window", Kind::Menu},
    {"mnuWwbZ", "mnuWwbZ1", "1024 x 576"},
    {"mnuWwbZ", "mnuWwbZ2", "1280 x 720"},
    {"mnuWwbZ", "mnuWwbZ3", "&Fixed", Kind::Check},
    {"mnuWidget", "hrWidgetNew", "", Kind::Separator},
    {"mnuWidget", "mnuWidgetNew", "&New Window..."},
    {"mnuWidget", "mnuWidgetDuplicate", "D&uplicate Window..."},
    {"mnuWidget", "mnuWidgetRename", "&Rename Window..."},

    {nullptr, "mnuImage", "&Image", Kind::Menu},
    {"mnuImage", "mnuImgTambah", "Tambah"},
    {"mnuImage", "mnuImgRubah", "&Rubah"},
    {"mnuImage", "mnuImgSave", "&Save"},
    {"mnuImage", "mnuImgChe", "Widget Check"},
    {"mnuImage", "hrImgReplace", "", Kind::Separator},
    {"mnuImage", "mnuImgReplace", "Re&place Picture..."},
    {"mnuImage", "hrImgViews", "", Kind::Separator},
    {"mnuImage", "mnuImgThumbnails", "T&humbnails", Kind::Check},
    {"mnuImage", "mnuImgGrid", "&Grid", Kind::Check},

    {nullptr, "mnuColor", "&Color", Kind::Menu},
    {"mnuColor", "mnuCOpen", "&Open"},
    {"mnuColor", "mnuCHapus", "&Hapus"},
    {"mnuColor", "mnuCSave", "&Save"},

    {nullptr, "mnuLang", "Language", Kind::Menu},
    {"mnuLang", "mnuLangOpen", "Open"},
    {"mnuLang", "mnuLangCopy(1)", "&Copy Source"},
    {"mnuLang", "mnuLangCopy(2)", "C&opy Trans"},
    {"mnuLang", "mnuLangCopy(3)", "Cop&y Not Translate"},
    {"mnuLang", "mnuLangPaste", "&Paste Trans"},
    {"mnuLang", "mnuLangSearch", "&Search Text"},
    {"mnuLang", "mnuLangTranslate", "&Translate"},
    {"mnuLang", "mnuLangTrans(0)", "&Refrash"},
    {"mnuLang", "mnuLangSave", "Save Trans"},
    {"mnuLang", "hrTextFit", "", Kind::Separator},
    {"mnuLang", "mnuTextFit", "Text Fit"},
    {"mnuLang", "hrExchange", "", Kind::Separator},
    {"mnuLang", "mnuLangExport", "&Export..."},
    {"mnuLang", "mnuLangImport", "&Import..."},
    {"mnuLang", "hrLangWork", "", Kind::Separator},
    {"mnuLang", "mnuLangNext", "&Next Untranslated"},
    {"mnuLang", "mnuLangPanel", "Pane&l", Kind::Check},
    {"mnuLang", "mnuLangSpelling", "Spellin&g", Kind::Check},
    {"mnuLang", "mnuLangCompare", "Co&mpare Languages..."},
    {"mnuLang", "hrLangNew", "", Kind::Separator},
    {"mnuLang", "mnuLangNew", "Ne&w Language..."},

    {nullptr, "mnuTool", "&Tool", Kind::Menu},
    {"mnuTool", "mnuCblock", "Copy Block Name"},
    {"mnuTool", "mnuConvert", "Convert Size", Kind::Menu},
    {"mnuConvert", "mnuC(0)", "x 0.8"},
    {"mnuConvert", "mnuC(1)", "x 125"},
    {"mnuTool", "mnuTTop", "Distance", Kind::Menu},
    {"mnuTTop", "mnuTD(0)", "Top"},
    {"mnuTTop", "mnuTD(1)", "Left"},
    {"mnuTool", "mnuTReplace", "&Replace"},
    {"mnuTool", "mnuScan", "&Scan", Kind::Menu},
    {"mnuScan", "mnuSKernel", "Kernel"},
    {"mnuScan", "mnuSWidget", "Widget"},
    {"mnuTool", "hrNames", "", Kind::Separator},
    {"mnuTool", "mnuGoTo", "Go to Definition"},
    {"mnuTool", "mnuUses", "Find Uses"},
    {"mnuTool", "mnuBack", "Back"},
    {"mnuTool", "mnuForward", "Forward"},
    {"mnuTool", "mnuSearch", "Search Windows..."},
    {"mnuTool", "hrRename", "", Kind::Separator},
    {"mnuTool", "mnuRename", "Rename..."},
    {"mnuTool", "mnuUndoRename", "Undo Rename"},
    {"mnuTool", "hrQuickOpen", "", Kind::Separator},
    {"mnuTool", "mnuQuickOpen", "Quick &Open..."},
    {"mnuTool", "hrFind", "", Kind::Separator},
    {"mnuTool", "mnuFind", "&Find or Filter..."},
    {"mnuTool", "mnuGoToLine", "Go to &Line..."},
    {"mnuTool", "hrHelp", "", Kind::Separator},
    {"mnuTool", "mnuShortcuts", "&Keyboard Shortcuts..."},
    {"mnuTool", "mnuGuide", "User &Guide"},

    {nullptr, "mnuView", "&View", Kind::Menu},
    {"mnuView", "mnuV(0)", "Overflow", Kind::Check},
    {"mnuView", "mnuV(1)", "Name", Kind::Check},
    {"mnuView", "mnuV(2)", "Image", Kind::Check},
    {"mnuView", "mnuV(3)", "String", Kind::Check},
    {"mnuView", "mnuV(4)", "Size", Kind::Check},
    {"mnuView", "mnuV(5)", "Position", Kind::Check},
    {"mnuView", "mnuCompletion", "Completion", Kind::Check},
    {"mnuView", "mnuFormat", "&Format"},
    {"mnuView", "mnuVColor", "&Color", Kind::Menu},
    {"mnuVColor", "mnuColCode(1)", "&Convert To Code"},
    {"mnuVColor", "mnuColCode(2)", "Con&vert to Var"},
    {"mnuView", "mnuVCompare", "&Compare", Kind::Menu},
    {"mnuVCompare", "mnuVCopy", "&Copy"},
    {"mnuVCompare", "mnuVPaste", "&Paste"},
    {"mnuView", "hrLink", "", Kind::Separator},
    {"mnuView", "mnuLink", "Link", Kind::Check},
    {"mnuView", "mnuRulers", "&Rulers", Kind::Check},
    {"mnuView", "hrReceiver", "", Kind::Separator},
    {"mnuView", "mnuReceiver", "Receiver Vie&w", Kind::Check},
    {"mnuView", "mnuHidden", "&Hidden Blocks", Kind::Check},
    {"mnuView", "mnuActionSafe", "&Action-Safe Area", Kind::Check},
    {"mnuView", "mnuTitleSafe", "&Title-Safe Area", Kind::Check},
    {"mnuView", "mnuOverview", "&Overview", Kind::Check},
    {"mnuView", "hrRoom", "", Kind::Separator},
    {"mnuView", "mnuWideSource", "Wide So&urce", Kind::Check},
    {"mnuView", "mnuPreviewAlone", "&Preview Alone", Kind::Check},
    {"mnuView", "hrLooks", "", Kind::Separator},
    {"mnuView", "mnuLooks", "Li&ght and Dark", Kind::Menu},
    {"mnuLooks", "mnuLight", "&Light", Kind::Check},
    {"mnuLooks", "mnuDark", "&Dark", Kind::Check},
    {"mnuLooks", "mnuAsDesktop", "&As the Desktop", Kind::Check},

    {nullptr, "mnuArrange", "A&rrange", Kind::Menu},
    {"mnuArrange", "mnuAlignLeft", "Align &Left"},
    {"mnuArrange", "mnuAlignCentre", "Align &Centre"},
    {"mnuArrange", "mnuAlignRight", "Align &Right"},
    {"mnuArrange", "mnuAlignTop", "Align &Top"},
    {"mnuArrange", "mnuAlignMiddle", "Align &Middle"},
    {"mnuArrange", "mnuAlignBottom", "Align &Bottom"},
    {"mnuArrange", "hrSame", "", Kind::Separator},
    {"mnuArrange", "mnuSameWidth", "Same &Width"},
    {"mnuArrange", "mnuSameHeight", "Same &Height"},
    {"mnuArrange", "mnuSameSize", "Same Si&ze"},
    {"mnuArrange", "hrDistribute", "", Kind::Separator},
    {"mnuArrange", "mnuDistributeH", "&Distribute Horizontally"},
    {"mnuArrange", "mnuDistributeV", "Distribute &Vertically"},
    {"mnuArrange", "hrCentre", "", Kind::Separator},
    {"mnuArrange", "mnuCentreInParent", "Centre in &Parent"},
    {"mnuArrange", "mnuFitToPicture", "&Fit to Picture"},
    {"mnuArrange", "hrOrder", "", Kind::Separator},
    {"mnuArrange", "mnuBringForward", "Bring F&orward"},
    {"mnuArrange", "mnuSendBack", "Send Bac&k"},
    {"mnuArrange", "mnuDuplicate", "D&uplicate"},
    {"mnuArrange", "mnuDelete", "D&elete"},
    {"mnuArrange", "mnuSelectParent", "Select P&arent"},
    {"mnuArrange", "hrSnap", "", Kind::Separator},
    {"mnuArrange", "mnuSnap", "&Snap", Kind::Check},
    {"mnuArrange", "mnuGrid", "&Grid", Kind::Menu},
    {"mnuGrid", "mnuGrid(0)", "&Off", Kind::Check},
    {"mnuGrid", "mnuGrid(4)", "&4", Kind::Check},
    {"mnuGrid", "mnuGrid(8)", "&8", Kind::Check},
    {"mnuGrid", "mnuGrid(16)", "1&6", Kind::Check},
    {"mnuArrange", "mnuInsert", "&Insert Block", Kind::Menu},
    {"mnuInsert", "mnuInsert(0)", "&Text"},
    {"mnuInsert", "mnuInsert(1)", "&Image"},
    {"mnuInsert", "mnuInsert(2)", "Bo&xitem"},
    {"mnuInsert", "mnuInsert(3)", "&Button"},
    {"mnuInsert", "mnuInsert(4)", "&Progbar"},

    {nullptr, "mnuAbout", "&About"},
};

} // namespace

MainMenu::MainMenu(QMenuBar &bar, Talk &talk) : m_talk(talk)
{
    for (const Item &item : kItems) {
        const QString name = QLatin1String(item.name);
        const QString caption = QLatin1String(item.caption);
        QMenu *above = item.above ? menu(item.above) : nullptr;
        QAction *action = nullptr;
        if (item.kind == Kind::Menu) {
            QMenu *made = above ? above->addMenu(caption) : bar.addMenu(caption);
            made->setObjectName(name);
            m_menus.insert(item.name, made);
            action = made->menuAction();
        } else if (item.kind == Kind::Separator) {
            action = above->addSeparator();
        } else {
            action = above ? above->addAction(caption) : bar.addAction(caption);
            action->setCheckable(item.kind == Kind::Check);
            action->setEnabled(false);
        }
        action->setObjectName(name);
        m_actions.insert(item.name, action);
    }
}

void MainMenu::on(const char *name, const Command &command)
{
    QAction *item = action(name);
    item->setEnabled(true);
    QObject::connect(item, &QAction::triggered, item, [this, command] { m_talk.run(command); });
}

QAction *MainMenu::insert(const char *before, const QString &name, const QString &caption,
                          const Command &command)
{
    QAction *next = action(before);
    auto *menu = qobject_cast<QMenu *>(next->associatedObjects().value(0));
    Q_ASSERT(menu);
    auto *item = new QAction(QString(caption).replace(u'&', QLatin1String("&&")), menu);
    item->setObjectName(name);
    menu->insertAction(next, item);
    QObject::connect(item, &QAction::triggered, item, [this, command] { m_talk.run(command); });
    return item;
}

void MainMenu::setEnabled(const char *name, bool enabled)
{
    if (QMenu *submenu = m_menus.value(name))
        submenu->setEnabled(enabled); // takes its action along
    else
        action(name)->setEnabled(enabled);
}

QAction *MainMenu::action(const char *name) const
{
    QAction *found = m_actions.value(name);
    Q_ASSERT(found);
    return found;
}

QMenu *MainMenu::menu(const char *name) const
{
    QMenu *found = m_menus.value(name);
    Q_ASSERT(found);
    return found;
}

} // namespace quillmere
