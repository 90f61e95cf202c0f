#pragma once

#include "platform/Clock.h"

#include <utility>

namespace platform {

/// A periodic timer with two switches: it ticks every `Interval` milliseconds while `Enabled` is
/// true and the interval is not 0. Each assignment of the interval begins the period anew.
class Timer
{
public:
    explicit Timer(
        Clock &clock, std::function<void()> tick = [] {});
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;
    ~Timer() = default;

    /// Milliseconds; 0 is idle.
    int Interval() const { return m_interval; }
    /// Below 0 counts as 0; more than an int holds counts as the largest int (24 days), since a
    /// setting in seconds may become that large in a settings file edited by hand.
    void setInterval(qint64 milliseconds);

    /// Another callback for the ticks to come.
    void setTick(std::function<void()> tick) { m_tick = std::move(tick); }

    /// By how many milliseconds the last tick came too late, as it does when the program was
    /// stopped for a while.
    qint64 lateness() const { return m_lateness; }

    void setEnabled(bool enabled);

private:
    void arm();
    void ring();

    Clock &m_clock;
    std::function<void()> m_tick;
    std::unique_ptr<Alarm> m_alarm;
    int m_interval = 0;
    qint64 m_due = 0;
    qint64 m_lateness = 0;
    bool m_enabled = true;
};

} // namespace platform
