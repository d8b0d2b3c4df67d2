#pragma once

#include "stage/RectChanges.h"

#include <QSize>

namespace quillmere {

// Edits of whole elements. Blocks are rows of the block list. A block in a comment, and one whose closing tag
// is missing, is no whole element: it is passed over. An element is on lines of its own where nothing but
// blanks stands before it and behind it; then it comes and goes with its lines.

struct Edited
{
    QList<TextChange> changes; // in order, none touching another; empty where there is nothing to do
    QList<int> selection;      // rows of the text after the changes
};

// Why an element cannot be edited, a sentence for the status line; empty where it can.
QString whyNotWhole(const Outline &outline, int block);

// Takes out the elements with all that stands in them. Nothing is selected then.
Edited deleted(const Outline &outline, const QList<int> &blocks);
// Puts a copy behind each, `by` pixels further right and down, and selects the copies. A copy and all in it
// have names that were free.
Edited duplicated(const Outline &outline, const QList<int> &blocks, int by = 8);
// One place further on (in front of what it covers) or back among its siblings. Several of one parent that
// stand together move together.
enum class Toward { Front, Back };
Edited moved(const Outline &outline, const QList<int> &blocks, Toward toward);

// The elements as text, in the order of the document, for the clipboard.
QString copied(const Outline &outline, const QList<int> &blocks);
// The elements of a text from anywhere, whatever else it holds, as last children of the selected block that
// is a window or has children, behind one that has none; in the window where nothing is selected. Of several
// blocks the last one counts. Names that are taken become free ones. All that comes in is selected.
Edited pasted(const Outline &outline, const QList<int> &blocks, const QString &elements);

enum class NewBlock { Text, Image, Boxitem, Button, Progbar };
// A new element as the last child of a block (-1: of the window), at this place in it, selected. Its colours
// and its font are those that the window uses for such blocks.
Edited inserted(const Outline &outline, NewBlock kind, int parent, const Box &box);
// The row that `inserted` would put it into: the first selected block, else the window; -1 where there is
// none.
int parentForNew(const Outline &outline, const QList<int> &selected);
// A place of a usual size for it, in the rect's own numbers: in the middle of that part of its parent which a
// screen of this size shows, or of the whole parent where it shows none of it, and no larger than that.
Box placeForNew(const Outline &outline, NewBlock kind, int parent, QSize screen);

} // namespace quillmere
