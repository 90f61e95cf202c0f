#include "platform/linux/LinuxWindows.h"
#include "program/GameDirectory.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QWidget>

#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// Long enough for a busy machine to start a program with a window.
constexpr int StartMilliseconds = 15000;

/// Settings under which a hang is noticed within seconds, clear of ties between the timers.
const QByteArray ShortSettings = "<ServerStartupTimeout>1</ServerStartupTimeout>"
                                 "<ServerPollingFreq>4000</ServerPollingFreq>"
                                 "<ServerTimeout>6</ServerTimeout>";

const QByteArray QuickPolling = "<ServerStartupTimeout>1</ServerStartupTimeout>"
                                "<ServerPollingFreq>500</ServerPollingFreq>"
                                "<ServerTimeout>2</ServerTimeout>";

class SupervisionTest : public testing::Test
{
protected:
    /// Waits for a server that has a window and that the tool has asked for its status.
    Pid waitForSupervisedServer()
    {
        const qsizetype asked = game.events("query");
        EXPECT_TRUE(waitUntil([&] { return game.server() > 0 && game.events("query") > asked; },
                              StartMilliseconds));
        return game.server();
    }
    bool waitForWindow(const QString &caption, platform::WindowHandle &found)
    {
        return waitUntil(
            [&] {
                for (const platform::WindowHandle window : windows.topLevel()) {
                    if (windows.caption(window, 100) == caption) {
                        found = window;
                        return true;
                    }
                }
                return false;
            },
            StartMilliseconds);
    }
    bool waitForMainWindow()
    {
        platform::WindowHandle window = 0;
        return waitForWindow(QStringLiteral("Zebek Suite"), window);
    }

    GameDirectory game;
    platform::LinuxWindows windows;
};

qint64 millisecondsUntil(const std::function<bool()> &condition, int limit)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(waitUntil(condition, limit));
    return timer.elapsed();
}

} // namespace

TEST_F(SupervisionTest, AKilledServerIsBackWithinFourSeconds)
{
    game.writeOptions(QuickPolling);
    game.startTool();
    for (int round = 0; round < 3; ++round) {
        const Pid first = waitForSupervisedServer();
        signalProcess(first, SIGKILL);
        EXPECT_LE(
            millisecondsUntil([&] { return game.server() > 0 && game.server() != first; }, 10000),
            4000);
    }
    EXPECT_TRUE(game.read(QStringLiteral("ZEBEK_Error.xml")).isEmpty());
}

TEST_F(SupervisionTest, AHungServerIsTerminatedAndReplaced)
{
    game.writeOptions(ShortSettings);
    game.startTool();
    const Pid first = waitForSupervisedServer();
    // From here: the next request within 4 s, dead 5 s later and seen 3 s after that; the dead
    // timer of 6 s finds it dead at its first expiry; 5 s for the window that does not close.
    signalProcess(first, SIGSTOP);
    const qint64 elapsed =
        millisecondsUntil([&] { return game.server() > 0 && game.server() != first; }, 60000);
    EXPECT_GE(elapsed, 5000 + 3000 + 6000 + 5000);
    EXPECT_LE(elapsed, 4000 + 5000 + 3000 + 6000 + 5000 + 1000);
    waitForSupervisedServer();
}

TEST_F(SupervisionTest, AMuteServerIsAskedToCloseAndAStubbornOneIsTerminated)
{
    game.writeOptions(ShortSettings, "-mute-after 6 -second-window");
    game.startTool();
    const Pid first = waitForSupervisedServer();
    // Its second window lies on top and takes the one request that is made; so it is terminated.
    EXPECT_TRUE(waitUntil([&] { return game.server() > 0 && game.server() != first; }, 60000));
    EXPECT_EQ(game.events("close-request"), 0);
    EXPECT_EQ(game.events("ending"), 0);

    // The next one has no second window and ends by itself.
    game.tool().kill();
    ASSERT_TRUE(game.tool().waitForFinished());
    signalProcess(game.server(), SIGKILL);
    const qsizetype started = game.events("started");
    game.writeOptions(ShortSettings, "-mute-after 6");
    game.startTool();
    waitForSupervisedServer();
    EXPECT_TRUE(waitUntil([&] { return game.events("ending") == 1; }, 60000));
    EXPECT_TRUE(
        waitUntil([&] { return game.events("started") == started + 2; }, StartMilliseconds));
}

