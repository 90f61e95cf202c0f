#include "platform/SystemClock.h"

#include <QTimer>

namespace platform {

namespace {

class EventLoopAlarm final : public Alarm
{
public:
    explicit EventLoopAlarm(std::function<void()> callback) : m_callback(std::move(callback))
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { ring(); });
    }

    void start(int milliseconds) override
    {
        ++m_armed;
        m_timer.start(milliseconds);
    }
    void stop() override
    {
        ++m_armed;
        m_timer.stop();
    }

private:
    /// The callback runs as an event of its own: a timer does not tick again while its slot runs,
    /// and a callback may show a message box.
    void ring()
    {
        QMetaObject::invokeMethod(
            &m_timer,
            [this, armed = m_armed] {
                if (armed == m_armed) {
                    m_callback();
                }
            },
            Qt::QueuedConnection);
    }

    QTimer m_timer;
    std::function<void()> m_callback;
    int m_armed = 0; ///< counts the times it was armed or stopped, which revoke a due callback
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
