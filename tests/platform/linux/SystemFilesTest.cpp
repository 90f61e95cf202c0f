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
#include <linux/capability.h>
#include <sys/stat.h>
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
extern "C" int fchmod(int file, mode_t mode) noexcept
{
    return fails() ? -1 : static_cast<int>(::syscall(SYS_fchmod, file, mode));
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

TEST_F(SystemFilesTest, EveryCallThatFailsTellsTheFileAndTheSystemsNumber)
{
    files.create(file, "old", {});
    const QString device = u"/dev/null"_s; // which takes any bytes, but no other order
    const QString proc = u"/proc"_s;
    const QString other = directory.filePath(u"other"_s);
    const std::tuple<std::function<void()>, QString, int> rows[] = {
        {[&] { files.remove(directory.path()); }, directory.path(), EISDIR},
        {[&] { files.create(file, "new", {}); }, file, EEXIST},
        {[&] { files.create(missing, "new", {}); }, missing, ENOENT},
        {[&] { files.replaceEnd(missing, 0, {}, "new"); }, missing, ENOENT},
        {[&] { files.replaceEnd(device, 0, {}, "longer"); }, device, ENODEV},
        {[&] { files.replaceEnd(device, 0, "shorter", {}); }, device, EINVAL},
        {[&] { files.flush(missing); }, missing, ENOENT},
        {[&] { files.flush(device); }, device, EINVAL},
        {[&] { files.rename(missing, file); }, file, ENOENT},
        {[&] { files.flushFolder(file); }, file, ENOTDIR},
        {[&] { files.flushFolder(proc); }, proc, EINVAL},
        {[&] {
             nextError = EPERM; // to change permissions
             files.create(other, "new", {file});
         },
         other, EPERM},
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
    EXPECT_TRUE(platform::isDiskFull({ENOSPC, {}}) && platform::isDiskFull({EDQUOT, {}}));
    EXPECT_FALSE(platform::isDiskFull({EFBIG, {}}));
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
    const auto replaceFolder = [this] {
        platform::Replacement(files, directory.path(), "new", platform::Durability::SurvivesCrash);
    };
    EXPECT_EQ(failureOf(replaceFolder), NumberAndText(75, directory.path() + u": Not a file"_s));
    EXPECT_EQ(failureOf([&] { platform::requireFolder(directory.path()); }).first, 0);
    EXPECT_EQ(failureOf([&] { platform::requireFolder(file); }),
              NumberAndText(75, file + u": Not a directory"_s));
    const auto requireWithoutPrivileges = [&] { // root may read everything
        __user_cap_header_struct self{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct none[2]{};
        ::syscall(SYS_capset, &self, none);
        const auto [number, text] = failureOf([&] { platform::requireFolder(directory.path()); });
        std::_Exit(text == directory.path() + u": Permission denied"_s ? number : EXIT_FAILURE);
    };
    for (const QFile::Permissions half : {QFile::ReadOwner, QFile::ExeOwner}) {
        QFile::setPermissions(directory.path(), half);
        EXPECT_EXIT(requireWithoutPrivileges(), testing::ExitedWithCode(75), "");
    }
    QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
