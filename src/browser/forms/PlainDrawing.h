#pragma once

#include <QString>

#include <memory>

class QApplication;

namespace quillmere {

// Without a graphics card OpenGL is drawn by the processor, and the window with the browser in it would go
// through it pixel by pixel several times. Painted straight, a keystroke is on the screen in a fifth of the
// time, and the program starts sooner with half the memory. Who has chosen a way to draw by the variables of
// Qt keeps it.

// The application, drawn the way that suits the machine.
std::unique_ptr<QApplication> makeApplication(int &argc, char **argv);

// What the window is drawn by, in a word.
QString drawnBy();

} // namespace quillmere
