#include "platform/CodePage.h"
#include "web/WebTest.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

using clsWebSiteTest = WebTest;

TEST_F(clsWebSiteTest, AnswersByteForByte)
{
    startSite("<ServerRunningGif>http://i/&#13;&#10;go.gif</ServerRunningGif>"
              "<ServerCrashGif>http://i/crash.gif</ServerCrashGif>");
    writeReplay(u"a b.rpf"_s, QByteArray("\0\xFF\r\n", 4));
    const QByteArray redirect = "HTTP/1.1  307 Temporary Redirect\r\nLocation: ";
    EXPECT_EQ(get("/ServerStatus.gif"), redirect + "http://i/go.gif\r\n\r\n");
    server().uctlServerStatus.setStatus(ServerQueryStatus::Dead);
    EXPECT_EQ(get("/ServerS"), redirect + "http://i/crash.gif\r\n\r\n");
    server().uctlServerStatus.setStatus(ServerQueryStatus::Responding);
    server().Disconnect();
    EXPECT_EQ(get("/ServerS"), redirect + "http://i/crash.gif\r\n\r\n");

    EXPECT_EQ(
        get("/GETFILEsecret/a%20b.rpf"),
        QByteArray("HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n\r\n\0\xFF\r\n\r\n\r\n", 53));
    EXPECT_EQ(get("/GETFILESecret/a%20b.rpf"), "Access Denied");
    writeReplay(u"ü.rpf"_s, "umlaut");
    for (const char *name : {"%FC", "%C3%BC", "\xFC"}) { // as others may write it
        EXPECT_TRUE(get(QByteArray("/GETFILEsecret/") + name + ".rpf").contains("umlaut")) << name;
    }
    // There is no log yet: no answer, and a log afterwards.
    EXPECT_EQ(send("GET /Error HTTP/1.1\r\nHost: a\r\n\r\n")->bytesAvailable(), 0);
    EXPECT_EQ(lastRecord(), u"Website|ParseRequest|Root Object|53"_s);
    for (const auto &[target, type] : {std::pair("/Error", "XML"), {"/ErrorText", "plain"}}) {
        EXPECT_EQ(get(target), "HTTP/1.1 200 OK\r\nContent-Type: text/"_ba + type + "\r\n\r\n" +
                                   read(ErrorLog) + "\r\n\r\n");
    }
    for (const char *other : {"/", "/Login/", "/Errors", "/CNN2", "/index.html", "/getfile"}) {
        EXPECT_EQ(get(other), page(PageKey::PublicStatus)) << other;
    }
}

TEST_F(clsWebSiteTest, AWrongLogInOpensNothingAndChangesNothingOnAnyRoute)
{
    startSite();
    writeReplay(u"a.rpf"_s, "x");
    const QByteArray options = read(u"options.xml"_s);
    const std::pair<const char *, const char *> posts[] = {
        {"/OpenMods", ""},
        {"/EditMod", "modname=%5Cmods%5Cdesert&ActionButton=++Activate++"},
        {"/AdminMenu", "AdminMenu=Main"},
        {"/logon", ""},
        {"/DeleteReplays", "DELFILEa.rpf=on"},
        {"/UpdateAdminReplaysConfig", "ReplayCount=7"},
        {"/UpdateAdminServerControlConfig", "SubmitType=Update&Timeout=7"},
        {"/UpdateAdminServerControlConfig", "SubmitType=Start+Server"},
        {"/UpdateAdminServerOptionsConfig", "ServerName=X"},
        {"/UpdateAdminSystemOptionsConfig", "AdminPW=x"},
        {"/UpdateAdminStatusOptionsConfig", "ServerGo=x"},
        {"/GETFILEsecret/a.rpf", ""},
        {"/elsewhere", ""}};
    for (const auto &[target, fields] : posts) {
        for (const QByteArray &request :
             {postRequest(target, fields, "Secret"), postRequest(target, fields, ""),
              QByteArray("POST ") + target + " H\r\nH: a\r\n\r\n" + "UserName=admin&PW=secret&" +
                  fields}) {
            EXPECT_TRUE(ask(request).contains("Sorry, your login information is incorrect"))
                << target;
        }
    }
    EXPECT_EQ(read(u"Replays/a.rpf"_s), "x");
    EXPECT_EQ(read(u"options.xml"_s), options);
    EXPECT_EQ(read(u"modsset.txt"_s), "");
    EXPECT_FALSE(server().Connected());
    EXPECT_EQ(root->Options()->AdminPassword(), u"secret"_s);
    EXPECT_EQ(root->Options()->ReplayCount(), 50);
    EXPECT_EQ(recordCount(), 0);

    // Without a name or a password there is no administrator, whatever is posted.
    for (const auto &[user, password] : {std::pair(u"Admin"_s, u""_s), {u""_s, u"secret"_s}}) {
        root->Options()->AdminUserName.Let(user);
        root->Options()->AdminPassword.Let(password);
        EXPECT_TRUE(
            ask("POST /logon H\r\n\r\nUserName=" + user.toLatin1() + "&PW=" + password.toLatin1())
                .contains("Sorry"));
        EXPECT_EQ(get("/GETFILE" + password.toLatin1() + "/a.rpf"), "Access Denied");
    }
}

