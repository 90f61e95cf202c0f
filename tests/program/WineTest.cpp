#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/LinuxWindows.h"
#include "program/GameDirectory.h"

#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <gtest/gtest.h>

namespace {

const QString Compiler = QStringLiteral("x86_64-w64-mingw32-gcc");
/// Wine makes its folder of settings at its first start.
constexpr int FirstWineMilliseconds = 120000;

/// A game directory whose game is a Windows program.
class WineTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString &program : {QStringLiteral("wine"), Compiler}) {
            if (QStandardPaths::findExecutable(program).isEmpty()) {
                GTEST_SKIP() << program.toStdString() << " is not installed";
            }
        }
        ASSERT_TRUE(QFile::remove(gamePath));
        QProcess compiler;
        compiler.start(Compiler, {QStringLiteral("-mwindows"), QStringLiteral(WINE_GAME_SOURCE),
                                  QStringLiteral("-o"), gamePath});
        ASSERT_TRUE(compiler.waitForFinished());
        ASSERT_EQ(compiler.exitCode(), 0);
        qputenv("WINEPREFIX", prefix.path().toUtf8());
        // No dialogs about parts of Wine that the game does not need.
        qputenv("WINEDLLOVERRIDES", "mscoree,mshtml=");
        qputenv("WINEDEBUG", "-all");
    }
    void TearDown() override
    {
        game.tool().kill();
        game.tool().waitForFinished();
        QProcess::execute(QStringLiteral("wineserver"), {QStringLiteral("-k")});
    }

    /// The process that owns the game's window, by the tool's own means; 0 without a window.
    Pid gameProcess()
    {
        for (const platform::WindowHandle window : windows.topLevel()) {
            const platform::ProcessId owner = windows.owner(window);
            const platform::ProcessHandle handle =
                owner == 0 ? platform::NoProcess : processes.open(owner);
            if (handle == platform::NoProcess) {
                continue;
            }
            const std::optional<QString> path = processes.executablePath(handle);
            processes.close(handle);
            if (path == gamePath && windows.caption(window, 20) == QStringLiteral("Ghost Recon")) {
                return owner;
            }
        }
        return 0;
    }
    Pid waitForAnother(Pid before, int milliseconds)
    {
        EXPECT_TRUE(
            waitUntil([&] { return gameProcess() != 0 && gameProcess() != before; }, milliseconds));
        return gameProcess();
    }

    GameDirectory game{QStringLiteral("Ghost Recon")};
    const QString gamePath = game.path(QStringLiteral("GhostRecon.exe"));
    const QTemporaryDir prefix;
    platform::LinuxProcesses processes;
    platform::LinuxWindows windows;
};

} // namespace

TEST_F(WineTest, AWindowsProgramIsStartedFoundClosedAndRestarted)
{
    // It answers no query, so it is dead after its grace period, and closes when it is asked.
    game.writeOptions("<ServerStartupTimeout>3</ServerStartupTimeout>"
                      "<ServerPollingFreq>4000</ServerPollingFreq>"
                      "<ServerTimeout>6</ServerTimeout>");
    game.startTool();
    const Pid first = waitForAnother(0, FirstWineMilliseconds);
    const Pid second = waitForAnother(first, 60000);

    // Killed, it is back; with the tool killed, it is found again.
    signalProcess(second, SIGKILL);
    const Pid third = waitForAnother(second, 20000);
    game.tool().kill();
    ASSERT_TRUE(game.tool().waitForFinished());
    EXPECT_EQ(gameProcess(), third);
    game.startTool();
    waitForAnother(third, 60000);
    EXPECT_TRUE(game.read(QStringLiteral("ZEBEK_Error.xml")).isEmpty());
}
