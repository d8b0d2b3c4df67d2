#include "stage/forms/Picture.h"

#include "browser/forms/WebBrowser.h"
#include "preview/forms/PreviewFrame.h"
#include "stage/forms/PictureMenu.h"
#include "stage/forms/StageOverlay.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

namespace quillmere {

namespace {

constexpr qsizetype kMostHeld = 256; // a page that does not come makes nobody wait for ever

struct KeyCommand
{
    Qt::KeyboardModifiers modifiers;
    int key;
    void (PictureCommands::*command)();
};

constexpr Qt::KeyboardModifiers kPlain = Qt::NoModifier;
const KeyCommand kKeys[] = {
    {kPlain, Qt::Key_Delete, &PictureCommands::remove},
    {kPlain, Qt::Key_PageUp, &PictureCommands::bringForward},
    {kPlain, Qt::Key_PageDown, &PictureCommands::sendBack},
    {Qt::ControlModifier, Qt::Key_A, &PictureCommands::selectAll},
    {Qt::ControlModifier, Qt::Key_D, &PictureCommands::duplicate},
    {Qt::ControlModifier, Qt::Key_C, &PictureCommands::copy},
    {Qt::ControlModifier, Qt::Key_X, &PictureCommands::cut},
    {Qt::ControlModifier, Qt::Key_V, &PictureCommands::paste},
    {Qt::ControlModifier, Qt::Key_Z, &PictureCommands::undo},
    {Qt::ControlModifier, Qt::Key_Y, &PictureCommands::redo},
    {Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z, &PictureCommands::redo},
};

const KeyCommand *commandOf(int key, Qt::KeyboardModifiers modifiers)
{
    for (const KeyCommand &command : kKeys) {
        if (command.key == key && command.modifiers == modifiers)
            return &command;
    }
    return nullptr;
}

QPoint directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

Qt::KeyboardModifiers heldKeys(Qt::KeyboardModifiers modifiers)
{
    return modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier | Qt::GroupSwitchModifier);
}

bool isTab(int key)
{
    return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool isMenuKey(int key, Qt::KeyboardModifiers modifiers)
{
    return key == Qt::Key_Menu || (key == Qt::Key_F10 && modifiers == Qt::ShiftModifier);
}

} // namespace

Picture::Picture(Stage &stage, SourceTab &tab, PreviewFrame &frame, Talk &talk, QObject *parent)
    : QObject(parent), overlay(new StageOverlay(frame)), gestures(stage, frame, *overlay, talk),
      commands(stage, tab, talk), m_stage(stage), m_frame(frame)
{
    connect(&stage, &Stage::placesChanged, this, &Picture::takeHeld);
    connect(&stage, &Stage::textChanged, this, [this] {
        if (!m_acting)
            m_held.clear(); // they were meant for what was seen before
    });
    connect(frame.wb, &WebBrowser::failed, this, [this] { m_held.clear(); });
    connect(&frame, &PreviewFrame::viewChanged, overlay, &StageOverlay::drawAgain);
    connect(&gestures, &Gestures::blockOpened, this, &Picture::blockOpened);
    connect(&commands, &PictureCommands::blockOpened, this, &Picture::blockOpened);
    connect(&frame, &PreviewFrame::goes, this, [this] { m_frameGoes = true; });
    frame.wb->setMouseTracking(true);
    watch(frame.wb);
    for (QObject *child : frame.wb->children())
        watch(child);
}

void Picture::watch(QObject *object)
{
    if (object->isWidgetType())
        object->installEventFilter(this);
}

bool Picture::eventFilter(QObject *watched, QEvent *event)
{
    if (m_frameGoes)
        return false;
    auto &widget = static_cast<QWidget &>(*watched);
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (watched == m_frame.wb) {
            watch(static_cast<QChildEvent *>(event)->child());
            overlay->raise();
        }
        return false;
    case QEvent::Resize:
        if (watched == m_frame.wb)
            overlay->resize(m_frame.wb->size());
        return false;
    case QEvent::Hide:
        if (watched == m_frame.wb)
            gestures.cancel();
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return mouse(widget, static_cast<QMouseEvent &>(*event));
    case QEvent::Leave:
        if (!m_frame.wb->rect().contains(m_frame.wb->mapFromGlobal(QCursor::pos())))
            gestures.leave();
        return true;
    case QEvent::Enter:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
        return true;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::InputMethod:
        event->ignore(); // Qt then makes mouse events of them
        return true;
    case QEvent::ContextMenu: {
        auto &menu = static_cast<QContextMenuEvent &>(*event);
        const QPointF at = widget.mapTo(m_frame.wb, menu.pos());
        const bool isKey = menu.reason() == QContextMenuEvent::Keyboard;
        take({isKey ? Input::MenuKey : Input::Menu, {at, menu.modifiers(), 0}, 0});
        menu.accept();
        return true;
    }
    case QEvent::ShortcutOverride:
        if (isKey(static_cast<QKeyEvent &>(*event)))
            event->accept();
        else
            event->ignore();
        return true;
    case QEvent::KeyPress:
        return key(static_cast<QKeyEvent &>(*event));
    case QEvent::KeyRelease:
        event->ignore();
        return true;
    default:
        return false;
    }
}

