#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/LinuxWindows.h"
#include "program/GameDirectory.h"

#include <csignal>
#include <gtest/gtest.h>

const QString Compiler = u"x86_64-w64-mingw32-gcc"_s;

/// The process that owns the game's window, by the tool's own means; 0 without a window.
static Pid gameProcess(const QString &game)
{
    platform::LinuxProcesses processes;
    platform::LinuxWindows windows;
    for (const platform::WindowHandle window : windows.topLevel()) {
        const platform::ProcessId owner = windows.owner(window);
        const platform::ProcessHandle handle = owner == 0 ? 0 : processes.open(owner);
        const auto path = processes.executablePath(handle);
        if (handle != platform::NoProcess) {
            processes.close(handle);
        }
        if (path == game && windows.caption(window, 20) == u"Ghost Recon"_s) {
            return owner;
        }
    }
    return 0;
}

TEST(Wine, AWindowsProgramIsStartedFoundClosedAndRestarted)
{
    for (const QString &program : {u"wine"_s, Compiler}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) {
            GTEST_SKIP() << program.toStdString() << " is not installed";
        }
    }
    const QTemporaryDir prefix;
    qputenv("WINEPREFIX", prefix.path().toUtf8());
    // No dialogs about parts of Wine that the game does not need.
    qputenv("WINEDLLOVERRIDES", "mscoree,mshtml=");
    qputenv("WINEDEBUG", "-all");
    GameDirectory game(u"Ghost Recon"_s);
    const QString program = game.path(u"GhostRecon.exe"_s);
    ASSERT_TRUE(QFile::remove(program));
    ASSERT_EQ(QProcess::execute(
                  Compiler, {u"-mwindows"_s, QStringLiteral(WINE_GAME_SOURCE), u"-o"_s, program}),
              0);
    const auto waitForAnother = [&](Pid before, int milliseconds) {
        Pid found = 0;
        const auto appears = [&] {
            found = gameProcess(program);
            return found != 0 && found != before;
        };
        EXPECT_TRUE(waitUntil(appears, milliseconds));
        return found;
    };

    // It answers no query, so it is dead after its grace period, and closes when it is asked.
    game.writeOptions(
        "<ServerStartupTimeout>3</ServerStartupTimeout>"
        "<ServerPollingFreq>4000</ServerPollingFreq><ServerTimeout>6</ServerTimeout>");
    game.startTool();
    // Wine makes its folder of settings at its first start.
    const Pid first = waitForAnother(0, 120000);
    const Pid second = waitForAnother(first, 60000);
    // Killed, it is back; with the tool killed, it is found again.
    signalProcess(second, SIGKILL);
    const Pid third = waitForAnother(second, 20000);
    game.killTool();
    EXPECT_EQ(gameProcess(program), third);
    game.startTool();
    waitForAnother(third, 60000);
    EXPECT_EQ(game.errorLog(), QByteArray());
    game.killTool();
    QProcess::execute(u"wineserver"_s, {u"-k"_s});
}
