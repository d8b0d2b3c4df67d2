#include "controls/LateWork.h"

#include <QElapsedTimer>

#include <algorithm>

namespace quillmere {

namespace {

constexpr int kPause = 250;       // ms without a key
constexpr double kSoon = 60;      // ms, so that what is done elsewhere keeps up with the keys
constexpr double kNoText = 20000; // units of text that cost as much as what any text costs
constexpr double kDoubt = 4;

} // namespace

LateWork::LateWork(double most, std::function<void()> now, std::function<void()> elsewhere, QObject *parent)
    : QObject(parent), m_most(most), m_now(std::move(now)), m_elsewhere(std::move(elsewhere))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_elsewhere)
            m_elsewhere();
        else
            doNow(m_units);
    });
}

bool LateWork::changed(qsizetype units, Wait wait)
{
    m_units = units;
    const double time = expected(units);
    if (wait == Wait::Never || (wait == Wait::IfLong && time <= m_most)) {
        doNow(units);
        return false;
    }
    if (wait == Wait::IfLong && time <= kSoon && m_elsewhere) {
        m_pause.stop();
        m_elsewhere();
    } else {
        m_pause.start();
    }
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
