#pragma once

#include "stage/forms/Gestures.h"
#include "stage/forms/PictureCommands.h"

#include <functional>

class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;

namespace quillmere {

// The picture as the person has it in hand: takes the mouse and the keys that come to the browser or to any
// child of it, so that the page gets none of them. The wheel is left to the frame around it.
class Picture : public QObject
{
    Q_OBJECT

public:
    Picture(Stage &stage, SourceTab &tab, PreviewFrame &frame, Talk &talk, QObject *parent = nullptr);

    StageOverlay *overlay;
    Gestures gestures;
    PictureCommands commands;

    // Ends the first of these that there is: a gesture, the picture alone, what is selected. False where
    // there is none. Popups, and work that blocks the window, take Esc before it comes here.
    bool escape();
    // Shows the rest of the window again where the picture was alone in it; false where it was not.
    std::function<bool()> endsAlone;

signals:
    // The properties of a block of the list are to be shown.
    void blockOpened(int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Input
    {
        enum Kind { Press, Move, Hover, Release, DoubleClick, Menu, MenuKey, Key } kind = Move;
        Gestures::Pointer pointer;
        int key = 0;
    };

    void watch(QObject *object);
    bool mouse(QWidget &widget, QMouseEvent &event);
    bool key(QKeyEvent &event);
    bool isKey(const QKeyEvent &event) const;
    void take(const Input &input);
    bool mayAct(const Input &input);
    void takeHeld();
    void act(const Input &input);
    void actKey(int key, Qt::KeyboardModifiers modifiers);
    void showMenu(QPointF at);

    Stage &m_stage;
    PreviewFrame &m_frame;
    bool m_frameGoes = false;
    QList<Input> m_held; // until the places are known
    bool m_acting = false;
};

} // namespace quillmere
