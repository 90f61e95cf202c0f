#include "platform/linux/LinuxProcesses.h"

#include "support/ToolTest.h"

class LinuxProcessesTest : public testing::Test
{
protected:
    static QString stateOf(platform::ProcessId process)
    {
        QFile file(u"/proc/%1/stat"_s.arg(process));
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromLatin1(file.readAll().split(')').last().trimmed().left(1))
                   : QString();
    }
    platform::LinuxProcesses processes;
    const platform::ProcessId id = processes.start(u"\"/usr/bin/sleep\" 100"_s);
    const platform::ProcessHandle handle = processes.open(id);
};

TEST_F(LinuxProcessesTest, AnEndedProcessIsNotActiveEvenAsAZombie)
{
    ASSERT_NE(handle, platform::NoProcess);
    EXPECT_EQ(processes.exitCode(handle), platform::StillActiveCode);
    EXPECT_EQ(processes.executablePath(handle), u"/usr/bin/sleep"_s);
    EXPECT_FALSE(processes.wait(handle, 10));

    ASSERT_TRUE(processes.terminate(handle));
    EXPECT_EQ(stateOf(id), u"Z"_s);
    EXPECT_EQ(processes.exitCode(handle), 0U);
    EXPECT_FALSE(processes.executablePath(handle));
    EXPECT_TRUE(processes.wait(handle, 1000));
    processes.close(handle);
    EXPECT_EQ(stateOf(id), QString()) << "closing the last interest in it leaves no zombie";
    EXPECT_EQ(processes.open(id), platform::NoProcess);
}

TEST_F(LinuxProcessesTest, AHandleNeverNamesAnotherProcess)
{
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
