#pragma once

#include "outline/Outline.h"
#include "outline/Values.h"

#include <QSet>
#include <QSize>
#include <QString>

#include <functional>
#include <vector>

namespace quillmere {

// What a page of the receiver takes from the theme, asked by name as it stands in the window, without the
// blanks around it. May be asked on any thread.
struct ReceiverTheme
{
    // How a text is set. `family` is what the page calls the font file, empty for one that there is not.
    struct Font
    {
        QString family;
        QString size; // pixels, as the catalogue has it
        QString style;
    };
    // The full path of a picture; empty for an ID that there is not.
    std::function<QString(const QString &id)> picture;
    // The pixels of a picture file; empty where it has none.
    std::function<QSize(const QString &path)> sizeOf;
    // The code of a colour of the catalogue; empty for a name that it does not have.
    std::function<QString(const QString &name)> colour;
    std::function<Font(const QString &name)> font;
    // What stands for a string in the language chosen.
    std::function<QString(const QString &source)> translation;
};

struct ReceiverOptions
{
    int state = 1;                           // 1 to 3: which of the entries of a list counts
    bool hiddenBlocks = false;               // show what `<state>hide</state>` hides, half see-through
    bool cutsChildren = true;                // at the block that they stand in
    QSet<QString> hiddenNames;               // blocks of these names are left out, with all that they hold
    QString ground = QStringLiteral("#000"); // a background of CSS, behind everything
};

// The page of a window as the receiver shows it, for the browser: every block at its place, one div behind
// the other in the order of the document, none in another, so that neither depth nor number costs more than
// its text. Blocks carry nothing over to those behind them.
//
// Not drawn: what stands in comments and signals, styles, and blocks without a rect of four whole numbers,
// each with all that it holds.
QString receiverPage(const Outline &outline, const ReceiverTheme &theme, const ReceiverOptions &options = {});

// Where a page of the receiver draws a block.
struct ReceiverPlace
{
    int block = -1; // row of the block list
    Box box;        // on the screen
    Box seen; // what the blocks around it let be seen of it; not as wide or high as 1 where it is nothing
};

// The blocks that the page of these options draws, in the order of the document.
std::vector<ReceiverPlace> receiverPlaces(const Outline &outline, const ReceiverOptions &options = {});

} // namespace quillmere
