#pragma once

#include "platform/Clock.h"

namespace platform {

/// The machine's clock; its alarms are precise timers of the event loop, so that timers of equal
/// period keep the order in which they were armed.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    std::unique_ptr<Alarm> newAlarm(std::function<void()> callback) override;
};

} // namespace platform
