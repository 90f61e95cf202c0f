#include "server/clsOptionsXML.h"

#include "support/RootTest.h"

const QByteArray GameFile =
    "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\r\n<!-- ports -->\r\n<Options a=\"1\">\r\n"
    "  <x:JoinPort xmlns:x=\"x\">1</x:JoinPort>\r\n"
    "  <AnnouncePort>2347</AnnouncePort>\r\n  <JoinPort kind=\"udp\">2346</JoinPort>\r\n"
    "  <deep><MPGameName>M\xFCller\x80</MPGameName></deep>\r\n  <JoinPort>9</JoinPort>\r\n"
    "  <RecordGame>true</RecordGame><ShowFrameRate>2</ShowFrameRate>\r\n"
    "  <ReticuleColorR>300</ReticuleColorR><ReticuleColorG>x</ReticuleColorG>\r\n"
    "  <ReticuleColorB>5</ReticuleColorB>\r\n  <Untouched>a &amp; b</Untouched>\r\n"
    "  <IPAddress>10.0.0.50</IPAddress><IPAddress>10.0.0.5</IPAddress>\r\n"
    "  <IPAddress>10.0.0.5</IPAddress>\r\n</Options>\r\n";

class clsOptionsXMLTest : public ServicesTest
{
protected:
    clsOptionsXMLTest()
    {
        startIdle();
        QFile::remove(path(u"options.xml"_s));
    }
    const QString fileName = u"OPTIONS.XML"_s;
};

TEST_F(clsOptionsXMLTest, ReadsAndWritesTheFirstElementOfANameAndNothingElse)
{
    write(fileName, GameFile);
    clsOptionsXML options;
    ASSERT_TRUE(options.FileExists());
    EXPECT_THROW(options.AnnouncePort(), platform::Failure) << "nothing is loaded";
    options.Load();
    ASSERT_TRUE(options.IsLoaded());
    options.Save();
    EXPECT_EQ(read(fileName), GameFile);

    EXPECT_EQ(options.JoinPort(), 2346);
    EXPECT_EQ(options.MPGameName(), u"Müller€"_s);
    EXPECT_TRUE(options.RecordGame());
    EXPECT_TRUE(options.ShowFrameRate());
    EXPECT_EQ(options.MOTD(), QString());
    EXPECT_THROW(options.GameSynchTimeout(), platform::Failure);
    EXPECT_THROW(options.BehindFirewall(), platform::Failure);
    EXPECT_EQ(options.RetColor(), 255 + 5 * 65536);
    EXPECT_EQ(options.IFFRetColor(), 0);

    options.JoinPort.Let(80);
    options.RecordGame.Let(false);
    options.MOTD.Let(u"lost"_s);
    options.MPGameName.Let(u"<ß> 日"_s);
    options.RetColor.Let(64 + 256 * 128 + 65536 * 255);
    options.RemoveGRServer(u"10.0.0.5"_s);
    options.RemoveGRServer(u"\"] | //*[. = \"2347"_s);
    options.Save();
    QByteArray expected = GameFile;
    expected.replace(">2346<", ">80<")
        .replace(">true<", ">FALSE<")
        .replace("M\xFCller\x80", "&lt;\xDF&gt; &#26085;")
        .replace(">300<", ">64<")
        .replace("x</ReticuleColorG", "128</ReticuleColorG")
        .replace(">5</R", ">255</R")
        .replace("50</IPAddress><IPAddress>10.0.0.5</IPAddress>", "50</IPAddress><IPAddress/>");
    EXPECT_EQ(read(fileName), expected);
}

TEST_F(clsOptionsXMLTest, AReadOnlyFileBecomesWritableAndOtherwiseKeepsItsPermissions)
{
    write(fileName, GameFile);
    const QFile::Permissions readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    QFile::setPermissions(path(fileName), readable | QFile::WriteOwner);
    const QFile::Permissions writable = QFile::permissions(path(fileName));
    QFile::setPermissions(path(fileName), readable);
    ASSERT_NE(QFile::permissions(path(fileName)), writable);
    clsOptionsXML options;
    EXPECT_EQ(QFile::permissions(path(fileName)), writable);
    options.Load();
    options.Save();
    EXPECT_EQ(QFile::permissions(path(fileName)), writable);
}

TEST_F(clsOptionsXMLTest, AMissingOrMalformedFileIsNotLoadedAndAFailedSaveReachesTheCaller)
{
    clsOptionsXML missing;
    EXPECT_FALSE(missing.FileExists());
    missing.Load();
    missing.MOTD.Let(u"x"_s);
    missing.RemoveGRServer(u"x"_s);
    missing.Save();
    EXPECT_FALSE(missing.IsLoaded());
    EXPECT_EQ(missing.MOTD(), QString());
    EXPECT_FALSE(QFile::exists(path(u"options.xml"_s)));

    write(fileName, "<a><b></a>");
    missing.Load();
    EXPECT_FALSE(missing.IsLoaded());

    write(fileName, GameFile);
    clsOptionsXML &options = missing; // the file may come after the object
    options.Load();
    ASSERT_TRUE(options.IsLoaded());
    fake.files.failAt = FailingFiles::Always;
    EXPECT_THROW(options.Save(), platform::Failure);
    EXPECT_EQ(read(fileName), GameFile);
    EXPECT_EQ(recordCount(), 0);
}