TEST_F(SupervisionTest, AServerThatAnswersWithinItsGracePeriodIsNeverRestarted)
{
    game.writeOptions("<ServerStartupTimeout>5</ServerStartupTimeout>"
                      "<ServerPollingFreq>400</ServerPollingFreq><ServerTimeout>1</ServerTimeout>",
                      "-start-delay 4 -answer-delay 1500");
    game.startTool();
    const Pid first = waitForSupervisedServer();
    EXPECT_TRUE(holdsFor([&] { return game.server() == first; }, 12000));
    EXPECT_EQ(game.events("query-unanswered"), 0);
}

TEST_F(SupervisionTest, AServerStartedByHandIsAdoptedAndOthersAreNot)
{
    game.writeOptions(QuickPolling + "<AutoStartGRServer>False</AutoStartGRServer>");
    game.startTool();
    ASSERT_TRUE(waitForMainWindow());

    GameDirectory elsewhere;
    const Pid stranger = elsewhere.startServerByHand();
    const Pid otherCaption =
        game.startServerByHand(QStringLiteral("-caption Ghost_Recon_Console -mute-after 0"));
    ASSERT_TRUE(waitUntil([&] { return elsewhere.events("started") == 1; }, StartMilliseconds));
    EXPECT_TRUE(holdsFor([&] { return elsewhere.events("query") == 0; }, 6000));
    signalProcess(stranger, SIGKILL);
    signalProcess(otherCaption, SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return game.server() == 0; }, 5000));

    const Pid adopted = game.startServerByHand();
    platform::WindowHandle window = 0;
    ASSERT_TRUE(waitForWindow(QStringLiteral("Ghost Recon"), window));
    // 4 s until it is found, 1 s of grace, and the first poll.
    EXPECT_LE(millisecondsUntil([&] { return game.events("query") > 0; }, 15000),
              4000 + 1000 + 500 + 500);
    EXPECT_EQ(game.server(), adopted);
}

TEST_F(SupervisionTest, AToolThatWasKilledFindsItsServerAgain)
{
    game.writeOptions(QuickPolling);
    game.startTool();
    const Pid first = waitForSupervisedServer();
    game.tool().kill();
    ASSERT_TRUE(game.tool().waitForFinished());
    EXPECT_EQ(game.server(), first);

    game.startTool();
    EXPECT_EQ(waitForSupervisedServer(), first);
    EXPECT_EQ(game.events("started"), 1);
}

TEST_F(SupervisionTest, AStartedServerInheritsNothingButRunsInItsDirectory)
{
    game.writeOptions(QuickPolling, "-server-name \"a  b\\\"c\" \"\"");
    game.startTool();
    const Pid server = waitForSupervisedServer();
    const QString proc = QStringLiteral("/proc/%1/").arg(server);
    EXPECT_EQ(QFile::symLinkTarget(proc + QStringLiteral("cwd")), game.path());
    QFile commandLine(proc + QStringLiteral("cmdline"));
    ASSERT_TRUE(commandLine.open(QIODevice::ReadOnly));
    EXPECT_EQ(
        commandLine.readAll().split('\0'),
        (QByteArrayList{game.path(QStringLiteral("GhostRecon.exe")).toLocal8Bit(), "-autoserve",
                        "-log", "events.log", "-server-name", "a  b\"c", "", ""}));

    const auto openFiles = [](Pid process) {
        QSet<QString> result;
        const QDir folder(QStringLiteral("/proc/%1/fd").arg(process));
        for (const QString &entry : folder.entryList(QDir::AllEntries | QDir::System)) {
            // Sockets and pipes are named "socket:[number]", relative to the folder.
            result.insert(QFile::symLinkTarget(folder.filePath(entry)).section(u'/', -1));
        }
        return result;
    };
    QSet<QString> shared = openFiles(server) & openFiles(game.tool().processId());
    shared.removeIf([](const QString &file) {
        return !file.startsWith(QStringLiteral("socket:")) &&
               !file.startsWith(QStringLiteral("pipe:"));
    });
    EXPECT_TRUE(shared.isEmpty()) << shared.values().join(u' ').toStdString();
    EXPECT_NE(::getsid(static_cast<pid_t>(server)),
              ::getsid(static_cast<pid_t>(game.tool().processId())));
}

