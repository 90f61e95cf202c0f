#include "platform/linux/LinuxProcesses.h"

#include <QtTest/QtTest>

#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

class LinuxProcessesTest : public testing::Test
{
protected:
    platform::LinuxProcesses processes;
    const platform::ProcessId id = processes.start(u"\"/usr/bin/sleep\" 100"_s);
    const platform::ProcessHandle handle = processes.open(id);
};

TEST_F(LinuxProcessesTest, AHandleNeverNamesAnotherProcess)
{
    const platform::ProcessHandle twin = processes.open(id);
    processes.terminate(twin);
    processes.close(twin); // reaps it, so that its id is free for others
    EXPECT_FALSE(QFile::exists(u"/proc/%1"_s.arg(id)));
    EXPECT_TRUE(processes.terminate(handle)) << "it has ended";
    EXPECT_FALSE(processes.executablePath(handle));
    EXPECT_NE(processes.exitCode(handle), platform::StillActiveCode);
    processes.close(handle);

    EXPECT_EQ(processes.exitCode(platform::NoProcess), std::nullopt);
    EXPECT_FALSE(processes.wait(platform::NoProcess, 5000));
    EXPECT_FALSE(processes.terminate(platform::NoProcess));
}

TEST_F(LinuxProcessesTest, RunningOnesAreListedWithTheirProgramsAndEndedOnesTellTheirExitCode)
{
    const auto listed = [this](platform::ProcessId wanted) {
        return std::ranges::count(processes.running(), wanted) == 1;
    };
    const QString sleep = QFileInfo(u"/usr/bin/sleep"_s).canonicalFilePath();
    EXPECT_TRUE(listed(id) && !listed(0));
    EXPECT_EQ(processes.program(id), sleep);
    processes.terminate(handle);
    EXPECT_EQ(processes.exitCode(handle), 128U + 9U);
    EXPECT_EQ(processes.program(id), std::nullopt) << "its parent has not noticed its end yet";
    processes.close(handle);
    EXPECT_FALSE(listed(id));

    const auto failing = processes.open(processes.start(uR"("/bin/sh" -c "sleep 0.3; exit 7")"_s));
    static_cast<void>(std::signal(SIGALRM, [](int /*signal*/) {}));
    ::ualarm(50000, 0); // which interrupts the waiting
    EXPECT_TRUE(processes.wait(failing, 10000));
    EXPECT_EQ(processes.exitCode(failing), 7U);
    processes.close(failing);
}
