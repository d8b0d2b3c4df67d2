#include "stage/forms/ArrangeMenu.h"

#include "asking/Talk.h"
#include "controls/Commands.h"
#include "source/forms/SourceBox.h"
#include "stage/forms/BlockLink.h"
#include "stage/forms/Picture.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QSettings>
#include <QWidget>

#include <algorithm>

namespace quillmere {

namespace {

const QString kSnap = QStringLiteral("stage/snap"), kGrid = QStringLiteral("stage/grid");

struct Arranging
{
    const char *name;
    Arrange command;
    Qt::Key key;
};
constexpr Arranging kArranging[] = {
    {"mnuAlignLeft", Arrange::AlignLeft, Qt::Key_L},
    {"mnuAlignCentre", Arrange::AlignCentre, Qt::Key_C},
    {"mnuAlignRight", Arrange::AlignRight, Qt::Key_R},
    {"mnuAlignTop", Arrange::AlignTop, Qt::Key_T},
    {"mnuAlignMiddle", Arrange::AlignMiddle, Qt::Key_M},
    {"mnuAlignBottom", Arrange::AlignBottom, Qt::Key_B},
    {"mnuSameWidth", Arrange::SameWidth, Qt::Key_W},
    {"mnuSameHeight", Arrange::SameHeight, Qt::Key_H},
    {"mnuSameSize", Arrange::SameSize, Qt::Key_Z},
    {"mnuDistributeH", Arrange::DistributeH, Qt::Key_D},
    {"mnuDistributeV", Arrange::DistributeV, Qt::Key_V},
    {"mnuCentreInParent", Arrange::CentreInParent, Qt::Key_P},
    {"mnuFitToPicture", Arrange::FitToPicture, Qt::Key_F},
};

struct Grid
{
    const char *name;
    int pixels;
    Qt::Key key;
};
constexpr Grid kGrids[] = {{"mnuGrid(0)", 0, Qt::Key_0},
                           {"mnuGrid(4)", 4, Qt::Key_4},
                           {"mnuGrid(8)", 8, Qt::Key_8},
                           {"mnuGrid(16)", 16, Qt::Key_6}};

struct InsertItem
{
    const char *name;
    NewBlock kind;
    Qt::Key key; // with Shift
};
constexpr InsertItem kInserts[] = {{"mnuInsert(0)", NewBlock::Text, Qt::Key_T},
                                   {"mnuInsert(1)", NewBlock::Image, Qt::Key_I},
                                   {"mnuInsert(2)", NewBlock::Boxitem, Qt::Key_X},
                                   {"mnuInsert(3)", NewBlock::Button, Qt::Key_B},
                                   {"mnuInsert(4)", NewBlock::Progbar, Qt::Key_P}};

// Whether a block has a picture is known without looking how large that is.
const PictureSize kAnySize = [](const QString &) { return QSize(1, 1); };

} // namespace

ArrangeMenu::ArrangeMenu(Stage &stage, BlockLink &link, Picture &picture, PictureSize sizeOf, Talk &talk,
                         QObject *parent)
    : QObject(parent), m_stage(stage), m_link(link), m_picture(picture), m_sizeOf(std::move(sizeOf)),
      m_talk(talk)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &ArrangeMenu::enable);
    connect(&link, &BlockLink::chosenChanged, this, &ArrangeMenu::enable);
    connect(&link, &BlockLink::textSettled, &m_soon, qOverload<>(&QTimer::start));
    qApp->installEventFilter(this);
}

// A menu takes no focus: to the keys it is the picture that is in use, and a letter that chooses in the menu,
// or Delete, would be taken for a command before the menu sees it.
bool ArrangeMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride || !qobject_cast<QMenu *>(watched))
        return false;
    const Qt::KeyboardModifiers held = static_cast<QKeyEvent *>(event)->modifiers();
    const bool isPlain = !(held & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    event->setAccepted(isPlain);
    return isPlain;
}

void ArrangeMenu::addCommands(Commands &menu, const QList<QWidget *> &places)
{
    m_places = places;
    addArranging(menu);
    addElements(menu);
    addSnapping(menu);
    addInserting(menu);
    enable();
}

void ArrangeMenu::add(Commands &menu, const char *name, const QKeySequence &keys,
                      const std::function<void()> &command,
                      const std::function<bool(const QList<int> &)> &applies)
{
    QAction *action = menu.action(name);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    for (QWidget *place : std::as_const(m_places))
        place->addAction(action);
    menu.on(name, command);
    if (applies)
        m_items.append({action, applies});
}

