#include "platform/Files.h"

#include "core/basTraps.h"
#include "server/clsMods.h"
#include "server/clsOptionsXML.h"
#include "support/ToolTest.h"

using platform::Durability;

class replaceFile : public ToolTest
{
protected:
    void replace(const QString &name, const QByteArray &content)
    {
        platform::replaceFile(files, path(name), content, Durability::SurvivesPowerLoss);
    }

    int leftovers() const
    {
        int count = 0;
        for (QDirIterator found(directory.path(), {platform::replacementName(u"*"_s)}, QDir::Files,
                                QDirIterator::Subdirectories);
             found.hasNext(); found.next()) {
            ++count;
        }
        return count;
    }

    FailingFiles &files = fake.files;
    const QString file = u"settings.xml"_s;
};

/// What a kill leaves is what is left when all operations from one on fail.
TEST_F(replaceFile, ASaveThatFailsOrIsKilledAtAnyOperationLeavesTheOldOrTheNewFile)
{
    const struct
    {
        QString name;
        QByteArray before;
        std::function<void()> run;
    } saves[] = {
        {OptionsFile, "<options><AutoStartGRServer>False</AutoStartGRServer></options>",
         [] { gRoot->Options()->Save(); }},
        {OptionsFile, "<unreadable", [] { gRoot->Options()->Save(); }}, // copied aside first
        {u"options.xml"_s, "<game><JoinPort>1</JoinPort></game>",
         [] {
             clsOptionsXML options;
             options.Load();
             options.JoinPort.Let(2346);
             trap({"M", "R", ""}, [&] { options.Save(); });
         }},
        {u"modsset.txt"_s, "// old", [] {
             clsMods mods;
             mods.Load();
             mods.ActivateMod(u"\\mods\\m"_s);
             mods.Save();
         }}};
    QDir(directory.path()).mkpath(u"Mods/M"_s);
    for (const auto &save : saves) {
        const auto saveWith = [&](int failAt) {
            write(save.name, save.before);
            newTool();
            root->Start();
            files.operations = 0;
            files.failAt = failAt;
            save.run();
            files.failAt = 0;
            return read(save.name);
        };
        const QByteArray after = saveWith(0);
        const int operations = files.operations;
        EXPECT_NE(after, save.before);
        EXPECT_GE(operations, 6);
        for (int step = 1; step <= operations; ++step) {
            SCOPED_TRACE(save.name.toStdString() + ", step " + std::to_string(step));
            const QByteArray failed = saveWith(step);
            EXPECT_EQ(leftovers(), 0);
            const QByteArray killed = saveWith(-step);
            EXPECT_TRUE(failed == save.before || failed == after) << failed.constData();
            EXPECT_TRUE(killed == save.before || killed == after) << killed.constData();
            EXPECT_EQ(saveWith(0), after);
            EXPECT_EQ(leftovers(), 0);
        }
    }
}

#ifndef Q_OS_WIN // where permissions and links are something else
TEST_F(replaceFile, KeepsPermissionsAndFollowsLinks)
{
    const QString link = u"link.xml"_s;
    replace(file, "old");
    QFile::setPermissions(path(file), QFile::ReadOwner | QFile::WriteOwner | QFile::WriteGroup);
    const QFile::Permissions permissions = QFile::permissions(path(file));
    ASSERT_TRUE(QFile::link(path(file), path(u"nearer.xml"_s)));
    ASSERT_TRUE(QFile::link(path(u"nearer.xml"_s), path(link)));
    replace(link, "new");
    EXPECT_EQ(read(file), "new");
    EXPECT_TRUE(QFileInfo(path(link)).isSymLink());
    EXPECT_EQ(QFile::permissions(path(file)), permissions);
    QFile::remove(path(file));
    replace(u"nearer.xml"_s, "made anew");
    EXPECT_EQ(read(file), "made anew");
    EXPECT_TRUE(QFile::permissions(path(file)) & QFile::ReadOwner);
    files.operations = 0;
    files.failAt = -2; // also what would remove the rest
    EXPECT_THROW(replace(file, "never"), platform::Failure);
}
#endif
