#include "program/GameDirectory.h"

#include <QWidget>

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

const QByteArray QuickPolling = "<ServerStartupTimeout>1</ServerStartupTimeout>"
                                "<ServerPollingFreq>500</ServerPollingFreq>";
class SupervisionTest : public testing::Test
{
protected:
    void start(const QByteArray &elements, const QByteArray &serverSwitches = {})
    {
        game.writeOptions(elements, serverSwitches);
        game.startTool();
    }
    /// Waits for a server that has a window and that the tool has asked for its status.
    Pid waitForSupervisedServer()
    {
        const qsizetype asked = game.events("query");
        EXPECT_TRUE(waitUntil([&] { return game.server() > 0 && game.events("query") > asked; },
                              2 * StartMilliseconds));
        return game.server();
    }
    /// As an update does while the tool runs.
    void replaceTool()
    {
        const std::filesystem::path tool = game.path(u"ZebekSuite.exe"_s).toStdString();
        if (isNative(Program::Tool)) {
            std::filesystem::copy_file(tool, tool.string() + ".new");
            std::filesystem::rename(tool.string() + ".new", tool);
        }
    }
    bool isReplaced(Pid first)
    {
        return waitUntil([&] { return game.server() > 0 && game.server() != first; },
                         2 * StartMilliseconds);
    }
    QByteArray options() const { return game.read(u"ZebekSuiteOptions.xml"_s); }
    pid_t toolId() { return static_cast<pid_t>(game.tool().processId()); }

    GameDirectory game;
    platform::LinuxWindows windows;
};

TEST_F(SupervisionTest, AKilledServerIsReplacedAndAKilledToolFindsItAgain)
{
    start(QuickPolling);
    for (int round = 0; round < 2; ++round) {
        const Pid first = waitForSupervisedServer();
        signalProcess(first, SIGKILL);
        EXPECT_TRUE(isReplaced(first));
        replaceTool();
    }
    const Pid last = waitForSupervisedServer();
    game.killTool();
    EXPECT_EQ(game.server(), last);
    game.startTool();
    EXPECT_EQ(waitForSupervisedServer(), last);
    EXPECT_EQ(game.events("started"), 3);
    EXPECT_EQ(game.errorLog(), QByteArray());
}

TEST_F(SupervisionTest, AStubbornServerIsAskedAndThenTerminated)
{
    // Wine may need more than a second from the start of one to its first answer.
    const QByteArray seconds = isNative(Program::Server) ? "1" : "30";
    start(QuickPolling + "<ServerTimeout>" + seconds + "</ServerTimeout>",
          "-mute-after 6 -ignore-close");
    const Pid first = waitForSupervisedServer();
    ASSERT_TRUE(waitUntil([&] { return game.events("close-request") == 1; }, StartMilliseconds));
    EXPECT_EQ(game.server(), first);
    EXPECT_TRUE(isReplaced(first));
    EXPECT_EQ(game.events("ending"), 0);
}

TEST_F(SupervisionTest, AStartedServerInheritsNothingButRunsInItsDirectory)
{
    if (!isNative(Program::Tool)) {
        GTEST_SKIP() << "Wine's processes share what they reach its server through";
    }
    start(QuickPolling);
    const auto server = static_cast<pid_t>(waitForSupervisedServer());
    EXPECT_EQ(QFile::symLinkTarget(u"/proc/%1/cwd"_s.arg(server)), game.path());
    const auto socketsAndPipes = [](pid_t process) {
        QSet<QString> result;
        const QDir folder(u"/proc/%1/fd"_s.arg(process));
        for (const QString &entry : folder.entryList(QDir::AllEntries | QDir::System)) {
            // They are named "socket:[number]", relative to the folder.
            const QString name = QFile::symLinkTarget(folder.filePath(entry)).section(u'/', -1);
            if (name.startsWith(u"socket:"_s) || name.startsWith(u"pipe:"_s)) {
                result.insert(name);
            }
        }
        return result;
    };
    EXPECT_FALSE(socketsAndPipes(toolId()).isEmpty());
    EXPECT_FALSE(socketsAndPipes(server).intersects(socketsAndPipes(toolId())));
    EXPECT_NE(::getsid(server), ::getsid(toolId()));
}

TEST_F(SupervisionTest, EveryWayToEndTheToolSavesItsOptionsAndLeavesTheServerRunning)
{
    Pid server = 0;
    std::vector<std::function<void()>> ways{
        [&] { windows.postClose(waitForWindow(windows, u"Zebek Suite"_s)); }};
    if (isNative(Program::Tool)) {
        ways.insert(ways.end(), {[&] { signalProcess(toolId(), SIGTERM); },
                                 [&] { signalProcess(toolId(), SIGINT); }});
    }
    for (const auto &end : ways) {
        start(QuickPolling + "<stray/>");
        const Pid supervised = waitForSupervisedServer();
        EXPECT_TRUE(server == 0 || server == supervised);
        server = supervised;
        end();
        ASSERT_TRUE(game.tool().waitForFinished(StartMilliseconds));
        EXPECT_EQ(game.tool().exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(game.tool().exitCode(), 0);
        EXPECT_FALSE(options().contains("stray"));
        EXPECT_EQ(game.server(), server);
    }
}

TEST_F(SupervisionTest, ASecondStartBringsTheFirstToTheFrontOrTellsThatItHangs)
{
    start(QuickPolling);
    const Pid server = waitForSupervisedServer();
    const auto isOnTop = [this] {
        return windows.caption(windows.topLevel().front(), 100) == u"Zebek Suite"_s;
    };
    QWidget above;
    above.show();
    above.raise();
    ASSERT_TRUE(waitUntil([&] { return !isOnTop(); }, StartMilliseconds));
    EXPECT_EQ(game.runToolAgain().exitCode, 0);
    EXPECT_TRUE(waitUntil(isOnTop, StartMilliseconds));
    EXPECT_EQ(game.server(), server);
    if (isNative(Program::Tool)) {
        signalProcess(toolId(), SIGSTOP);
        const GameDirectory::Ending second = game.runToolAgain([this] {
            windows.postClose(waitForWindow(windows, u"Zebek Suite Does Not Answer"_s));
        });
        EXPECT_EQ(second.exitCode, 1);
        EXPECT_TRUE(second.told.contains("process " + QByteArray::number(toolId()) + ","));
    }

    GameDirectory beside;
    beside.writeOptions(QuickPolling);
    beside.startTool();
    EXPECT_TRUE(waitUntil([&] { return beside.server() > 0; }, StartMilliseconds));
}

TEST_F(SupervisionTest, WithoutADisplayItSaysInOneLineWhatIsMissing)
{
    if (!isNative(Program::Tool)) {
        GTEST_SKIP() << "only X11 may be missing";
    }
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":99999");
    const GameDirectory::Ending ending = game.runToolAgain();
    qputenv("DISPLAY", display);
    EXPECT_EQ(ending.exitCode, 69);
    EXPECT_TRUE(ending.told.contains("could not connect to display :99999"));
    EXPECT_EQ(ending.told.count('\n'), 1) << ending.told.constData();
}
