#pragma once

class QMainWindow;

namespace quillmere {

// Gives each command and control of the main window a sentence that says what it does, and each list one that
// it shows while it is empty. To be called when all are made.
void giveWindowTips(QMainWindow &window);

} // namespace quillmere
