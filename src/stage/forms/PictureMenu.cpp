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
    addBlocks(*menu, stage, under);
    menu->addSeparator();
    const auto add = [&](const QString &text, const char *name, void (PictureCommands::*command)()) {
        QAction *action = menu->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setEnabled(!stage.selection().isEmpty());
        QObject::connect(action, &QAction::triggered, &commands, command);
    };
    add(QMenu::tr("&Properties"), "mnuPictureProperties", &PictureCommands::openProperties);
    add(QMenu::tr("&Go to Source"), "mnuPictureSource", &PictureCommands::goToSource);
    add(QMenu::tr("&Copy"), "mnuPictureCopy", &PictureCommands::copy);
    add(QMenu::tr("&Duplicate"), "mnuPictureDuplicate", &PictureCommands::duplicate);
    add(QMenu::tr("&Hide"), "mnuPictureHide", &PictureCommands::hide);
    menu->popup(browser.mapToGlobal(at));
}

} // namespace quillmere
