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
    const struct
    {
        std::function<void()> call;
        QString told;
        int number;
    } rows[] = {
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
        SCOPED_TRACE(&call - &rows->call);
        try {
            call();
            ADD_FAILURE() << "no failure";
        } catch (const platform::Failure &failure) {
            EXPECT_EQ(failure.number(), number);
            EXPECT_TRUE(failure.description().startsWith(told + u": "_s));
        }
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
    const auto numberOf = [](const std::function<void()> &call) {
        try {
            call();
        } catch (const platform::Failure &failure) {
            return failure.number();
        }
        return 0;
    };
    files.create(file, "content", {});
    EXPECT_EQ(platform::readFile(file, 3), "con");
    for (const QString &unreadable : {missing, directory.path(), u"/sys/class/net/lo/speed"_s}) {
        EXPECT_EQ(numberOf([&] { platform::readFile(unreadable); }), 75);
    }
    EXPECT_EQ(numberOf([&] {
                  platform::replaceFile(files, directory.path(), "new",
                                        platform::Durability::SurvivesCrash);
              }),
              75);
    EXPECT_EQ(numberOf([&] { platform::requireFolder(directory.path()); }), 0);
    EXPECT_EQ(numberOf([&] { platform::requireFolder(file); }), 75);
    const auto requireWithoutPrivileges = [&] { // root may read everything
        __user_cap_header_struct self{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct none[2]{};
        ::syscall(SYS_capset, &self, none);
        std::_Exit(numberOf([&] { platform::requireFolder(directory.path()); }));
    };
    for (const QFile::Permissions half : {QFile::ReadOwner, QFile::ExeOwner}) {
        QFile::setPermissions(directory.path(), half);
        EXPECT_EXIT(requireWithoutPrivileges(), testing::ExitedWithCode(75), "");
    }
    QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
