#pragma once

#include "receiver/BlockLook.h"
#include "receiver/ReceiverPage.h"

namespace quillmere {

// The text of a block: what stands in it, and how it is set.
struct BlockText
{
    Range range;    // of the string in the document
    QString source; // as it is written; empty where the block has none
    QString font;   // declarations of CSS
    BlockLook::Alignment alignment;
};
BlockText textOf(const BlockLook &look, const ReceiverTheme &theme);

// What is shown of a source, in one line: its translation, if it has one.
QString shownText(const QString &source, const std::function<QString(const QString &source)> &translation);

// The rules by which pages set texts: in a span in a div of class "t".
QString textSheet();

} // namespace quillmere
