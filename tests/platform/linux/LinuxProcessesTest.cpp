#include "platform/linux/LinuxProcesses.h"

#include "platform/Failure.h"

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/types.h>
#include <unistd.h>

using platform::LinuxProcesses;

namespace {

const QString Sleep = QStringLiteral("\"/usr/bin/sleep\" 100");

QString stateOf(platform::ProcessId id)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(id));
    return file.open(QIODevice::ReadOnly)
               ? QString::fromLatin1(file.readAll().split(')').last().trimmed().left(1))
               : QString();
}

} // namespace

TEST(LinuxProcesses, AnEndedProcessIsNotActiveEvenAsAZombie)
{
    LinuxProcesses processes;
    const platform::ProcessId id = processes.start(Sleep);
    const platform::ProcessHandle handle = processes.open(id);
    ASSERT_NE(handle, platform::NoProcess);
    EXPECT_EQ(processes.exitCode(handle), platform::StillActiveCode);
    EXPECT_EQ(processes.executablePath(handle), QStringLiteral("/usr/bin/sleep"));
    EXPECT_FALSE(processes.wait(handle, 10));

    ASSERT_TRUE(processes.terminate(handle));
    EXPECT_EQ(stateOf(id), QStringLiteral("Z"));
    EXPECT_EQ(processes.exitCode(handle), 0U);
    EXPECT_FALSE(processes.executablePath(handle));
    EXPECT_TRUE(processes.wait(handle, 1000));

    processes.close(handle);
    EXPECT_EQ(stateOf(id), QString()) << "closing the last interest in it leaves no zombie";
    EXPECT_EQ(processes.open(id), platform::NoProcess);
}

TEST(LinuxProcesses, AHandleNeverNamesAnotherProcess)
{
    LinuxProcesses processes;
    const platform::ProcessId id = processes.start(Sleep);
    const platform::ProcessHandle handle = processes.open(id);
    const platform::ProcessHandle twin = processes.open(id);
    processes.terminate(twin);
    processes.close(twin); // reaps it, so that its id is free for others
    EXPECT_EQ(stateOf(id), QString());
    EXPECT_FALSE(processes.terminate(handle));
    EXPECT_FALSE(processes.executablePath(handle));
    EXPECT_NE(processes.exitCode(handle), platform::StillActiveCode);
    processes.close(handle);

    EXPECT_EQ(processes.exitCode(platform::NoProcess), std::nullopt);
    EXPECT_FALSE(processes.wait(platform::NoProcess, 5000));
    EXPECT_FALSE(processes.terminate(platform::NoProcess));
}

TEST(LinuxProcesses, SaysWhyAStartFailed)
{
    const QTemporaryDir directory;
    const QString notExecutable = directory.filePath(QStringLiteral("GhostRecon.exe"));
    QFile file(notExecutable);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    LinuxProcesses processes;
    const std::pair<QString, int> cases[] = {
        {directory.filePath(QStringLiteral("missing")), ENOENT},
        {notExecutable, EACCES},
    };
    for (const auto &[program, error] : cases) {
        try {
            processes.start(QStringLiteral("\"%1\" -autoserve").arg(program));
            ADD_FAILURE() << program.toStdString();
        } catch (const platform::Failure &failure) {
            EXPECT_EQ(failure.number(), error) << failure.what();
            EXPECT_TRUE(failure.description().startsWith(program)) << failure.what();
        }
    }
}
