#include "platform/CodePage.h"
#include "server/clsMods.h"
#include "web/WebTest.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

using clsWebSiteTest = WebTest;

TEST_F(clsWebSiteTest, AnswersEveryGetByteForByte)
{
    startSite("<ServerRunningGif>http://i/&#13;&#10;go.gif</ServerRunningGif>"
              "<ServerCrashGif>http://i/crash.gif</ServerCrashGif>");
    writeReplay(u"a b.rpf"_s, QByteArray("\0\xFF\r\n", 4));
    const QByteArray redirect = "HTTP/1.1  307 Temporary Redirect\r\nLocation: ";
    EXPECT_EQ(get("/ServerStatus.gif"), redirect + "http://i/go.gif\r\n\r\n");
    server().uctlServerStatus.setStatus(ServerQueryStatus::Dead);
    EXPECT_EQ(get("/ServerS"), redirect + "http://i/crash.gif\r\n\r\n");
    fake.system.end(server().Process()->PID());
    server().uctlServerStatus.setStatus(ServerQueryStatus::Responding);
    EXPECT_EQ(get("/ServerS"), redirect + "http://i/crash.gif\r\n\r\n");
    server().Disconnect();
    EXPECT_EQ(get("/ServerS"), redirect + "http://i/crash.gif\r\n\r\n");
    EXPECT_TRUE(get("/CNN").startsWith(redirect + "http"));

    EXPECT_EQ(
        get("/GETFILEsecret/a%20b.rpf"),
        QByteArray("HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n\r\n\0\xFF\r\n\r\n\r\n", 53));
    EXPECT_EQ(get("/GETFILESecret/a%20b.rpf"), "Access Denied");
    writeReplay(u"ü.rpf"_s, "umlaut");
    for (const char *name : {"%FC", "%C3%BC", "\xFC"}) { // as others may write it
        EXPECT_TRUE(get(QByteArray("/GETFILEsecret/") + name + ".rpf").contains("umlaut")) << name;
    }
    for (const QString &name : {u"Zürich #1 50%.rpf"_s, u"100%41 %25.rpf"_s}) {
        root->Options()->AdminPassword.Let(name.startsWith(u'Z') ? u"s#%?/ü 41"_s : u"100%"_s);
        writeReplay(name, "content");
        root->RefreshPages(PageKey::AdminReplays);
        const QByteArray shown = page(PageKey::AdminReplays);
        const qsizetype end = shown.indexOf(R"(" target="_blank">)" + platform::toCodePage(name));
        const qsizetype start = shown.lastIndexOf('"', end - 1) + 1;
        EXPECT_TRUE(get('/' + shown.mid(start, end - start)).contains("content"))
            << name.toStdString();
        EXPECT_EQ(get("/GETFILEx" + shown.mid(start + 7, end - start)), "Access Denied");
    }
    // There is no log yet: no answer, and a log afterwards.
    EXPECT_EQ(send("GET /Error HTTP/1.1\r\nHost: a\r\n\r\n")->bytesAvailable(), 0);
    EXPECT_EQ(lastRecord(), u"Website|ParseRequest|Root Object|53"_s);
    for (const auto &[target, type] : {std::pair("/Error", "XML"), {"/ErrorText", "plain"}}) {
        EXPECT_EQ(get(target), "HTTP/1.1 200 OK\r\nContent-Type: text/"_ba + type + "\r\n\r\n" +
                                   read(ErrorLog) + "\r\n\r\n");
    }
    EXPECT_TRUE(get("/Login").contains("<form name=\"logon\" method=\"POST\" action=\"logon\">"));
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

/// The menu's entry, title, headings, fields with their limits and sizes, and buttons, in order.
TEST_F(clsWebSiteTest, EveryPageOfTheAdministrationIsMadeOfItsOwnPieces)
{
    startSite();
    const QRegularExpression piece(
        u"(?:menubutton current[^>]*value|id|maxlength|size|submit\"(?: name=\"S\\w*\")? value)=\""
        "([^\"]*)|(?:title|Title|heading)\"[^>]*>([^<]+)"_s);
    const std::pair<PageKey, const char *> rows[] = {
        {PageKey::AdminMain, "Main|MAIN"},
        {PageKey::AdminReplays, "Replays|REPLAYS|Configuration|archiveReplays|SkipBlankReplays|"
                                "ReplayCount|5|6|Update|Available Replays|Delete"},
        {PageKey::AdminReplaysUpdate, "Replays|REPLAYS"},
        {PageKey::AdminServerControl,
         "Server Control|Server Control|Process Status|Startup Options|AutoStartGRServer|"
         "UserCMDLINE|CMDLine|Restart Options|AutoRestartGRServer|AutoRestartOnProcessStop|"
         "Pollingfreq|5|6|Timeout|2|3|StartupTimeout|2|3|Update|Server Control|"
         "Start Server|Stop Server"},
        {PageKey::AdminServerControlUpdate, "Server Control|SERVER CONTROL"},
        {PageKey::AdminServerOptions,
         "Server Options|Server Options|General|ServerName|20|21|UserMOTD|MOTD|100|100|"
         "AllowRemoteAccess|RAPassword|12|13|RecordGame|Network Options|BehindFireWall|"
         "Synch|8|9|JoinPort|8|9|AnnouncePort|8|9|Active Mods|Update"},
        {PageKey::AdminServerOptionsUpdate, "Server Options|SERVER OPTIONS"},
        {PageKey::AdminSystemOptions,
         "System Status|System Options|System Settings|StartOnStartup|ScanForProcesses|"
         "Web Server Settings|StartWebServer|15|7|AdminUN|16|AdminPW|16|Update"},
        {PageKey::AdminSystemOptionsUpdate, "System Status|SYSTEM OPTIONS"},
        {PageKey::AdminStatusOptions,
         "Status Options|Status Options|ServerGo|120|ServerCrash|120|Update"},
        {PageKey::AdminStatusOptionsUpdate, "Status Options|STATUS OPTIONS"},
        {PageKey::AdminModList, "Mods List|Active Mods|Available Mods"}};
    for (const auto &[key, pieces] : rows) {
        QStringList found;
        for (const auto &match : piece.globalMatch(QString::fromLatin1(page(key)))) {
            found.append(match.captured(match.lastCapturedIndex()));
        }
        EXPECT_EQ(found.join(u'|').toStdString(), pieces);
        EXPECT_EQ(page(key).contains("action=\"Update"), found.contains(u"Update"_s)) << pieces;
    }
}

TEST_F(clsWebSiteTest, StoresFormsAndTellsWhatItRefuses)
{
    startSite();
    clsOptions &options = *root->Options();
    const auto told = [&](const QByteArray &target, const QByteArray &fields, PageKey key) {
        const QByteArray before = page(key, u"|"_s);
        const QByteArray answer = post(target, fields);
        const qsizetype bar = before.indexOf('|');
        EXPECT_TRUE(answer.startsWith(before.left(bar))) << target.toStdString();
        return answer.mid(bar, answer.size() + 1 - before.size());
    };
    EXPECT_EQ(told("/UpdateAdminServerControlConfig",
                   "SubmitType=Update&Pollingfreq=-1&Timeout=65&StartupTimeout=9.5&"
                   "CMDLine=-x+%22y%22&AutoRestartGRServer=on",
                   PageKey::AdminServerControlUpdate),
              "Please enter a valid number for the Polling Frequency (0-65535)<br>"
              "Please enter a valid number for the server time out (0-64)<br>");
    EXPECT_EQ(options.ServerPollingFrequency(), 3000);
    EXPECT_EQ(options.ServerStartupTimeout(), 10);
    EXPECT_EQ(options.ServerCommandLineArgs(), u"-x \"y\""_s);
    EXPECT_TRUE(options.AutoRestartGRServer());
    EXPECT_FALSE(options.AutoStartGRServer());
    EXPECT_TRUE(page(PageKey::AdminServerControl).contains("value=\"10\""));
    EXPECT_EQ(told("/UpdateAdminServerControlConfig",
                   "SubmitType=Update&Pollingfreq=65535&Timeout=64&StartupTimeout=0",
                   PageKey::AdminServerControlUpdate),
              "Configuration Updated");

    EXPECT_EQ(told("/UpdateAdminReplaysConfig", "archiveReplays=on&SkipBlankReplays=yes",
                   PageKey::AdminReplaysUpdate),
              "Please enter a valid number for the replay count<br>");
    EXPECT_TRUE(options.RecordReplays());
    EXPECT_FALSE(options.SkipBlankReplays());
    for (const char *form : {"AdminUN=Admin&StartWebServer=on", "AdminPW=x"}) { // or cut forms
        EXPECT_EQ(told("/UpdateAdminSystemOptionsConfig", form, PageKey::AdminSystemOptionsUpdate),
                  "Please enter a user name and a password. Nothing was changed<br>");
    }
    EXPECT_EQ(options.AdminUserName() + options.AdminPassword(), u"Adminsecret"_s);
    EXPECT_TRUE(options.FindGRServer());
    const QByteArray answer =
        post("/UpdateAdminSystemOptionsConfig", "AdminUN=Admin&AdminPW=new&StartWebServer=on");
    EXPECT_TRUE(answer.contains("Configuration Updated"));
    EXPECT_TRUE(answer.contains("name=\"PW\" value=\"new\"")) << "so that its menu works";
    EXPECT_FALSE(options.FindGRServer());
    EXPECT_TRUE(page(PageKey::AdminSystemOptions).contains("name=\"PW\" value=\"new\""));
    EXPECT_TRUE(page(PageKey::AdminMain).contains("name=\"PW\" value=\"new\""));
    EXPECT_EQ(recordCount(), 0);
}

TEST_F(clsWebSiteTest, ChangesTheGamesFilesOnlyWhileNoServerIsHeld)
{
    startSite();
    write(u"options.xml"_s, read(u"options.xml"_s).replace("<MOTD/>", "<MOTD>m</MOTD>"));
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
    EXPECT_TRUE(page(PageKey::AdminServerOptions).contains("value=\"abcdefghijklmnopqrst\""));
    EXPECT_TRUE(page(PageKey::AdminServerOptions).contains("Urban"));
    EXPECT_TRUE(post("/OpenMods", {}).contains("Urban"));
    fake.files.failAt = FailingFiles::Always;
    EXPECT_EQ(post("/EditMod", activate), "An Error has occured. Please check the log");
    fake.files.failAt = 0;
    const QByteArray edited = post("/EditMod", activate);
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
    EXPECT_TRUE(page(PageKey::AdminServerOptions).contains("You cannot update server options"));
    EXPECT_FALSE(page(PageKey::AdminServerOptions).contains("name=\"SubmitType\""));
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
    EXPECT_TRUE(first.contains("<td class=\"title\"><b>\xE4</b></td>"));
    EXPECT_EQ(platform::fromCodePage(first.mid(first.indexOf("<body>")))
                  .remove(QRegularExpression(u"<[^>]*>"_s))
                  .simplified(),
              u"ä motd Version: 1.4 Active Mods: Map:map Mission:mission Game Type:type "
              "Game Length:10:00 Remaining:Joining Players (2/8) Jäger [ZS]Otter"_s);
    EXPECT_TRUE(
        first.contains("<td class=\"Playerslabel\">Players (2/8)</td></tr>\n<tr><td>J\xE4ger"
                       "</td></tr>\n<tr><td>[ZS]Otter</td></tr>\n</table></td>\n"));
    server().uctlServerStatus.setName(u"other"_s);
    EXPECT_EQ(get("/"), first);
    fake.clock.advance(3000);
    EXPECT_TRUE(get("/").contains("<td class=\"title\">other</td>"));
    server().uctlServerStatus.setStatus(ServerQueryStatus::Dead);
    fake.clock.advance(3000);
    const QByteArray notRunning =
        "<td align=\"center\">This Ghost Recon server is not running</td>";
    EXPECT_TRUE(get("/").contains(notRunning));
    server().Disconnect();
    root->WebSite()->Page(PageKey::PublicStatus).setStale(true);
    EXPECT_TRUE(get("/").contains(notRunning));
}
