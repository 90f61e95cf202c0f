#include "core/basTraps.h"
#include "support/RootTest.h"

#include <random>

using clsOptionsTest = ServicesTest;

const QString UnreadableFile = u"ZebekSuiteOptions.unreadable.xml"_s;
const QString SecondUnreadableFile = u"ZebekSuiteOptions.unreadable-2.xml"_s;

TEST_F(clsOptionsTest, WithoutAFileTheDefaultsHoldAndAreWrittenInOrder)
{
    root->Start();
    EXPECT_TRUE(root->Options()->FindGRServer());
    EXPECT_EQ(clsOptions::StatsPath(), rootDirectory() + u"Stats"_s);

    root->Quit();
    EXPECT_EQ(read(OptionsFile),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<options><Version>1.03</Version>"
              "<AutoRunOnStartup>True</AutoRunOnStartup>"
              "<AutoStartGRServer>True</AutoStartGRServer>"
              "<AutoRestartGRServer>True</AutoRestartGRServer>"
              "<AutoRestartOnProcessStop>True</AutoRestartOnProcessStop>"
              "<FindGRServer>True</FindGRServer><ServerPollingFreq>3000</ServerPollingFreq>"
              "<ServerStartupTimeout>30</ServerStartupTimeout><ServerTimeout>30</ServerTimeout>"
              "<ServerCommandLineArgs/><RecordReplays>True</RecordReplays>"
              "<SkipBlankReplays>True</SkipBlankReplays><ReplayCount>50</ReplayCount>"
              "<ReplaysPath>" +
                  (rootDirectory() + u"Replays"_s).toUtf8() +
                  "</ReplaysPath><ServerRunningGif>"
                  "http://images.example/Vemb/Zebek/images/ServerGo.gif</ServerRunningGif>"
                  "<ServerCrashGif>http://images.example/Vemb/Zebek/images/ServerCrash.gif"
                  "</ServerCrashGif><RemoteAccessPort>80</RemoteAccessPort>"
                  "<RemoteAccessIP/>"
                  "<AllowRemoteAccess>False</AllowRemoteAccess><AdminUserName/><AdminPassword/>"
                  "</options>\n");
#ifndef Q_OS_WIN // where permissions are something else
    EXPECT_EQ(QFile::permissions(path(OptionsFile)) & QFile::Permissions(0x0FFF),
              QFile::ReadUser | QFile::WriteUser)
        << "it holds a password";
#endif
}

TEST_F(clsOptionsTest, AChangeThatCannotBeSavedIsTriedAgainAndToldOnce)
{
    startIdle();
    root->Options()->ReplayCount.Ex(9);
    fake.files.failAt = FailingFiles::Always;
    fake.clock.advance(60000);
    fake.files.failAt = 0;
    fake.clock.advance(2000);
    EXPECT_TRUE(read(OptionsFile).contains("<ReplayCount>9<"));
    recordFailure({"M", "R", "ID"}, {1, {}});
    EXPECT_EQ(recordCount(), 2) << "one for thirty attempts";
}

TEST_F(clsOptionsTest, ValuesAreFoundAnywhereByNameAndConverted)
{
    write(OptionsFile, "<?xml version=\"1.0\" encoding=\"windows-1252\"?><other><deep>"
                       "<ReplayCount> 2.5 </ReplayCount><FindGRServer>fALSE</FindGRServer></deep>"
                       "<ReplayCount>99</ReplayCount><ServerTimeout>3.5</ServerTimeout>"
                       "<RecordReplays>-0.0</RecordReplays><SkipBlankReplays>2</SkipBlankReplays>"
                       "<ServerPollingFreq></ServerPollingFreq><ReplaysPath>none</ReplaysPath>"
                       "<AdminUserName>J\xFCrgen &amp; Co</AdminUserName><extra/></other>");
    root->Start();
    EXPECT_FALSE(root->Options()->FindGRServer());
    EXPECT_EQ(root->Options()->ReplayFolder(), u"none"_s);
    root->Options()->AdminPassword.Let(u"<ÄÖÜ> \"ß\" €\r\n 日本"_s);
    root->Quit();
    const QByteArray saved = read(OptionsFile);
    for (const char *element :
         {"<ReplayCount>2<", "<FindGRServer>False<", "<ServerTimeout>4<", "<RecordReplays>False<",
          "<SkipBlankReplays>True<", "<ServerPollingFreq>3000<", "<ReplaysPath>none<"}) {
        EXPECT_TRUE(saved.contains(element)) << element;
    }
    EXPECT_FALSE(saved.contains("extra"));
    newTool();
    root->Start();
    EXPECT_EQ(root->Options()->AdminUserName(), u"Jürgen & Co"_s);
    EXPECT_EQ(root->Options()->AdminPassword(), u"<ÄÖÜ> \"ß\" €\r\n 日本"_s);
}

