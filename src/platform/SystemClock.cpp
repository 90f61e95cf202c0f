#include "platform/SystemClock.h"

#include <QTimer>

#include <utility>

namespace platform {

namespace {

class EventLoopAlarm final : public Alarm
{
public:
    explicit EventLoopAlarm(std::function<void()> callback)
    {
        m_period.setTimerType(Qt::PreciseTimer);
        m_due.setSingleShot(true);
        m_due.setInterval(0);
        QObject::connect(&m_period, &QTimer::timeout, &m_due, qOverload<>(&QTimer::start));
        QObject::connect(&m_due, &QTimer::timeout, std::move(callback));
    }

    void start(int milliseconds) override
    {
        m_due.stop();
        m_period.start(milliseconds);
    }
    void stop() override
    {
        m_due.stop();
        m_period.stop();
    }

private:
    QTimer m_period;
    /// The callback has an event of its own: a timer does not tick while its slot runs, and a
    /// callback may show a message box.
    QTimer m_due;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::unique_ptr<Alarm> SystemClock::newAlarm(std::function<void()> callback)
{
    return std::make_unique<EventLoopAlarm>(std::move(callback));
}

} // namespace platform
