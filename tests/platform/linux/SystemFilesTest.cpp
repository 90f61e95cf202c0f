#include "platform/SystemFiles.h"

#include "platform/Failure.h"
#include "support/system.h"

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

class SystemFilesTest : public testing::Test
{
protected:
    /// Its number and text; 0 without one.
    static std::pair<int, QString> failureOf(const std::function<void()> &call)
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
             limitFileSize(2); // the first write falls short, the next one fails
             files.create(other, "new", {});
         },
         other, EFBIG},
    };
    for (const auto &[call, told, number] : rows) {
        const auto [errorNumber, description] = failureOf(call);
        EXPECT_EQ(errorNumber, number) << told.toStdString();
        EXPECT_TRUE(description.startsWith(told + u": "_s)) << description.toStdString();
    }
    limitFileSize(-1);
    EXPECT_EQ(platform::readFile(file), "old");
    EXPECT_EQ(platform::readFile(other), "ne");
    EXPECT_NO_THROW(files.remove(missing));
    EXPECT_TRUE(platform::isDiskFull({ENOSPC, {}}) && platform::isDiskFull({EDQUOT, {}}));
    EXPECT_FALSE(platform::isDiskFull({EFBIG, {}}));
}

TEST_F(SystemFilesTest, WhatIsNoFileOrNoFolderOrCannotBeReadIsRefused)
{
    files.create(file, "content", {});
    EXPECT_EQ(platform::readFile(file, 3), "con");
    for (const QString &unreadable : {missing, directory.path(), u"/sys/class/net/lo/speed"_s}) {
        EXPECT_EQ(failureOf([&] { platform::readFile(unreadable); }).first, 75);
    }
    const auto replaceFolder = [this] {
        platform::Replacement(files, directory.path(), "new", platform::Durability::SurvivesCrash);
    };
    EXPECT_EQ(failureOf(replaceFolder).first, 75);
    EXPECT_EQ(failureOf([&] { platform::requireFolder(directory.path()); }).first, 0);
    EXPECT_EQ(failureOf([&] { platform::requireFolder(file); }).second,
              file + u": No such folder"_s);
    const auto requireWithoutPrivileges = [&] { // root may read everything
        __user_cap_header_struct self{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct none[2]{};
        ::syscall(SYS_capset, &self, none);
        std::_Exit(failureOf([&] { platform::requireFolder(directory.path()); }).first);
    };
    for (const QFile::Permissions half : {QFile::ReadOwner, QFile::ExeOwner}) {
        QFile::setPermissions(directory.path(), half);
        EXPECT_EXIT(requireWithoutPrivileges(), testing::ExitedWithCode(75), "");
    }
    QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
