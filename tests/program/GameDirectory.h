#pragma once

#include "platform/linux/LinuxWindows.h"

#include <QtTest/QtTest>

#include <functional>
#include <vector>

using namespace Qt::Literals::StringLiterals;

/// A process id of the system under test.
using Pid = qint64;

enum class Program { Tool, Server };
/// Whether the tested program is one of this system, not one for Windows.
bool isNative(Program program);

/// A game directory with the tool and the simulated game server in it. Everything that it started
/// ends with it. Its name is one of those that some program or other mistakes.
/// The programs are those of the environment's ZEBEK_TEST_TOOL and ZEBEK_TEST_SERVER, or those
/// beside the test; one for Windows runs under Wine.
class GameDirectory
{
    Q_DISABLE_COPY(GameDirectory)

public:
    GameDirectory();
    ~GameDirectory();

    QString path(const QString &name = {}) const { return m_directory.filePath(name); }
    QByteArray read(const QString &name) const;
    QByteArray errorLog() const { return read(u"ZEBEK_Error.xml"_s); }
    /// Writes the tool's options; the server's switches make it log to "events.log".
    void writeOptions(const QByteArray &elements, const QByteArray &serverSwitches = {}) const;

    /// Starts the tool, not waiting for its window.
    void startTool();
    struct Ending
    {
        int exitCode;
        QByteArray told; ///< on the standard error
    };
    /// Starts the tool once more, lets something be done to it, and waits for its end.
    Ending runToolAgain(const std::function<void()> &meanwhile = [] {}) const;
    void killTool();
    QProcess &tool() { return m_tool; }

    /// The one server that runs from this directory; 0 where there is none, -1 where there are
    /// more.
    Pid server() const;
    /// How many events of a name the server has logged.
    qsizetype events(const QByteArray &name) const;

private:
    std::vector<Pid> servers() const;

    QTemporaryDir m_directory;
    QProcess m_tool;
};

void signalProcess(Pid process, int signal);
/// Long enough for a busy machine to start a program with a window.
constexpr int StartMilliseconds = 100000;

/// The window of that caption, once it is there; throws when it does not come.
platform::WindowHandle waitForWindow(platform::LinuxWindows &windows, const QString &caption);
/// Runs the event loop until the condition holds; false when it does not within the time.
bool waitUntil(const std::function<bool()> &condition, int milliseconds);