TEST_F(SupervisionTest, EveryWayToEndTheToolSavesItsOptionsAndLeavesTheServerRunning)
{
    game.writeOptions(QuickPolling + "<stray/>");
    game.startTool();
    const Pid server = waitForSupervisedServer();
    const std::function<void()> ways[] = {
        [&] { signalProcess(game.tool().processId(), SIGTERM); },
        [&] { signalProcess(game.tool().processId(), SIGINT); },
        [&] {
            platform::WindowHandle window = 0;
            ASSERT_TRUE(waitForWindow(QStringLiteral("Zebek Suite"), window));
            windows.postClose(window);
        },
    };
    for (const auto &end : ways) {
        if (game.tool().state() == QProcess::NotRunning) {
            game.writeOptions(QuickPolling + "<stray/>");
            game.startTool();
        }
        ASSERT_TRUE(waitForMainWindow());
        end();
        ASSERT_TRUE(game.tool().waitForFinished(5000));
        EXPECT_EQ(game.tool().exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(game.tool().exitCode(), 0);
        EXPECT_FALSE(game.read(QStringLiteral("ZebekSuiteOptions.xml")).contains("stray"));
        EXPECT_EQ(game.server(), server);
    }
}

TEST_F(SupervisionTest, ASecondStartBringsTheFirstToTheFrontAndEnds)
{
    game.writeOptions(QuickPolling);
    game.startTool();
    const Pid server = waitForSupervisedServer();
    QWidget above;
    above.setWindowTitle(QStringLiteral("Above"));
    above.show();
    const auto topmost = [this] { return windows.caption(windows.topLevel().front(), 100); };
    above.raise();
    ASSERT_TRUE(waitUntil([&] { return topmost() == QStringLiteral("Above"); }, 5000));

    QProcess second;
    second.start(game.path(QStringLiteral("ZebekSuite.exe")), {});
    ASSERT_TRUE(second.waitForFinished(StartMilliseconds));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(waitUntil([&] { return topmost() == QStringLiteral("Zebek Suite"); }, 5000));
    EXPECT_EQ(game.server(), server);

    GameDirectory beside;
    beside.writeOptions(QuickPolling);
    beside.startTool();
    EXPECT_TRUE(waitUntil([&] { return beside.server() > 0; }, StartMilliseconds));

    game.tool().kill();
    ASSERT_TRUE(game.tool().waitForFinished());
    game.startTool();
    EXPECT_EQ(waitForSupervisedServer(), server);
    EXPECT_EQ(game.tool().state(), QProcess::Running);
}

TEST_F(SupervisionTest, TheDirectoryMayHaveAnyName)
{
    GameDirectory foreign(QStringLiteral("łukasz 50% \"Игра\""));
    foreign.writeOptions(QuickPolling);
    foreign.startTool();
    const auto supervised = [&] { return foreign.server() > 0 && foreign.events("query") > 0; };
    ASSERT_TRUE(waitUntil(supervised, StartMilliseconds));
    const Pid first = foreign.server();
    foreign.tool().kill();
    ASSERT_TRUE(foreign.tool().waitForFinished());
    foreign.startTool();
    ASSERT_TRUE(waitForMainWindow());
    signalProcess(first, SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return foreign.server() > 0 && foreign.server() != first; },
                          StartMilliseconds));
    signalProcess(foreign.tool().processId(), SIGTERM);
    ASSERT_TRUE(foreign.tool().waitForFinished(5000));
    EXPECT_TRUE(foreign.read(QStringLiteral("ZebekSuiteOptions.xml"))
                    .contains((foreign.path() + QStringLiteral("/Replays"))
                                  .toHtmlEscaped()
                                  .replace(QStringLiteral("&quot;"), QStringLiteral("\""))
                                  .toUtf8()));
    EXPECT_TRUE(foreign.read(QStringLiteral("ZEBEK_Error.xml")).isEmpty());
}

TEST_F(SupervisionTest, WithoutTheGameItSaysSoAndEnds)
{
    QFile::remove(game.path(QStringLiteral("GhostRecon.exe")));
    game.startTool();
    platform::WindowHandle box = 0;
    ASSERT_TRUE(waitForWindow(QStringLiteral("Ghost Recon Not Found"), box));
    windows.postClose(box);
    ASSERT_TRUE(game.tool().waitForFinished(5000));
    EXPECT_EQ(QDir(game.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("ZebekSuite.exe")});
}
