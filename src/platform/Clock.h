#pragma once

#include <QDateTime>

#include <functional>
#include <memory>

namespace platform {

/// Calls back once per period until it is stopped or destroyed. Destroying it inside its own
/// callback is not allowed; starting and stopping it there is.
class Alarm
{
public:
    virtual ~Alarm() = default;

    /// Calls back every `milliseconds` (1 or more), the first time that long from now.
    /// A running alarm begins its period anew.
    virtual void start(int milliseconds) = 0;
    virtual void stop() = 0;
};

/// The time of day and the passing of time. Tests turn a clock of their own.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The local date and time.
    virtual QDateTime now() const = 0;
    /// Milliseconds since some moment, whatever becomes of the date and time.
    virtual qint64 milliseconds() const = 0;
    /// A stopped alarm that calls `callback` on the user-interface thread.
    virtual std::unique_ptr<Alarm> newAlarm(std::function<void()> callback) = 0;
};

} // namespace platform
