#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <vector>

/// A process id of the system under test.
using Pid = qint64;

/// A game directory with the tool and the simulated game server in it. Everything that it started
/// ends with it.
class GameDirectory
{
public:
    explicit GameDirectory(const QString &name = QStringLiteral("game"));
    GameDirectory(const GameDirectory &) = delete;
    GameDirectory &operator=(const GameDirectory &) = delete;
    ~GameDirectory();

    QString path(const QString &name = {}) const;
    QByteArray read(const QString &name) const;
    void write(const QString &name, const QByteArray &content) const;

    /// Writes the tool's options; the server's switches make it log to "events.log".
    void writeOptions(const QByteArray &elements, const QByteArray &serverSwitches = {}) const;

    /// Starts the tool, not waiting for its window.
    void startTool();
    QProcess &tool() { return m_tool; }
    /// Starts a server as an operator would by hand, with the given switches.
    Pid startServerByHand(const QString &switches = {});

    /// The game servers that run from this directory.
    std::vector<Pid> servers() const;
    /// The one server that runs from this directory; 0 where there is none, -1 where there are
    /// more.
    Pid server() const;
    /// How many events of a name the server has logged.
    qsizetype events(const QByteArray &name) const;

private:
    QTemporaryDir m_directory;
    QProcess m_tool;
};

void signalProcess(Pid process, int signal);
/// Runs the event loop until the condition holds; false when it does not within the time.
bool waitUntil(const std::function<bool()> &condition, int milliseconds);
/// True when the condition holds all that time.
bool holdsFor(const std::function<bool()> &condition, int milliseconds);
