#include "controls/LateWork.h"

#include <QElapsedTimer>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kPause = 250;       // ms without a key
constexpr double kNoText = 20000; // units of text that cost as much as what any text costs
constexpr double kDoubt = 4;

} // namespace

LateWork::LateWork(double most, std::function<void()> now, std::function<void()> later, QObject *parent)
    : QObject(parent), m_most(most), m_now(std::move(now)), m_later(std::move(later))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_later)
            m_later();
        else
            doNow(m_units);
    });
}

bool LateWork::changed(qsizetype units, Wait wait)
{
    m_units = units;
    if (wait == Wait::Never || (wait == Wait::IfLong && expected(units) <= m_most)) {
        doNow(units);
        return false;
    }
    m_pause.start();
    return true;
}

void LateWork::doNow(qsizetype units)
{
    m_pause.stop();
    QElapsedTimer clock;
    clock.start();
    m_now();
    measured(double(clock.nsecsElapsed()) / 1e6, units);
}

void LateWork::measured(double milliseconds, qsizetype units)
{
    const double rate = milliseconds / (double(units) + kNoText);
    m_before = m_last > 0 ? m_last : rate / kDoubt;
    m_last = rate;
}

double LateWork::expected(qsizetype units) const
{
    return std::min(m_last, m_before) * (double(units) + kNoText);
}

} // namespace quillmere