bool Picture::mouse(QWidget &widget, QMouseEvent &event)
{
    const QPointF at = widget.mapTo(m_frame.wb, event.position());
    const Gestures::Pointer pointer{at, event.modifiers(), event.timestamp()};
    event.accept();
    if (event.type() == QEvent::MouseMove) {
        const bool isDrag = event.buttons() & Qt::LeftButton || !event.spontaneous();
        take({isDrag ? Input::Move : Input::Hover, pointer, 0});
        return true;
    }
    if (event.type() == QEvent::MouseButtonPress)
        m_frame.wb->setFocus(Qt::MouseFocusReason);
    if (event.button() != Qt::LeftButton)
        return true;
    take({event.type() == QEvent::MouseButtonPress     ? Input::Press
          : event.type() == QEvent::MouseButtonRelease ? Input::Release
                                                       : Input::DoubleClick,
          pointer, 0});
    return true;
}

bool Picture::isKey(const QKeyEvent &event) const
{
    const Qt::KeyboardModifiers modifiers = heldKeys(event.modifiers());
    const bool isArrow =
        !directionOf(event.key()).isNull() && !(modifiers & ~(Qt::ControlModifier | Qt::ShiftModifier));
    const bool isPlainTab = isTab(event.key()) && !(modifiers & ~Qt::KeyboardModifiers(Qt::ShiftModifier));
    return gestures.isUnderWay() || // one thing at a time: no letter of a menu either
           isArrow || isPlainTab || isMenuKey(event.key(), modifiers) || commandOf(event.key(), modifiers) ||
           (isEnter(event.key()) && modifiers == kPlain && gestures.isInserting()) ||
           (event.key() == Qt::Key_Escape && !m_held.isEmpty());
}

// What is none of the picture's keys goes on to the window.
bool Picture::key(QKeyEvent &event)
{
    const bool isEscape = event.key() == Qt::Key_Escape && heldKeys(event.modifiers()) == kPlain;
    if (isEscape) {
        event.setAccepted(escape());
        return true;
    }
    event.setAccepted(isKey(event));
    if (event.isAccepted())
        take({Input::Key, {{}, heldKeys(event.modifiers()), 0}, event.key()});
    return true;
}

bool Picture::escape()
{
    gestures.endRound();
    if (!m_held.isEmpty()) {
        m_held.clear();
        return true;
    }
    return gestures.cancel() || (endsAlone && endsAlone()) || commands.selectNothing();
}

// What comes while the places are not known waits, and what comes behind it, too.
void Picture::take(const Input &input)
{
    if (m_held.isEmpty() && mayAct(input)) {
        act(input);
        return;
    }
    const bool isMove = input.kind == Input::Move || input.kind == Input::Hover;
    if (isMove && !m_held.isEmpty() && m_held.last().kind == input.kind)
        m_held.last() = input;
    else if (m_held.size() < kMostHeld)
        m_held.append(input);
}

// What belongs to a gesture that has begun needs no places, and there are none while it draws.
bool Picture::mayAct(const Input &input)
{
    const bool asks = input.kind == Input::Press || input.kind == Input::DoubleClick ||
                      input.kind == Input::Menu || input.kind == Input::MenuKey;
    return !asks || m_stage.places();
}

void Picture::takeHeld()
{
    while (!m_held.isEmpty() && mayAct(m_held.first()))
        act(m_held.takeFirst());
}

void Picture::act(const Input &input)
{
    const QScopedValueRollback acting(m_acting, true);
    switch (input.kind) {
    case Input::Press:
        gestures.press(input.pointer);
        break;
    case Input::Hover: // the button was let go where nobody told: over a question or a menu that came up
        if (gestures.isUnderWay())
            gestures.cancel();
        [[fallthrough]];
    case Input::Move:
        gestures.move(input.pointer);
        break;
    case Input::Release:
        gestures.release(input.pointer);
        break;
    case Input::DoubleClick:
        gestures.doubleClick(input.pointer);
        break;
    case Input::Menu:
        showMenu(input.pointer.at);
        break;
    case Input::MenuKey: {
        const QList<int> &selection = m_stage.selection();
        const auto place = selection.isEmpty() ? std::nullopt : m_stage.placeOf(selection.first());
        const QPoint here = m_frame.wb->mapFromGlobal(QCursor::pos());
        const bool isHere = m_frame.wb->rect().contains(here);
        showMenu(place    ? overlay->onGlass(place->box).center()
                 : isHere ? here
                          : QRectF(m_frame.wb->rect()).center());
        break;
    }
    case Input::Key:
        actKey(input.key, input.pointer.modifiers);
        break;
    }
}

void Picture::actKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (gestures.isUnderWay())
        return; // one thing at a time
    if (const KeyCommand *command = commandOf(key, modifiers)) {
        (commands.*command->command)();
    } else if (isEnter(key)) {
        if (gestures.isInserting()) // still: more than one may have been pressed ahead
            gestures.insertInMiddle();
    } else if (isTab(key)) {
        const bool isBack = key == Qt::Key_Backtab || modifiers & Qt::ShiftModifier;
        commands.selectNext(isBack ? PictureCommands::Way::Back : PictureCommands::Way::On);
    } else if (isMenuKey(key, modifiers)) {
        take({Input::MenuKey, {}, 0});
    } else {
        const int many = modifiers & Qt::ShiftModifier ? 10 : 1;
        commands.arrow(directionOf(key) * many, modifiers & Qt::ControlModifier
                                                    ? PictureCommands::Arrow::Sizes
                                                    : PictureCommands::Arrow::Moves);
    }
}

void Picture::showMenu(QPointF at)
{
    const QList<int> under = gestures.blocksUnder(at);
    const QList<int> &selection = m_stage.selection();
    const bool isOnSelected =
        std::ranges::any_of(under, [&](int block) { return selection.contains(block); });
    if (!isOnSelected && !under.isEmpty())
        m_stage.select({under.first()}, Stage::By::Picture);
    showPictureMenu(m_stage, commands, under, *m_frame.wb, at.toPoint());
}

} // namespace quillmere
