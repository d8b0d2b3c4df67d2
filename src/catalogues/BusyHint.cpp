#include "catalogues/BusyHint.h"

#include <QApplication>

namespace quillmere {

namespace {
constexpr int kBetweenHints = 100; // ms
}

BusyHint::BusyHint(std::function<void(const QString &)> say) : m_say(std::move(say))
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_sinceSaid.start();
}

BusyHint::~BusyHint()
{
    QApplication::restoreOverrideCursor();
}

void BusyHint::operator()(int done, int all)
{
    if (m_sinceSaid.elapsed() < kBetweenHints)
        return;
    m_say(QCoreApplication::translate("BusyHint", "Scanning window %1 of %2...").arg(done).arg(all));
    m_sinceSaid.restart();
}

} // namespace quillmere
