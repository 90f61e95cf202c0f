#include "platform/Files.h"

#include "support/FakeMachine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

} // namespace

TEST(replaceFile, AFailureOfAnySingleOperationLeavesTheOldOrTheNewFile)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("settings.xml"));
    FailingFiles files;
    platform::replaceFile(files, path, "old", platform::Durability::SurvivesPowerLoss);
    const int operations = files.operations;
    ASSERT_GE(operations, 5);

    for (int failAt = 1; failAt <= operations; ++failAt) {
        files.failAt = 0;
        platform::replaceFile(files, path, "old", platform::Durability::SurvivesPowerLoss);
        files.operations = 0;
        files.failAt = failAt;
        EXPECT_THROW(platform::replaceFile(files, path, "new content",
                                           platform::Durability::SurvivesPowerLoss),
                     platform::Failure);
        const QByteArray content = contentOf(path);
        EXPECT_TRUE(content == "old" || content == "new content") << failAt;
        EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files).size(), 1) << failAt;
    }
}

TEST(replaceFile, KeepsPermissionsFollowsLinksAndRemovesLeftovers)
{
    const QTemporaryDir directory;
    const QString target = directory.filePath(QStringLiteral("real.xml"));
    const QString link = directory.filePath(QStringLiteral("link.xml"));
    FailingFiles files;
    platform::replaceFile(files, target, "old", platform::Durability::SurvivesCrash);
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QFile::link(target, link));
    QFile leftover(platform::replacementName(target));
    ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));

    platform::replaceFile(files, link, "new", platform::Durability::SurvivesCrash);

    EXPECT_EQ(contentOf(target), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files).size(), 2);
}
