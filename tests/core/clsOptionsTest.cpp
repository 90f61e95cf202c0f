#include "support/ToolTest.h"

using clsOptionsTest = ToolTest;

namespace {

const QString FileName = QStringLiteral("ZebekSuiteOptions.xml");

} // namespace

TEST_F(clsOptionsTest, WithoutAFileTheDefaultsHoldAndAreWrittenInOrder)
{
    root->Start();
    const clsOptions &options = *root->Options();
    EXPECT_TRUE(options.AutoStartGRServer() && options.AutoRestartGRServer() &&
                options.AutoRestartOnProcessStop() && options.FindGRServer() &&
                options.RecordReplays() && options.SkipBlankReplays());
    EXPECT_EQ(options.AdminUserName(), QString());
    EXPECT_EQ(clsOptions::StatsPath(), rootDirectory() + QStringLiteral("Stats"));

    root->Quit();
    const QByteArray replays = path(QStringLiteral("Replays")).toUtf8();
    EXPECT_EQ(read(FileName),
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
                  replays +
                  "</ReplaysPath><ServerRunningGif>"
                  "http://images.example/Vemb/Zebek/images/ServerGo.gif</ServerRunningGif>"
                  "<ServerCrashGif>http://images.example/Vemb/Zebek/images/ServerCrash.gif"
                  "</ServerCrashGif><RemoteAccessPort>80</RemoteAccessPort><RemoteAccessIP/>"
                  "<AllowRemoteAccess>False</AllowRemoteAccess><AdminUserName/><AdminPassword/>"
                  "</options>\n");
}

TEST_F(clsOptionsTest, ValuesAreFoundAnywhereByNameAndConverted)
{
    write(FileName, "<?xml version=\"1.0\" encoding=\"windows-1252\"?><other><deep>"
                    "<ReplayCount> 2.5 </ReplayCount><FindGRServer>fALSE</FindGRServer></deep>"
                    "<ReplayCount>99</ReplayCount><ServerTimeout>3.5</ServerTimeout>"
                    "<RecordReplays>-0.0</RecordReplays><SkipBlankReplays>2</SkipBlankReplays>"
                    "<ServerPollingFreq></ServerPollingFreq><ReplaysPath>none</ReplaysPath>"
                    "<AdminUserName>J\xFCrgen &amp; Co</AdminUserName><extra>gone</extra></other>");
    root->Start();
    const clsOptions &options = *root->Options();
    EXPECT_EQ(options.ReplayCount(), 2);
    EXPECT_FALSE(options.FindGRServer());
    EXPECT_EQ(options.ServerTimeout(), 4);
    EXPECT_FALSE(options.RecordReplays());
    EXPECT_TRUE(options.SkipBlankReplays());
    EXPECT_EQ(options.ServerPollingFrequency(), 3000);
    EXPECT_EQ(options.ReplayFolder(), QStringLiteral("none"));
    EXPECT_EQ(options.AdminUserName(), QStringLiteral("Jürgen & Co"));

    root->Options()->AdminPassword.Let(QStringLiteral("<ÄÖÜ> \"ß\" €\r\n 日本"));
    root->Quit();
    EXPECT_FALSE(read(FileName).contains("extra"));
    newTool();
    root->Start();
    EXPECT_EQ(root->Options()->AdminUserName(), QStringLiteral("Jürgen & Co"));
    EXPECT_EQ(root->Options()->AdminPassword(), QStringLiteral("<ÄÖÜ> \"ß\" €\r\n 日本"));
}

TEST_F(clsOptionsTest, AValueThatCannotBeConvertedIsAskedAboutAndCancelEndsTheReading)
{
    writeOptions("<ServerTimeout>12</ServerTimeout><RecordReplays>yes</RecordReplays>"
                 "<ReplayCount>7</ReplayCount>");
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};

    root->Start();

    ASSERT_EQ(fake.boxes.boxes.size(), 2U);
    EXPECT_EQ(fake.boxes.boxes.front().text,
              QStringLiteral("An error has occured in Class_Initialize of Options (Root Object):"
                             "\r\n\r\n    13 : RecordReplays: \"yes\" is neither True nor False"));
    const clsOptions &options = *root->Options();
    EXPECT_EQ(options.ServerTimeout(), 12);
    EXPECT_EQ(options.ReplayCount(), 100);
    EXPECT_EQ(options.AdminUserName(), QStringLiteral("Admin"));
    EXPECT_EQ(options.ReplayFolder(), rootDirectory() + QStringLiteral("Replays"));
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500) << "the start goes on";

    root->Quit();
    EXPECT_TRUE(read(QStringLiteral("ZebekSuiteOptions.unreadable.xml"))
                    .contains("<ReplayCount>7</ReplayCount>"))
        << "what was not read is not lost";
}

TEST_F(clsOptionsTest, AMalformedFileIsReplacedAtTheNextSaveOnlyAndKeptBeside)
{
    const QByteArray broken = "<options><ReplayCount>9</ReplayCount>";
    write(FileName, broken);
    QFile::setPermissions(path(FileName), QFile::ReadOwner | QFile::WriteOwner);
    write(QStringLiteral("ZebekSuiteOptions.unreadable.xml"), "an older one");
    root->Start();
    EXPECT_TRUE(fake.boxes.boxes.empty());
    EXPECT_EQ(root->Options()->ReplayCount(), 50);
    EXPECT_EQ(read(FileName), broken);

    fake.files.failAt = FailingFiles::Always;
    root->Options()->Save();
    EXPECT_EQ(read(FileName), broken) << "a save that fails leaves the old file in place";
    QFile::remove(path(QStringLiteral("ZebekSuiteOptions.unreadable-2.xml")));
    fake.files.failAt = 0;

    root->Quit();
    EXPECT_TRUE(read(FileName).contains("<ReplayCount>50</ReplayCount>"));
    for (const QString &name : {FileName, QStringLiteral("ZebekSuiteOptions.unreadable-2.xml")}) {
        EXPECT_EQ(QFile::permissions(path(name)) & QFile::ReadOther, QFile::Permissions())
            << "it may hold a password";
    }
    EXPECT_EQ(read(QStringLiteral("ZebekSuiteOptions.unreadable.xml")), "an older one");
    EXPECT_EQ(read(QStringLiteral("ZebekSuiteOptions.unreadable-2.xml")), broken);
}

TEST_F(clsOptionsTest, WithoutTheXmlLibraryNothingIsReadOrSaved)
{
    root->Start();
    writeOptions("<ReplayCount>9</ReplayCount>");
    const QByteArray before = read(FileName);
    clsOptions options(false);
    options.Save();
    ASSERT_EQ(fake.boxes.boxes.size(), 1U);
    EXPECT_EQ(fake.boxes.boxes.front().style, 16);
    EXPECT_EQ(fake.boxes.boxes.front().text,
              QStringLiteral("An error has occured in Class_Initialize of Options (Root Object):"
                             "\r\n\r\n    0 : Unable to initialize MSXML. The options file cannot "
                             "be loaded, defaults will be used, no preferences will be saved"));
    EXPECT_EQ(options.ReplayCount(), 100);
    EXPECT_EQ(options.AdminUserName(), QStringLiteral("Admin"));
    EXPECT_FALSE(options.FindGRServer());
    EXPECT_EQ(read(FileName), before);
}
