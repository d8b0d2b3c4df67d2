#include "asking/LineCount.h"

#include "markup/LineDifference.h"

#include <QObject>

#include <algorithm>

namespace quillmere {

namespace {

QString lines(qsizetype count)
{
    return count == 1 ? QObject::tr("1 line") : QObject::tr("%1 lines").arg(count);
}

} // namespace

QString indentedLinesText(qsizetype count)
{
    return count == 1 ? QObject::tr("1 line differs only in its indentation.")
                      : QObject::tr("%1 lines differ only in their indentation.").arg(count);
}

QString changedLinesText(QStringView before, QStringView after)
{
    const LineDifference difference = compareLines(before, after, 0);
    return QObject::tr("%1 changed.").arg(lines(std::max(difference.removed, difference.added)));
}

QString lineCountText(const LineDifference &difference)
{
    if (difference.removed == 0)
        return QObject::tr("%1 added.").arg(lines(difference.added));
    if (difference.added == 0)
        return QObject::tr("%1 removed.").arg(lines(difference.removed));
    return QObject::tr("%1 removed, %2 added.").arg(lines(difference.removed)).arg(difference.added);
}

} // namespace quillmere
