#include "platform/Timer.h"

#include <algorithm>
#include <limits>

namespace platform {

Timer::Timer(Clock &clock, std::function<void()> tick)
    : m_tick(std::move(tick)), m_alarm(clock.newAlarm([this] { m_tick(); }))
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
        m_alarm->start(m_interval);
    } else {
        m_alarm->stop();
    }
}

} // namespace platform