TEST_F(clsOptionsTest, AValueThatCannotBeConvertedIsAskedAboutAndCancelEndsTheReading)
{
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};
    startWith("<ServerTimeout>12</ServerTimeout><RecordReplays>yes</RecordReplays>"
              "<ReplayCount>7</ReplayCount>");
    EXPECT_EQ(fake.boxes.boxes,
              QStringList(2, u"Do'h!!|21|An error has occured in Class_Initialize of Options (Root "
                             "Object):\r\n\r\n    13 : RecordReplays: \"yes\" is neither True nor "
                             "False"_s));
    EXPECT_EQ(fake.boxes.alone, platform::CancelsAlone) << "nobody may be there";
    EXPECT_EQ(recordCount(), 1);
    const clsOptions &options = *root->Options();
    EXPECT_EQ(options.ServerTimeout(), 12);
    EXPECT_EQ(options.ReplayCount(), 100);
    EXPECT_EQ(options.AdminUserName(), u"Admin"_s);
    EXPECT_EQ(options.ReplayFolder(), rootDirectory() + u"Replays"_s);

    root->Quit();
    EXPECT_TRUE(read(UnreadableFile).contains("<ReplayCount>7<")) << "what was not read is kept";
}

TEST_F(clsOptionsTest, NoFileThatSomebodyEditedStopsTheStartOrIsLost)
{
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same edits each time
    const auto below = [&random](qsizetype end) { return static_cast<qsizetype>(random()) % end; };
    startIdle();
    root->Quit();
    const QByteArray whole = read(OptionsFile);
    fake.boxes.whileOpen = [this] { EXPECT_EQ(fake.boxes.alone, platform::CancelsAlone); };
    for (int file = 0; file < 100; ++file) {
        QByteArray edited = whole;
        for (qsizetype edits = below(3); edits >= 0; --edits) {
            const char byte = "<>/&;-\xff\0 0x"[below(12)];
            const QByteArray written = below(2) == 0 ? QByteArray() : QByteArray(1, byte);
            edited.replace(below(whole.size()), below(8), written);
        }
        write(OptionsFile, edited);
        newTool();
        root->Start();
        const bool asked = !std::exchange(fake.boxes.boxes, {}).isEmpty();
        root->Quit();
        EXPECT_TRUE(!asked || read(UnreadableFile) == edited) << edited.constData();
        newTool();
        root->Start();
        EXPECT_TRUE(fake.boxes.boxes.isEmpty()) << read(OptionsFile).constData();
        QFile::remove(path(UnreadableFile));
    }
}

TEST_F(clsOptionsTest, AMalformedFileIsReplacedAtTheNextSaveOnlyAndKeptBeside)
{
    const QByteArray broken = "<options><ReplayCount>9</ReplayCount>";
    write(OptionsFile, broken);
    QFile::setPermissions(path(OptionsFile), QFile::ReadOwner | QFile::WriteOwner);
    write(UnreadableFile, "an older one");
    root->Start();
    EXPECT_TRUE(fake.boxes.boxes.empty());
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(read(OptionsFile), broken);
    fake.files.failAt = FailingFiles::Always;
    root->Options()->Save();
    EXPECT_EQ(read(OptionsFile), broken) << "a save that fails leaves the old file in place";
    QFile::remove(path(SecondUnreadableFile));
    fake.files.failAt = 0;

    root->Quit();
    EXPECT_TRUE(read(OptionsFile).contains("<ReplayCount>50</ReplayCount>"));
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(read(UnreadableFile), "an older one");
    EXPECT_EQ(read(SecondUnreadableFile), broken);
#ifndef Q_OS_WIN // where permissions are something else
    for (const QString &name : {OptionsFile, SecondUnreadableFile}) {
        EXPECT_FALSE(QFile::permissions(path(name)) & QFile::ReadOther) << "it may hold a password";
    }
#endif

    QFile::remove(path(SecondUnreadableFile));
    QFile::remove(path(OptionsFile));
    newTool();
    root->Start();
    write(OptionsFile, broken); // as when its disk is mounted late
    root->Quit();
    EXPECT_EQ(read(SecondUnreadableFile), broken);

    QFile::remove(path(SecondUnreadableFile));
    QFile::remove(path(OptionsFile));
    newTool();
    root->Start();
    for (int save = 0; save < 2; ++save) {
        root->Options()->Save();
        EXPECT_FALSE(QFile::exists(path(SecondUnreadableFile))) << "the tool's own is no such file";
    }
}
