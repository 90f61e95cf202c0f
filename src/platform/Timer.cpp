#include "platform/Timer.h"

#include <algorithm>
#include <limits>

namespace platform {

Timer::Timer(Clock &clock, std::function<void()> tick)
    : m_clock(clock), m_tick(std::move(tick)), m_alarm(clock.newAlarm([this] { ring(); }))
{
}

void Timer::setInterval(qint64 milliseconds)
{
    m_interval =
        static_cast<int>(std::clamp<qint64>(milliseconds, 0, std::numeric_limits<int>::max()));
    arm();
}

void Timer::setEnabled(bool enabled)
{
    if (enabled == m_enabled) {
        return;
    }
    m_enabled = enabled;
    arm();
}

void Timer::arm()
{
    if (m_enabled && m_interval > 0) {
        m_due = m_clock.milliseconds() + m_interval;
        m_alarm->start(m_interval);
    } else {
        m_alarm->stop();
    }
}

void Timer::ring()
{
    m_lateness = std::max<qint64>(m_clock.milliseconds() - m_due, 0);
    m_due = m_clock.milliseconds() + m_interval;
    m_tick();
}

} // namespace platform
