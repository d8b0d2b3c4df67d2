#include "controls/ModelessDialog.h"

#include <QScreen>
#include <QWindow>

namespace quillmere {

namespace {
constexpr int kFromCorner = 32; // pixels
}

ModelessDialog::ModelessDialog(const QString &name, QWidget &owner) : m_owner(owner)
{
    setObjectName(name);
}

void ModelessDialog::present(Keyboard keyboard)
{
    const bool takes = keyboard == Keyboard::Takes;
    if (!isVisible()) {
        winId(); // there is a window handle from now on
        windowHandle()->setTransientParent(m_owner.windowHandle());
        if (!testAttribute(Qt::WA_Moved)) {
            resize(size().boundedTo(m_owner.screen()->availableSize() * 9 / 10));
            const QRect room = m_owner.geometry().intersected(m_owner.screen()->availableGeometry());
            const QPoint corner = room.bottomRight() - QPoint(kFromCorner + width(), kFromCorner + height());
            move(std::max(corner.x(), room.left()), std::max(corner.y(), room.top()));
        }
        setAttribute(Qt::WA_ShowWithoutActivating, !takes);
        show();
    }
    raise();
    if (takes)
        activateWindow();
    else
        m_owner.activateWindow(); // not every window system heeds the attribute
}

} // namespace quillmere
