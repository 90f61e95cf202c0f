#pragma once

#include <QString>

#include <atomic>
#include <thread>

/// Asks a window every few milliseconds whether it is alive, as a window manager does, and keeps
/// the longest time that it took to answer.
class WindowPing
{
public:
    explicit WindowPing(const QString &caption);
    WindowPing(const WindowPing &) = delete;
    WindowPing &operator=(const WindowPing &) = delete;
    ~WindowPing();

    /// Throws when the window has not answered once.
    double longestMilliseconds() const;

private:
    void watch();

    quint64 m_window;
    std::atomic<bool> m_ends = false;
    std::atomic<double> m_longest = 0;
    std::thread m_watcher;
};
