#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <sys/types.h>
#include <thread>

/// What a load of requests came to.
struct LoadResult
{
    qint64 answered = 0;
    qint64 failed = 0;
    double slowestMilliseconds = 0; ///< from the attempt to connect to the answer's end
};

/// Sends a request on so many connections at once, a new one for each request, to a port of this
/// machine, and reads every answer to its end.
LoadResult runLoad(quint16 port, const QByteArray &request, int connections, double seconds);

/// One answer, whole.
QByteArray fetchContent(quint16 port, const QByteArray &request);
/// One answer that is not kept; returns its bytes.
qint64 fetch(quint16 port, const QByteArray &request);

/// A process that accepts, reads, writes the answer and closes, again and again, and does nothing
/// else.
pid_t startBareServer(quint16 port, const QByteArray &answer);

/// Watches the private memory of a process.
class PeakMemory
{
public:
    explicit PeakMemory(QString process);
    PeakMemory(const PeakMemory &) = delete;
    PeakMemory &operator=(const PeakMemory &) = delete;
    ~PeakMemory();

    /// The most so far.
    double mebibytes() const { return m_peak / 1024; }

private:
    std::atomic<bool> m_ends = false;
    std::atomic<double> m_peak = 0;
    std::thread m_watcher;
};
