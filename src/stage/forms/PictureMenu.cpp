#include "stage/forms/PictureMenu.h"

#include "controls/Named.h"
#include "stage/forms/PictureCommands.h"

#include <QMenu>

namespace quillmere {

namespace {

constexpr qsizetype kMostListed = 20; // of the blocks at one place
const QString kName = QStringLiteral("mnuPicture");

void addBlocks(QMenu &menu, Stage &stage, const QList<int> &under)
{
    const Outline &outline = stage.outline();
    for (const int block : under.first(std::min(kMostListed, under.size()))) {
        const std::optional<Attribute> kind = outline.attribute(outline.blocks()[size_t(block)], u"class");
        QString text = calledInText(outline, block);
        if (kind)
            text += u"  " + outline.at(kind->value);
        QAction *action = menu.addAction(text.replace(u'&', QStringLiteral("&&")));
        action->setObjectName(QStringLiteral("mnuPictureBlock(%1)").arg(menu.actions().size() - 1));
        action->setCheckable(true);
        action->setChecked(stage.selection().contains(block));
        action->setToolTip(QMenu::tr("Selects this block."));
        QObject::connect(action, &QAction::triggered, &stage, [&stage, block, revision = stage.revision()] {
            if (revision == stage.revision())
                stage.select({block}, Stage::By::Picture);
        });
    }
}

} // namespace

void showPictureMenu(Stage &stage, PictureCommands &commands, const QList<int> &under, QWidget &browser,
                     QPoint at)
{
    QWidget *window = browser.window();
    if (auto *shown = window->findChild<QMenu *>(kName, Qt::FindDirectChildrenOnly);
        shown && shown->isVisible())
        return; // some systems send an event of the mouse's menu for the key as well
    auto *menu = new QMenu(window);
    menu->setObjectName(kName);
    menu->setAccessibleName(QMenu::tr("Blocks here"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    addBlocks(*menu, stage, under);
    menu->addSeparator();
    const auto add = [&](const QString &text, const char *name, void (PictureCommands::*command)(),
                         const QString &tip) {
        QAction *action = menu->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setToolTip(tip);
        action->setEnabled(!stage.selection().isEmpty());
        QObject::connect(action, &QAction::triggered, &commands, command);
    };
    add(QMenu::tr("&Properties"), "mnuPictureProperties", &PictureCommands::openProperties,
        QMenu::tr("Opens the properties of the selected blocks."));
    add(QMenu::tr("&Go to Source"), "mnuPictureSource", &PictureCommands::goToSource,
        QMenu::tr("Puts the caret where the block stands in the source."));
    add(QMenu::tr("&Copy"), "mnuPictureCopy", &PictureCommands::copy,
        QMenu::tr("Copies the source of the selected blocks."));
    add(QMenu::tr("&Duplicate"), "mnuPictureDuplicate", &PictureCommands::duplicate,
        QMenu::tr("Makes a copy of each selected block, with a name of its own."));
    add(QMenu::tr("&Hide"), "mnuPictureHide", &PictureCommands::hide,
        QMenu::tr(
            "Hides the selected blocks in the preview. Their ticks in the block list show them again."));
    menu->popup(browser.mapToGlobal(at));
}

} // namespace quillmere
