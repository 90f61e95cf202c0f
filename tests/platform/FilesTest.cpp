#include "platform/Files.h"

#include "support/ToolTest.h"

using platform::Durability;

class replaceFile : public ToolTest
{
protected:
    void replace(const QString &name, const QByteArray &content)
    {
        platform::replaceFile(files, path(name), content, Durability::SurvivesPowerLoss);
    }

    FailingFiles &files = fake.files;
    const QString file = u"settings.xml"_s;
};

TEST_F(replaceFile, AFailureOfAnySingleOperationLeavesTheOldOrTheNewFile)
{
    replace(file, "old");
    const int operations = files.operations;
    ASSERT_GE(operations, 5);
    for (int failAt = 1; failAt <= operations; ++failAt) {
        files.failAt = 0;
        replace(file, "old");
        files.operations = 0;
        files.failAt = failAt;
        EXPECT_THROW(replace(file, "new content"), platform::Failure);
        EXPECT_TRUE(read(file) == "old" || read(file) == "new content") << failAt;
        EXPECT_EQ(QDir(directory.path()).entryList({u"settings*"_s}, QDir::Files).size(), 1)
            << failAt;
    }
}

TEST_F(replaceFile, KeepsPermissionsFollowsLinksAndRemovesLeftovers)
{
    const QString link = u"link.xml"_s;
    replace(file, "old");
    QFile::setPermissions(path(file), QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QFile::link(path(file), path(link)));
    write(platform::replacementName(file), "of an interrupted replacement");
    replace(link, "new");
    EXPECT_EQ(read(file), "new");
    EXPECT_TRUE(QFileInfo(path(link)).isSymLink());
    EXPECT_FALSE(QFile::permissions(path(file)) & (QFile::ReadGroup | QFile::ReadOther));
    EXPECT_FALSE(QFile::exists(path(platform::replacementName(file))));
}
