#include "core/basSystem.h"

#include "platform/SystemServices.h"
#include "support/RootTest.h"

using basSystemTest = ServicesTest;

TEST_F(basSystemTest, SwitchesTheStartAtLogOnAndReportsFailuresOnce)
{
    root->Start();
    const clsOptions &options = *root->Options();
    EXPECT_FALSE(options.AutoRunOnStartup());
    EXPECT_TRUE(SetRunOnStartup(true));
    EXPECT_TRUE(SetRunOnStartup(true));
    EXPECT_EQ(fake.autostart.entry, rootDirectory() + u"ZebekSuite.exe"_s);
    fake.autostart.entry = u"anything else, put there by hand"_s;
    EXPECT_TRUE(options.AutoRunOnStartup());
    options.AutoRunOnStartup.Let(false);
    EXPECT_FALSE(fake.autostart.entry);
    EXPECT_TRUE(fake.boxes.boxes.empty());

    EXPECT_FALSE(SetRunOnStartup(false));
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(lastRecord(), u"System Module|SetRunOnStartup|None|2"_s);
    EXPECT_TRUE(read(ErrorLog).contains(platform::systemMessage(2).trimmed().toUtf8()));
    EXPECT_EQ(fake.boxes.boxes,
              QStringList{u"Do'h!!|16|An error has occured in SetRunOnStartup of System Module (-):"
                          "\r\n\r\n    2 : "_s +
                          platform::systemMessage(2)});

    fake.autostart.entry = u"there"_s;
    fake.autostart.changeFails = 5;
    EXPECT_TRUE(SetRunOnStartup(false));
    fake.autostart.queryFails = 5;
    EXPECT_FALSE(GetRunOnStartup());
    EXPECT_EQ(lastRecord(), u"System Module|GetRunOnStartup|None|5"_s);
    EXPECT_EQ(recordCount(), 3);

    root->Quit();
    EXPECT_TRUE(read(OptionsFile).contains("<AutoRunOnStartup>True<"))
        << "the file keeps the value that it was loaded with";
}
