#pragma once

class QKeyEvent;
class QTextCursor;

namespace quillmere {

class HeldText;

// What Tab, Shift+Tab and Ctrl+D do to the text at a caret, as one undo step each: the caret goes where it is
// to stand afterwards. False for any other key.
bool editByKey(const QKeyEvent &key, QTextCursor &caret, HeldText &held);

} // namespace quillmere
