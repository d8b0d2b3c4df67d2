#include "controls/PathLabel.h"

#include "rows/ToolTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace quillmere {

namespace {
constexpr qsizetype kLongest = 5000; // units; no file has a longer path, and laying it out takes long
}

PathLabel::PathLabel(const QString &name, const QString &accessibleName, QWidget *parent) : QLabel(parent)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setTextFormat(Qt::PlainText);
}

void PathLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text().left(kLongest), Qt::ElideMiddle, width());
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                          foregroundRole());
}

bool PathLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(text()), this);
    return true;
}

} // namespace quillmere
