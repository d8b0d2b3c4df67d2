#include "app/MenuIcons.h"

#include "controls/Commands.h"
#include "controls/DrawnIcon.h"

#include <QAction>

namespace quillmere {

namespace {

const char *const kNew = "M 3.5 1.5 L 9.5 1.5 L 12.5 4.5 L 12.5 14.5 L 3.5 14.5 Z M 9.5 1.5 L 9.5 4.5 "
                         "L 12.5 4.5 M 8 7.5 L 8 12.5 M 5.5 10 L 10.5 10";
const char *const kOpen = "M 1.5 13 L 1.5 3.5 L 6 3.5 L 7.5 5 L 13.5 5 L 13.5 7 M 1.5 13 L 4 7 L 15 7 "
                          "L 12.5 13 Z";
const char *const kClock = "O 8 8 6 M 8 4.5 L 8 8 L 10.5 9.5";
const char *const kSave =
    "M 2.5 2.5 L 11 2.5 L 13.5 5 L 13.5 13.5 L 2.5 13.5 Z M 5 2.5 L 5 6 L 10 6 L 10 2.5 "
    "M 4.5 13.5 L 4.5 9.5 L 11.5 9.5 L 11.5 13.5";
const char *const kUndo = "M 5.5 2 L 2 5.5 L 5.5 9 M 2 5.5 L 9.5 5.5 C 12 5.5 13.5 7.2 13.5 9.5 "
                          "C 13.5 11.8 12 13.5 9.5 13.5 L 6 13.5";
const char *const kReload = "M 13.5 3 L 13.5 6.5 L 10 6.5 M 13.2 6.2 C 12.2 3.9 10.3 2.5 8 2.5 "
                            "C 5 2.5 2.5 5 2.5 8 C 2.5 11 5 13.5 8 13.5 C 10.3 13.5 12.2 12.2 13.1 10.2";
const char *const kCopy = "M 5.5 4.5 L 13.5 4.5 L 13.5 14.5 L 5.5 14.5 Z M 3.5 11.5 L 2.5 11.5 L 2.5 1.5 "
                          "L 10.5 1.5 L 10.5 2.5";
const char *const kPaste = "M 3.5 3.5 L 12.5 3.5 L 12.5 14.5 L 3.5 14.5 Z M 6 2 L 10 2 L 10 5 L 6 5 Z";
const char *const kFind = "O 6.5 6.5 4.5 M 10 10 L 14.5 14.5";
const char *const kReplace = "M 2 5 L 13.5 5 M 10.5 2 L 13.5 5 L 10.5 8 M 14 11 L 2.5 11 M 5.5 8 L 2.5 11 "
                             "L 5.5 14";
const char *const kDelete = "M 2.5 4.5 L 13.5 4.5 M 6 4.5 L 6 2.5 L 10 2.5 L 10 4.5 M 4 4.5 L 4.7 14 "
                            "L 11.3 14 L 12 4.5 M 6.5 7 L 6.5 11.5 M 9.5 7 L 9.5 11.5";
const char *const kAdd = "M 8 3 L 8 13 M 3 8 L 13 8";
const char *const kEdit = "M 2.5 13.5 L 3.3 10.3 L 11 2.6 L 13.4 5 L 5.7 12.7 Z M 9.6 4 L 12 6.4";
const char *const kExport = "M 8 10 L 8 2 M 5 5 L 8 2 L 11 5 M 2.5 9.5 L 2.5 13.5 L 13.5 13.5 L 13.5 9.5";
const char *const kImport = "M 8 2 L 8 10 M 5 7 L 8 10 L 11 7 M 2.5 9.5 L 2.5 13.5 L 13.5 13.5 L 13.5 9.5";
const char *const kBack = "M 13.5 8 L 2.5 8 M 7 3.5 L 2.5 8 L 7 12.5";
const char *const kForward = "M 2.5 8 L 13.5 8 M 9 3.5 L 13.5 8 L 9 12.5";
const char *const kExit = "M 9.5 2.5 L 3 2.5 L 3 13.5 L 9.5 13.5 M 6.5 8 L 14 8 M 11 5 L 14 8 L 11 11";
const char *const kPicture = "M 1.5 3 L 14.5 3 L 14.5 13 L 1.5 13 Z M 1.5 11 L 5.5 7 L 9 10.5 L 11 8.5 "
                             "L 14.5 12 O 10.7 5.8 1";

const char *const kHelp =
    "O 8 8 6.5 M 6 6.2 C 6 4.8 6.9 4.1 8 4.1 C 9.2 4.1 10 4.9 10 6 C 10 7.5 8 7.6 8 9.2 M 8 11.3 L 8 11.6";

constexpr struct
{
    const char *item;
    const char *icon; // in icon themes
    const char *const *drawn;
} kIcons[] = {
    {"mnuOpenTheme", "document-open", &kOpen},
    {"mnuNewTheme", "document-new", &kNew},
    {"mnuRecentThemes", "document-open-recent", &kClock},
    {"mnuSave", "document-save", &kSave},
    {"mnuRestore", "document-revert", &kUndo},
    {"mnuExit", "application-exit", &kExit},
    {"mnuWidgetOpen", "view-refresh", &kReload},
    {"mnuWidgetDel", "list-remove", &kDelete},
    {"mnuWidgetFile", "list-add", &kAdd},
    {"mnuWidgetDelFile", "edit-delete", &kDelete},
    {"mnuWidgetNew", "document-new", &kNew},
    {"mnuWidgetDuplicate", "edit-copy", &kCopy},
    {"mnuWidgetRename", "document-properties", &kEdit},
    {"mnuImgTambah", "list-add", &kAdd},
    {"mnuImgRubah", "document-properties", &kEdit},
    {"mnuImgSave", "document-save", &kSave},
    {"mnuImgChe", "edit-find", &kFind},
    {"mnuImgReplace", "insert-image", &kPicture},
    {"mnuCOpen", "view-refresh", &kReload},
    {"mnuCHapus", "edit-delete", &kDelete},
    {"mnuCSave", "document-save", &kSave},
    {"mnuLangOpen", "document-open", &kOpen},
    {"mnuLangCopy(1)", "edit-copy", &kCopy},
    {"mnuLangPaste", "edit-paste", &kPaste},
    {"mnuLangSearch", "edit-find", &kFind},
    {"mnuLangSave", "document-save", &kSave},
    {"mnuLangExport", "document-send", &kExport},
    {"mnuLangImport", "document-import", &kImport},
    {"mnuLangNew", "document-new", &kNew},
    {"mnuCblock", "edit-copy", &kCopy},
    {"mnuTReplace", "edit-find-replace", &kReplace},
    {"mnuGoTo", "go-jump", &kForward},
    {"mnuUses", "edit-find", &kFind},
    {"mnuBack", "go-previous", &kBack},
    {"mnuForward", "go-next", &kForward},
    {"mnuSearch", "system-search", &kFind},
    {"mnuRename", "document-properties", &kEdit},
    {"mnuUndoRename", "edit-undo", &kUndo},
    {"mnuQuickOpen", "system-search", &kFind},
    {"mnuGuide", "help-contents", &kHelp},
    {"mnuVCopy", "edit-copy", &kCopy},
    {"mnuVPaste", "edit-paste", &kPaste},
    {"mnuDuplicate", "edit-copy", &kCopy},
    {"mnuDelete", "edit-delete", &kDelete},
};

} // namespace

void showMenuIcons(Commands &menu, bool own)
{
    for (const auto &[item, icon, drawn] : kIcons) {
        const QIcon reserve = drawnIcon(QLatin1String(*drawn));
        menu.action(item)->setIcon(own ? reserve : QIcon::fromTheme(QLatin1String(icon), reserve));
    }
}

} // namespace quillmere
