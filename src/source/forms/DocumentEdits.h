#pragma once

#include "source/TextChanges.h"

class QTextCursor;

namespace quillmere {

class HeldText;

// Ends an edit block so that what is typed next becomes a step of its own: the document joins insertions that
// follow each other, but none to a removal.
void endStep(QTextCursor &edit);

// Makes the changes of a text (see HeldText::text()) in its document, as one undo step, or as part of the
// last one.
void applyChanges(HeldText &held, const QString &now, const QList<TextChange> &changes, bool joins = false);

// Moves the lines of the selection by `blanks` to the right or, as far as they begin with blanks, to the
// left, as one undo step. They stay selected.
void indentLines(QTextCursor &selection, int blanks, bool back);

} // namespace quillmere
