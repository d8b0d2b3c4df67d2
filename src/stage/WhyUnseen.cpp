#include "stage/WhyUnseen.h"

#include "receiver/BlockLook.h"
#include "stage/RectChanges.h"

#include <QObject>

namespace quillmere {

namespace {

// What hides this block and all that it holds.
QString ownReason(const Outline &outline, int block, const QString &called, const Unseen &unseen)
{
    const qint32 index = outline.blocks()[size_t(block)];
    const Element &element = outline.element(index);
    if (element.inComment)
        return QObject::tr("%1 is in a comment").arg(called);
    if (element.inSignal)
        return QObject::tr("%1 is in a signal").arg(called);
    const std::optional<Attribute> name = outline.nameAttribute(index);
    if (name && unseen.ticked.contains(outline.at(name->value).toString()))
        return QObject::tr("%1 is ticked in the list of blocks").arg(called);
    const BlockLook look(outline, index);
    if (unseen.byState && look.isHidden())
        return QObject::tr("the state of %1 is \"hide\" (Hidden Blocks in the View menu shows it)")
            .arg(called);
    if (unseen.withoutRect && !look.rect())
        return QObject::tr("%1 has no rect").arg(called);
    return {};
}

} // namespace

QString whyUnseen(const Outline &outline, int block, const Unseen &unseen)
{
    for (int outer = block; outer >= 0; outer = parentOf(outline, outer)) {
        const QString called = calledInText(outline, outer);
        const QString reason = ownReason(outline, outer, called, unseen);
        if (!reason.isEmpty())
            return outer == block
                       ? QObject::tr("Not in the picture: %1.").arg(reason)
                       : QObject::tr("Not in the picture: it lies in %1, and %2.").arg(called, reason);
    }
    return {};
}

} // namespace quillmere
