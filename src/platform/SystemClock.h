#pragma once

#include "platform/Clock.h"

#include <QElapsedTimer>

namespace platform {

/// The machine's clock; its alarms are precise timers of the event loop, so that timers of equal
/// period keep the order in which they were armed.
class SystemClock final : public Clock
{
public:
    SystemClock() { m_sinceStart.start(); }

    QDateTime now() const override;
    qint64 milliseconds() const override { return m_sinceStart.elapsed(); }
    std::unique_ptr<Alarm> newAlarm(std::function<void()> callback) override;

private:
    QElapsedTimer m_sinceStart;
};

} // namespace platform
