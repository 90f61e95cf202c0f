#pragma once

#include "platform/Clock.h"

#include <QDateTime>

#include <algorithm>
#include <utility>
#include <vector>

/// A clock that stands still until the test turns it. Alarms that fall due at the same instant
/// ring in the order in which they were armed.
class TurnedClock final : public platform::Clock
{
public:
    QDateTime now() const override { return m_start.addMSecs(m_elapsed); }

    std::unique_ptr<platform::Alarm> newAlarm(std::function<void()> callback) override
    {
        return std::make_unique<TurnedAlarm>(*this, std::move(callback));
    }

    void advance(qint64 milliseconds)
    {
        const qint64 end = m_elapsed + milliseconds;
        for (TurnedAlarm *due = next(end); due != nullptr; due = next(end)) {
            m_elapsed = due->due;
            due->ring();
        }
        m_elapsed = end;
    }

    qint64 elapsed() const { return m_elapsed; }

private:
    struct TurnedAlarm final : platform::Alarm
    {
        TurnedAlarm(TurnedClock &owner, std::function<void()> function)
            : clock(owner), callback(std::move(function))
        {
            clock.m_alarms.push_back(this);
        }
        TurnedAlarm(const TurnedAlarm &) = delete;
        TurnedAlarm &operator=(const TurnedAlarm &) = delete;
        ~TurnedAlarm() override { std::erase(clock.m_alarms, this); }

        void start(int milliseconds) override
        {
            period = milliseconds;
            arm();
        }
        void stop() override { period = 0; }
        void arm()
        {
            due = clock.m_elapsed + period;
            order = ++clock.m_armed;
        }
        void ring()
        {
            arm();
            callback();
        }

        TurnedClock &clock;
        std::function<void()> callback;
        int period = 0;
        qint64 due = 0;
        qint64 order = 0;
    };

    TurnedAlarm *next(qint64 end) const
    {
        TurnedAlarm *first = nullptr;
        for (TurnedAlarm *alarm : m_alarms) {
            if (alarm->period > 0 && alarm->due <= end &&
                (first == nullptr ||
                 std::pair(alarm->due, alarm->order) < std::pair(first->due, first->order))) {
                first = alarm;
            }
        }
        return first;
    }

    QDateTime m_start{QDate(2026, 3, 14), QTime(15, 9, 26)};
    qint64 m_elapsed = 0;
    qint64 m_armed = 0;
    std::vector<TurnedAlarm *> m_alarms;
};
