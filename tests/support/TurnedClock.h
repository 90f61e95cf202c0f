#pragma once

#include "platform/Clock.h"

#include <QDateTime>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

/// A clock that stands still until the test turns it. Alarms that fall due at the same instant
/// ring in the order in which they were armed.
class TurnedClock final : public platform::Clock
{
public:
    QDateTime now() const override { return m_start.addMSecs(m_elapsed); }
    qint64 milliseconds() const override { return m_elapsed; }
    std::unique_ptr<platform::Alarm> newAlarm(std::function<void()> callback) override
    {
        return std::make_unique<TurnedAlarm>(*this, std::move(callback));
    }

    void advance(qint64 milliseconds)
    {
        const qint64 end = m_elapsed + milliseconds;
        for (TurnedAlarm *due = next(end); due != nullptr; due = next(end)) {
            m_elapsed = std::max(m_elapsed, due->due.first);
            due->start(due->period);
            due->callback();
        }
        m_elapsed = end;
    }

    /// The program is stopped for a while; what falls due meanwhile rings at the next turn.
    void sleep(qint64 milliseconds) { m_elapsed += milliseconds; }
    /// How many alarms there are, armed or not.
    std::size_t alarms() const { return m_alarms.size(); }

private:
    static constexpr std::pair<qint64, qint64> Never{std::numeric_limits<qint64>::max(), 0};

    struct TurnedAlarm final : platform::Alarm
    {
        TurnedAlarm(TurnedClock &owner, std::function<void()> function)
            : clock(owner), callback(std::move(function))
        {
            clock.m_alarms.push_back(this);
        }
        Q_DISABLE_COPY(TurnedAlarm)
        ~TurnedAlarm() override { std::erase(clock.m_alarms, this); }

        void start(int milliseconds) override
        {
            period = milliseconds;
            due = {clock.m_elapsed + period, ++clock.m_armed};
        }
        void stop() override { due = Never; }

        TurnedClock &clock;
        std::function<void()> callback;
        int period = 0;
        std::pair<qint64, qint64> due = Never; ///< the instant and the order of arming
    };

    /// The alarm that rings next, until `end`; null without one.
    TurnedAlarm *next(qint64 end) const
    {
        const auto first = std::ranges::min_element(m_alarms, {}, &TurnedAlarm::due);
        return first != m_alarms.end() && (*first)->due.first <= end ? *first : nullptr;
    }

    QDateTime m_start{QDate(2026, 3, 14), QTime(15, 9, 26)};
    qint64 m_elapsed = 0;
    qint64 m_armed = 0;
    std::vector<TurnedAlarm *> m_alarms;
};
