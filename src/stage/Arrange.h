#pragma once

#include "stage/RectChanges.h"

#include <QSet>
#include <QSize>

#include <functional>

namespace quillmere {

// Commands that put several blocks in order.
enum class Arrange : quint8 {
    AlignLeft,
    AlignCentre,
    AlignRight,
    AlignTop,
    AlignMiddle,
    AlignBottom,
    SameWidth,
    SameHeight,
    SameSize,
    DistributeH,
    DistributeV,
    CentreInParent,
    FitToPicture,
};

// The size of the picture with this name, invalid where there is none.
using PictureSize = std::function<QSize(const QString &name)>;

// Where the blocks go, for rectChanges; those that stay are not among them. Blocks are aligned to, and sized
// like, the one that comes first. Of different parents they are compared where they are on the screen. What
// moves takes along what stands in it: that is not moved by itself, and what is around the first stays.
// Distributed are three or more that stand in none of each other: the gaps become equal, the outermost two
// stay. Blocks whose rect cannot be read are passed over.
QList<BlockBox> arranged(Arrange command, const Outline &outline, const QList<int> &blocks,
                         const PictureSize &sizeOf = {});
// The commands that make sense for these blocks, also where all are in place already.
QSet<Arrange> arrangeable(const Outline &outline, const QList<int> &blocks, const PictureSize &sizeOf = {});

} // namespace quillmere
