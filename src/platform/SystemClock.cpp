#include "platform/SystemClock.h"

#include <QTimer>

namespace platform {

namespace {

class EventLoopAlarm final : public Alarm
{
public:
    explicit EventLoopAlarm(std::function<void()> callback)
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, std::move(callback));
    }

    void start(int milliseconds) override { m_timer.start(milliseconds); }
    void stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
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
