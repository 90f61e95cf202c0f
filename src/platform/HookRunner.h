#pragma once

#include "platform/Hooks.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <deque>

class QProcess;

namespace platform {

/// Runs hooks as processes of their own: at most four at once, each for a minute at most. More wait
/// for their turn, but no more than a burst of events: what comes on top is left out.
/// A hook that runs at the end of this program goes on.
class HookRunner final : public Hooks
{
public:
    static constexpr int MostAtOnce = 4;
    static constexpr int MostWaiting = 64;

    explicit HookRunner(std::chrono::milliseconds limit = std::chrono::minutes(1)) : m_limit(limit)
    {
    }
    void run(const QString &directory, const QStringList &arguments, Done done) override;

private:
    struct Call
    {
        QString directory;
        QStringList arguments;
        Done done;
    };

    void startWaiting();
    void start(const Call &call);
    void forget(QProcess *process);

    std::chrono::milliseconds m_limit;
    QObject m_events; ///< of the processes; none comes without it
    std::deque<Call> m_waiting;
    int m_running = 0;
};

} // namespace platform