TEST_F(clsWebSiteTest, StoresFormsAndTellsWhatItRefuses)
{
    startSite();
    clsOptions &options = *root->Options();
    EXPECT_TRUE(post("/UpdateAdminServerControlConfig",
                     "SubmitType=Update&Pollingfreq=-1&Timeout=65&StartupTimeout=9.5&"
                     "CMDLine=-x+%22y%22")
                    .contains("Please enter a valid number for the Polling Frequency (0-65535)<br>"
                              "Please enter a valid number for the server time out (0-64)<br>"));
    EXPECT_EQ(options.ServerPollingFrequency(), 3000);
    EXPECT_EQ(options.ServerStartupTimeout(), 10);
    EXPECT_EQ(options.ServerCommandLineArgs(), u"-x \"y\""_s);
    EXPECT_TRUE(post("/UpdateAdminReplaysConfig", "archiveReplays=on")
                    .contains("Please enter a valid number for the replay count<br>"));
    const QByteArray system = "/UpdateAdminSystemOptionsConfig";
    for (const char *form : {"AdminUN=Admin&StartWebServer=on", "AdminPW=x"}) { // or cut forms
        EXPECT_TRUE(post(system, form).contains("user name and a password. Nothing was changed"));
    }
    EXPECT_EQ(options.AdminUserName() + options.AdminPassword(), u"Adminsecret"_s);
    EXPECT_TRUE(post(system, "AdminUN=Admin&AdminPW=new&StartWebServer=on")
                    .contains("name=\"PW\" value=\"new\""))
        << "so that its menu works";
    EXPECT_TRUE(page(PageKey::AdminMain).contains("name=\"PW\" value=\"new\""));
    EXPECT_EQ(recordCount(), 0);
}

TEST_F(clsWebSiteTest, ChangesTheGamesFilesOnlyWhileNoServerIsHeld)
{
    startSite();
    write(u"options.xml"_s, read(u"options.xml"_s).replace("<MOTD/>", "<MOTD>m</MOTD>"));
    EXPECT_TRUE(page(PageKey::AdminServerOptions).contains("value=\"m\""));
    QDir(directory.path()).mkpath(u"Mods/Urban"_s);
    const QByteArray update = "ServerName=abcdefghijklmnopqrstuvwxy&Synch=x&JoinPort=65536&"
                              "AnnouncePort=0&RecordGame=on&RAPassword=p";
    const QByteArray activate = "modname=%5CMODS%5Curban&ActionButton=++Activate++";
    const QByteArray answer = post("/UpdateAdminServerOptionsConfig", update);
    const QByteArray number =
        "Please enter a valid number for the game synch. time out (0-65535)<br>";
    EXPECT_TRUE(answer.contains(
        "Server name truncated to max 20 characters (abcdefghijklmnopqrst)<br>" + number + number));
    const QByteArray options = read(u"options.xml"_s);
    for (const char *text : {"<MPGameName>abcdefghijklmnopqrst<", "<MOTD/>", "<JoinPort>1<",
                             "<RecordGame>TRUE<", "<BehindFirewall>FALSE<", "<AnnouncePort>0<"}) {
        EXPECT_TRUE(options.contains(text)) << text;
    }
    fake.files.failAt = FailingFiles::Always;
    EXPECT_EQ(post("/EditMod", activate), "An Error has occured. Please check the log");
    fake.files.failAt = 0;
    const QByteArray edited = post("/EditMod", activate); // before the page is looked at
    EXPECT_EQ(edited, page(PageKey::AdminModList));
    EXPECT_TRUE(read(u"modsset.txt"_s).endsWith("\r\n\"\\mods\\urban\"\r\n"));
    const QByteArray list = read(u"modsset.txt"_s);

    server().StartGRServer(false);
    EXPECT_TRUE(post("/UpdateAdminServerOptionsConfig", "ServerName=y")
                    .contains("You cannot update the server options while the server is running."));
    EXPECT_TRUE(post("/EditMod", QByteArray(activate).replace("++Activate++", "Deactivate"))
                    .startsWith("Please stop the GR server when attempting"));
    EXPECT_EQ(read(u"options.xml"_s), options);
    EXPECT_EQ(read(u"modsset.txt"_s), list);
    server().StopGRServer();

    QFile::remove(path(u"options.xml"_s));
    EXPECT_TRUE(post("/UpdateAdminServerOptionsConfig", update)
                    .contains("An Error has occured. Please check the log"));
    EXPECT_EQ(lastRecord(), u"Website|Update_ServerOptionsConfig|Root Object|75"_s);
}

