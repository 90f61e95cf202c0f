#include "platform/SystemFiles.h"

#include "platform/Failure.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

/// What the next of these calls fails with, which take the place of the system's own.
static int nextError = 0;
static bool fails()
{
    errno = std::exchange(nextError, 0);
    return errno != 0;
}
extern "C" ssize_t pwrite(int file, const void *bytes, size_t count, off_t position)
{
    // A system may take a part only.
    return fails() ? -1
                   : ::syscall(SYS_pwrite64, file, bytes, std::min<size_t>(count, 2), position);
}
extern "C" int fallocate(int file, int mode, off_t position, off_t length)
{
    return fails() ? -1 : static_cast<int>(::syscall(SYS_fallocate, file, mode, position, length));
}

class SystemFilesTest : public testing::Test
{
protected:
    using NumberAndText = std::pair<int, QString>;
    /// 0 without one.
    static NumberAndText failureOf(const std::function<void()> &call)
    {
        try {
            call();
        } catch (const platform::Failure &failure) {
            return {failure.number(), failure.description()};
        }
        return {};
    }

    QTemporaryDir directory;
    const QString file = directory.filePath(u"file"_s);
    const QString missing = directory.filePath(u"no/file"_s);
    platform::SystemFiles files;
};

TEST_F(SystemFilesTest, ACallThatFailsTellsTheFileAndTheSystemsNumber)
{
    files.create(file, "old", {});
    const QString device = u"/dev/null"_s; // which takes any bytes, but no other order
    const std::tuple<std::function<void()>, QString, int> rows[] = {
        {[&] { files.replaceEnd(device, 0, "shorter", {}); }, device, EINVAL},
        {[&] { files.flush(device); }, device, EINVAL},
        {[&] { files.flushFolder(u"/proc"_s); }, u"/proc"_s, EINVAL},
        {[&] {
             nextError = ENOSPC;
             files.replaceEnd(file, 0, "old", "n");
         },
         file, ENOSPC},
        {[&] {
             nextError = ENOSPC;
             platform::replaceFile(files, file, "new", platform::Durability::SurvivesCrash);
         },
         platform::replacementName(file), ENOSPC},
    };
    const auto openFiles = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
    };
    const qsizetype before = openFiles();
    for (const auto &[call, told, number] : rows) {
        const auto [errorNumber, description] = failureOf(call);
        EXPECT_EQ(errorNumber, number) << told.toStdString();
        EXPECT_TRUE(description.startsWith(told + u": "_s)) << description.toStdString();
    }
    EXPECT_EQ(openFiles(), before);
    EXPECT_EQ(platform::readFile(file), "old");
    for (const int harmless : {EINTR, EOPNOTSUPP}) { // of which only the first may befall a write
        nextError = harmless;
        files.replaceEnd(file, 0, "old", "longer");
        EXPECT_EQ(platform::readFile(file), "longer");
        nextError = EINTR;
        files.replaceEnd(file, 0, "longer", "old");
        EXPECT_EQ(platform::readFile(file), "old");
    }
    EXPECT_NO_THROW(files.remove(missing));
}

TEST_F(SystemFilesTest, WhatIsNoFileOrNoFolderOrCannotBeReadIsRefused)
{
    files.create(file, "content", {});
    EXPECT_EQ(platform::readFile(file, 3), "con");
    for (const QString &unreadable :
         {missing, directory.path(), u"/dev/null"_s, u"/sys/class/net/lo/speed"_s}) {
        const auto [number, text] = failureOf([&] { platform::readFile(unreadable); });
        EXPECT_EQ(number, 75);
        EXPECT_TRUE(text.startsWith(unreadable + u": "_s) && text.back() != u' ');
    }
    EXPECT_EQ(failureOf([&] {
                  platform::Replacement(files, directory.path(), "new",
                                        platform::Durability::SurvivesCrash);
              }),
              NumberAndText(75, directory.path() + u": Not a file"_s));
    EXPECT_EQ(failureOf([&] { platform::requireFolder(directory.path()); }).first, 0);
    EXPECT_EQ(failureOf([&] { platform::requireFolder(file); }),
              NumberAndText(75, file + u": Not a directory"_s));
}
