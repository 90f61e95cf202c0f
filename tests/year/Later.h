#pragma once

#include "support/TurnedClock.h"

#include <functional>
#include <map>

/// What is going to happen around the tool.
class Later
{
public:
    explicit Later(const TurnedClock &clock) : m_clock(clock) {}

    void in(qint64 milliseconds, std::function<void()> event)
    {
        m_events.emplace(m_clock.milliseconds() + milliseconds, std::move(event));
    }
    /// For how long nothing happens.
    qint64 quiet(qint64 most) const
    {
        return m_events.empty()
                   ? most
                   : std::clamp<qint64>(m_events.begin()->first - m_clock.milliseconds(), 1, most);
    }
    void happen()
    {
        while (!m_events.empty() && m_events.begin()->first <= m_clock.milliseconds()) {
            m_events.extract(m_events.begin()).mapped()();
        }
    }
    /// The whole machine has stood still.
    void putOff(qint64 milliseconds)
    {
        for (auto &[moment, event] : std::exchange(m_events, {})) {
            m_events.emplace(moment + milliseconds, std::move(event));
        }
    }

private:
    const TurnedClock &m_clock;
    std::multimap<qint64, std::function<void()>> m_events;
};
