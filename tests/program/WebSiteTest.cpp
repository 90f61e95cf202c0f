#include "program/GameDirectory.h"

#include <QTcpSocket>

#include <gtest/gtest.h>

static QByteArray ask(const QByteArray &request)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, 80);
    socket.waitForConnected();
    socket.write(request);
    EXPECT_TRUE(waitUntil([&] { return socket.state() == QTcpSocket::UnconnectedState; },
                          StartMilliseconds));
    return socket.readAll();
}

static QByteArray post(const QByteArray &target, const QByteArray &fields)
{
    return ask("POST " + target + " HTTP/1.1\r\nHost: a\r\n\r\nUserName=a&PW=secret&" + fields);
}

/// In a browser's place: the status page, and the administration from the stop of the server on.
TEST(WebSite, ShowsTheServerAndChangesTheFilesOfTheToolAndTheGame)
{
    GameDirectory game;
    QDir(game.path()).mkpath(u"Mods/Ärger"_s);
    game.writeOptions("<AllowRemoteAccess>True</AllowRemoteAccess><AdminUserName>a</AdminUserName>"
                      "<AdminPassword>secret</AdminPassword><ServerStartupTimeout>1"
                      "</ServerStartupTimeout>",
                      "-server-name Public");
    game.startTool();
    ASSERT_TRUE(waitUntil([&] { return game.events("query") > 1; }, StartMilliseconds));
    EXPECT_TRUE(
        waitUntil([] { return ask("GET / HTTP/1.1\r\nHost: a\r\n\r\n").contains(">Public</td>"); },
                  StartMilliseconds))
        << ask("GET / HTTP/1.1\r\nHost: a\r\n\r\n").constData() << game.errorLog().constData();

    EXPECT_TRUE(post("/UpdateAdminServerControlConfig", "SubmitType=Stop+Server")
                    .contains("Process stop successful"));
    EXPECT_TRUE(waitUntil([&] { return game.server() == 0; }, StartMilliseconds));
    EXPECT_TRUE(
        post("/UpdateAdminServerOptionsConfig", "Synch=7&JoinPort=8&AnnouncePort=9&RecordGame=on")
            .contains("Configuration Updated"));
    EXPECT_EQ(game.read(u"options.xml"_s),
              "<game><JoinPort>8</JoinPort><AnnouncePort>9</AnnouncePort><GameSynchTimeout>7"
              "</GameSynchTimeout><RemoteServerAccess>FALSE</RemoteServerAccess><RecordGame>TRUE"
              "</RecordGame><BehindFirewall>FALSE</BehindFirewall><MPGameName/><MOTD/>"
              "<RemoteServerPasswd/></game>\n");
    post("/EditMod", "modname=%5CMods%5C%C4rger&ActionButton=++Activate++");
    EXPECT_EQ(game.read(u"modsset.txt"_s),
              "// MODS SETTINGS - LIST OF MODS ACTIVE ON THIS SYSTEM\r\n\"\\mods\\\xE4rger\"\r\n");
    EXPECT_TRUE(post("/UpdateAdminReplaysConfig", "ReplayCount=7").contains("Configuration"));

    platform::LinuxWindows windows;
    windows.postClose(waitForWindow(windows, u"Zebek Suite"_s));
    ASSERT_TRUE(game.tool().waitForFinished(StartMilliseconds));
    EXPECT_EQ(game.tool().exitCode(), 0);
    EXPECT_TRUE(game.read(u"ZebekSuiteOptions.xml"_s).contains("<ReplayCount>7</ReplayCount>"));
    EXPECT_EQ(game.errorLog(), QByteArray());
}
