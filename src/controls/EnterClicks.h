#pragma once

class QAbstractButton;

namespace quillmere {

// Enter presses a button that has the keyboard, as Space does; a tool button alone would not heed it.
void clickOnEnter(QAbstractButton &button);

} // namespace quillmere
