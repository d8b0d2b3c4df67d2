#pragma once

#include <QList>
#include <QPoint>

class QWidget;

namespace quillmere {

class PictureCommands;
class Stage;

// The picture's context menu at a point of the browser: the blocks there, to choose one, and what can be done
// with those that are selected.
void showPictureMenu(Stage &stage, PictureCommands &commands, const QList<int> &under, QWidget &browser,
                     QPoint at);

} // namespace quillmere
