#pragma once

#include "support/ToolTest.h"
#include "web/clsWebSite.h"

#include <QTcpSocket>

/// Gives a test the tool with its web site on a port of this machine.
class WebTest : public ToolTest
{
protected:
    static constexpr quint16 Port = 8080;
    const QByteArray LogIn = "GET /Login HTTP/1.1\r\nHost: a\r\n\r\n";

    void startSite(const QByteArray &elements = "<AutoStartGRServer>False</AutoStartGRServer>")
    {
        startWith("<AllowRemoteAccess>True</AllowRemoteAccess><AdminUserName>Admin</AdminUserName>"
                  "<AdminPassword>secret</AdminPassword><RemoteAccessPort>8080</RemoteAccessPort>" +
                  elements);
        ASSERT_TRUE(root->GlobalForm()->WebServerRunning());
    }

    static void connectTo(QTcpSocket &client)
    {
        client.connectToHost(QHostAddress::LocalHost, Port);
        ASSERT_TRUE(client.waitForConnected());
    }
    static bool ended(const QTcpSocket &client)
    {
        return QTest::qWaitFor([&] { return client.state() == QTcpSocket::UnconnectedState; });
    }
    /// Lets everything that is on its way within this machine arrive and be handled.
    static void settle()
    {
        for (int round = 0; round < 30; ++round) {
            QCoreApplication::processEvents();
        }
    }
    /// A connection, and what it has sent, have been taken.
    static std::unique_ptr<QTcpSocket> send(const QByteArray &request)
    {
        auto client = std::make_unique<QTcpSocket>();
        connectTo(*client);
        client->write(request);
        settle();
        return client;
    }
    static std::vector<std::unique_ptr<QTcpSocket>> connectMany(int count)
    {
        std::vector<std::unique_ptr<QTcpSocket>> clients;
        while (count-- > 0) {
            clients.push_back(send({}));
        }
        return clients;
    }
    /// The whole answer to one request.
    static QByteArray ask(const QByteArray &request)
    {
        const auto client = send(request);
        EXPECT_TRUE(ended(*client)) << request.left(60).toStdString();
        return client->readAll();
    }
    static QByteArray get(const QByteArray &target)
    {
        return ask("GET " + target + " HTTP/1.1\r\nHost: a\r\n\r\n");
    }
    static QByteArray postRequest(const QByteArray &target, const QByteArray &fields,
                                  const QByteArray &password = "secret")
    {
        return "POST " + target + " HTTP/1.1\r\nHost: a\r\n\r\nUserName=Admin&PW=" + password +
               "&" + fields;
    }
    static QByteArray post(const QByteArray &target, const QByteArray &fields)
    {
        return ask(postRequest(target, fields));
    }
    QByteArray page(PageKey key, const QString &message = {}) const
    {
        return root->WebSite()->Page(key).HTML(message);
    }
    void writeReplay(const QString &name, const QByteArray &content) const
    {
        write(u"Replays/"_s + name, content);
    }
};