TEST_F(clsWebSiteTest, NoNameReachesAFileOutsideTheReplayFolder)
{
    startSite();
    const auto files = [this] {
        QStringList names;
        for (QDirIterator all(directory.path(), QDir::Files | QDir::Hidden | QDir::System,
                              QDirIterator::Subdirectories);
             all.hasNext();) {
            names.append(all.next());
        }
        names.removeOne(path(ErrorLog));
        names.sort();
        return names;
    };
    for (const QString &folder : {u"Replays/inner"_s, u"Replays2"_s}) {
        QDir(directory.path()).mkpath(folder);
    }
    for (const auto name :
         {"Replays/a.rpf"_L1, "Replays/inner/a.rpf"_L1, "a.rpf"_L1, "Replays2/a.rpf"_L1}) {
        write(name, "kept");
    }
#ifndef Q_OS_WIN // where there are no such files
    for (const auto name : {"NUL.rpf"_L1, "a.rpf:s"_L1, "con"_L1}) {
        writeReplay(name, "kept");
    }
    QFile::link(path(u"a.rpf"_s), path(u"Replays/out.rpf"_s));
    QFile::link(path(u"Replays2"_s), path(u"Replays/folder.rpf"_s));
#endif
    const QStringList before = files();
    // clang-format off
    const QByteArray names[] = {
        "", "..", ".", "../a.rpf", "..\\a.rpf", "%2E%2E/a.rpf", "..%2Fa.rpf", "%252e%252e%252fa.rpf",
        "../Replays2/a.rpf", "./a.rpf", "inner/a.rpf", "inner\\a.rpf", "/a.rpf",
        directory.path().toUtf8() + "/a.rpf", "C:a.rpf", "C:\\a.rpf", R"(\\host\share\a.rpf)",
        "*.rpf", "?.rpf", "a.rp<", "\"a.rpf", "a.rpf:s", "NUL.rpf", "con", "COM1.rpf", "out.rpf",
        "folder.rpf", "folder.rpf/a.rpf", QByteArray("a.rpf\0", 6),
        QByteArray("../a.rpf\0.rpf", 13), "a.rpf\n", "inner", "missing.rpf"};
    // clang-format on
    for (const QByteArray &name : names) {
        const QByteArray request = "GET /GETFILEsecret/" + name + " HTTP/1.1\r\nHost: a\r\n\r\n";
        EXPECT_FALSE(send(request)->readAll().contains("kept")) << name.toStdString();
        for (const QByteArray &field : {name, name.toPercentEncoding()}) {
            const QByteArray told = post("/DeleteReplays", "DELFILE" + field + "=on");
            EXPECT_TRUE(told.contains(" Replays Files Deleted")) << name.toStdString();
        }
        EXPECT_EQ(files(), before) << name.toStdString();
    }
    EXPECT_TRUE(post("/DeleteReplays", "DELFILEa.rpf=on&DELFILEinner=on&DELFILEgone.rpf=on")
                    .contains("2 Replays Files Deleted"));
    EXPECT_FALSE(QFile::exists(path(u"Replays/a.rpf"_s)));
    writeReplay(u"ä b.rpf"_s, "x");
    EXPECT_TRUE(post("/DeleteReplays", "DELFILE%E4+b.rpf=on").contains("1 Replays Files"));
    EXPECT_FALSE(QFile::exists(path(u"Replays/ä b.rpf"_s)));
}

TEST_F(clsWebSiteTest, ThePublicPageIsBuiltOncePerPeriodAndShowsWhatTheServerTold)
{
    startSite("<AutoStartGRServer>True</AutoStartGRServer>");
    const auto text = [](const QByteArray &value) -> QByteArray {
        return static_cast<char>(value.size() + 1) + QByteArray(3, '\0') + value + '\0';
    };
    QUdpSocket game;
    ASSERT_TRUE(game.bind(QHostAddress(QHostAddress::LocalHost), 2348));
    server().uctlServerStatus.Refresh();
    ASSERT_TRUE(QTest::qWaitFor([&] { return game.hasPendingDatagrams(); }));
    game.writeDatagram(game.receiveDatagram().makeReply(
        QByteArray(25, 'x') + text("<b>\xE4</b>") + text("map") + text("mission") + text("type") +
        "\0\0\x8\0\0\0\x2\0\0\0"_ba + text("J\xE4ger") + text("[ZS]Otter") + QByteArray(17, 'x') +
        text("1.4") + text("mods") + "\0....\x3......."_ba + text("motd") + "....\0\0\x16\x44"_ba));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return server().Status() == ServerQueryStatus::Responding; }));
    fake.clock.advance(3000);
    const QByteArray first = get("/");
    EXPECT_EQ(platform::fromCodePage(first.mid(first.indexOf("<body>")))
                  .remove(QRegularExpression(u"<[^>]*>"_s))
                  .simplified(),
              u"ä motd Version: 1.4 Active Mods: Map:map Mission:mission Game Type:type "
              "Game Length:10:00 Remaining:Joining Players (2/8) Jäger [ZS]Otter"_s);
    server().uctlServerStatus.setName(u"other"_s);
    EXPECT_EQ(get("/"), first);
    fake.clock.advance(3000);
    EXPECT_TRUE(get("/").contains("<td class=\"title\">other</td>"));
    server().uctlServerStatus.setStatus(ServerQueryStatus::Dead);
    fake.clock.advance(3000);
    EXPECT_TRUE(get("/").contains(">This Ghost Recon server is not running<"));
}