void ArrangeMenu::addArranging(Commands &menu)
{
    for (const Arranging &item : kArranging) {
        const QString caption = menu.action(item.name)->text().remove(u'&');
        add(menu, item.name, item.key, [this, &item, caption] { arrange(item.command, caption); });
        m_arranging.insert(item.command, menu.action(item.name));
    }
}

void ArrangeMenu::addElements(Commands &menu)
{
    const auto isWhole = [this](int block) { return whyNotWhole(m_stage.outline(), block).isEmpty(); };
    const auto anyWhole = [isWhole](const QList<int> &blocks) {
        return std::ranges::any_of(blocks, isWhole);
    };
    static const struct
    {
        const char *name;
        QKeySequence keys;
        void (PictureCommands::*command)();
    } items[] = {{"mnuBringForward", Qt::Key_PageUp, &PictureCommands::bringForward},
                 {"mnuSendBack", Qt::Key_PageDown, &PictureCommands::sendBack},
                 {"mnuDuplicate", Qt::CTRL | Qt::Key_D, &PictureCommands::duplicate},
                 {"mnuDelete", Qt::Key_Delete, &PictureCommands::remove},
                 {"mnuSelectParent", Qt::Key_U, &PictureCommands::selectParent}};
    for (const auto &item : items) {
        const auto command = [this, &item] {
            m_link.takeChosen();
            PictureCommands &commands = m_picture.commands;
            (commands.*item.command)();
        };
        const bool selects = item.command == &PictureCommands::selectParent;
        add(menu, item.name, item.keys, command, [this, anyWhole, selects](const QList<int> &blocks) {
            return selects ? !blocks.isEmpty() && parentOf(m_stage.outline(), blocks.first()) >= 0
                           : anyWhole(blocks);
        });
    }
}

void ArrangeMenu::addSnapping(Commands &menu)
{
    QAction *snap = menu.action("mnuSnap");
    m_picture.gestures.snaps = QSettings().value(kSnap, true).toBool();
    snap->setChecked(m_picture.gestures.snaps);
    add(menu, "mnuSnap", Qt::Key_S, [this, snap] {
        m_picture.gestures.snaps = snap->isChecked();
        QSettings().setValue(kSnap, snap->isChecked());
    });
    m_grid = QSettings().value(kGrid, 0).toInt();
    auto *group = new QActionGroup(this);
    for (const Grid &grid : kGrids) {
        QAction *action = group->addAction(menu.action(grid.name));
        action->setChecked(grid.pixels == m_grid);
        add(menu, grid.name, grid.key, [this, pixels = grid.pixels] {
            m_grid = pixels;
            QSettings().setValue(kGrid, pixels);
        });
    }
    if (!group->checkedAction()) { // the settings hold another number
        m_grid = 0;
        menu.action("mnuGrid(0)")->setChecked(true);
    }
}

void ArrangeMenu::addInserting(Commands &menu)
{
    for (const InsertItem &item : kInserts) {
        const auto command = [this, kind = item.kind] {
            m_link.takeChosen();
            m_picture.gestures.insertNext(kind);
        };
        add(menu, item.name, Qt::SHIFT | item.key, command,
            [this](const QList<int> &) { return !m_stage.outline().blocks().empty(); });
    }
}

void ArrangeMenu::arrange(Arrange command, const QString &caption)
{
    m_link.takeChosen();
    const Outline &outline = m_stage.outline();
    const QList<int> blocks = m_stage.selection();
    const QList<BlockBox> boxes = arranged(command, outline, blocks, m_sizeOf);
    const QList<TextChange> changes = rectChanges(outline, boxes);
    QString said = changes.isEmpty()   ? tr("%1: nothing to change.").arg(caption)
                   : boxes.size() == 1 ? tr("%1: 1 block changed.").arg(caption)
                                       : tr("%1: %2 blocks changed.").arg(caption).arg(boxes.size());
    for (const int block : blocks) {
        if (const QString why = whyFixed(outline, block); !why.isEmpty()) {
            said += u' ' + why + u'.';
            break;
        }
    }
    if (!changes.isEmpty())
        m_stage.write(changes, m_stage.revision(), blocks);
    m_talk.say(said);
}

void ArrangeMenu::enable()
{
    if (m_stage.isOutlineSlow())
        return; // textSettled() comes when it is there
    const QList<int> blocks = m_link.chosen();
    const QSet<Arrange> commands = arrangeable(m_stage.outline(), blocks, kAnySize);
    for (auto item = m_arranging.cbegin(); item != m_arranging.cend(); ++item)
        item.value()->setEnabled(commands.contains(item.key()));
    for (const Item &item : std::as_const(m_items))
        item.action->setEnabled(item.applies(blocks));
}

} // namespace quillmere
