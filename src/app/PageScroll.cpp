#include "app/PageScroll.h"

#include <QApplication>

namespace quillmere {

PageScroll::PageScroll(QWidget *page)
{
    setObjectName(QStringLiteral("pageScroll"));
    setAccessibleName(QObject::tr("Page"));
    setFocusPolicy(Qt::NoFocus); // the keyboard has the controls to go to
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setWidget(page);
    connect(qApp, &QApplication::focusChanged, this, [this, page](QWidget *, QWidget *now) {
        if (now && page->isAncestorOf(now))
            ensureWidgetVisible(now);
    });
}

} // namespace quillmere
