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

    /// A new run of the tool, with a file as it is to be found.
    void restartWith(const QString &name, const QByteArray &content)
    {
        if (content.isNull()) {
            QFile::remove(path(name));
        } else if (content != read(name)) { // else its time stays as well
            write(name, content);
            QFile file(path(name)); // long ago
            file.open(QIODevice::ReadWrite);
            file.setFileTime(QDateTime(QDate(2000, 1, 1), QTime()),
                             QFileDevice::FileModificationTime);
        }
        files.failAt = 0;
        newTool();
        root->Start();
        files.operations = 0;
    }
    qsizetype reportCount() const { return recordCount() + fake.boxes.boxes.size(); }
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

    /// To fail and to be killed. On Windows a death test runs from the beginning, with a folder of
    /// its own, and so proves nothing about this one.
#ifdef Q_OS_WIN
    static constexpr int Ways = 1;
#else
    static constexpr int Ways = 2;
#endif
    FailingFiles &files = fake.files;
    const QString file = u"settings.xml"_s;
};

TEST_F(replaceFile, ASaveThatFailsOrIsKilledAtAnyOperationLeavesTheOldOrTheNewFile)
{
    QDir(directory.path()).mkpath(u"Mods/M"_s);
    const auto saveSettings = [] { gRoot->Options()->Save(); };
    const auto recordError = [] {
        gRoot->Errors()->RecordError(u"M"_s, u"R"_s, {}, 1, u"failed"_s);
    };
    const struct
    {
        QString name;
        QByteArray before; ///< null for no file
        std::function<void()> run;
        qsizetype reports; ///< records and boxes that a failure leads to
    } saves[] = {
        {OptionsFile, "<options><AutoStartGRServer>False</AutoStartGRServer></options>",
         saveSettings, 1},
        {OptionsFile, "<unreadable", saveSettings, 1}, // which is copied aside first
        {ErrorLog, {}, recordError, 0},
        {ErrorLog, "<Errors><Error/></Errors>", recordError, 0}, // continued by one operation
        {u"options.xml"_s, "<game><JoinPort>1</JoinPort></game>",
         [] {
             clsOptionsXML options;
             options.Load();
             options.JoinPort.Let(2346);
             trap({"M", "R", ""}, [&] { options.Save(); });
         },
         1},
        {u"modsset.txt"_s, "// old",
         [] {
             clsMods mods;
             mods.Load();
             mods.ActivateMod(u"\\mods\\m"_s);
             mods.Save();
         },
         1},
    };
    for (const auto &[name, before, run, reports] : saves) {
        restartWith(name, before);
        run();
        const int operations = files.operations;
        const QByteArray after = read(name);
        ASSERT_NE(after, before);
        ASSERT_GE(operations, name == ErrorLog ? 1 : 6);
        for (int step = 0; step < Ways * operations; ++step) {
            SCOPED_TRACE(name.toStdString() + ", step " + std::to_string(step));
            restartWith(name, before);
            files.failAt = step / Ways + 1;
            files.kills = step % Ways == 1;
            const qsizetype reported = reportCount();
            if (files.kills) {
                EXPECT_EXIT(run(), testing::ExitedWithCode(FailingFiles::Killed), "");
            } else {
                run();
                EXPECT_EQ(reportCount() - reported, reports);
                EXPECT_EQ(leftovers(), 0);
            }
            const QByteArray left = read(name);
            EXPECT_TRUE(left == before || left == after) << left.constData();
            restartWith(name, left);
            run();
            EXPECT_EQ(read(name), after);
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
