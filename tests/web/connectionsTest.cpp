#include "support/system.h"
#include "web/ConnectionSocket.h"
#include "web/WebTest.h"

#include <QNetworkProxy>
#include <QTcpServer>

using ConnectionsTest = WebTest;

/// Linux's number of the socket that listens.
static QByteArray listeningSocket()
{
    QByteArray sockets;
    for (const auto table : {"/proc/self/net/tcp"_L1, "/proc/self/net/tcp6"_L1}) {
        QFile file(table);
        sockets += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    for (const QByteArray &row : sockets.split('\n')) {
        const QByteArrayList columns = row.simplified().split(' ');
        if (columns.value(1).endsWith(":1F90") && columns.value(3) == "0A") {
            return columns.value(9);
        }
    }
    return {};
}

TEST_F(ConnectionsTest, ListensOnlyWithALogInAndAsSoonAsThePortIsFree)
{
    startIdle();
    frmGlobal &form = *root->GlobalForm();
    clsOptions &options = *root->Options();
    const auto runsWith = [&](const QString &user, const QString &password, int port) {
        options.AdminUserName.Let(user);
        options.AdminPassword.Let(password);
        options.RemoteAccessPort.Let(port);
        form.StartWebServer();
        return form.WebServerRunning();
    };
    EXPECT_FALSE(runsWith({}, u"p"_s, Port));
    EXPECT_FALSE(runsWith(u"a"_s, {}, Port));
    EXPECT_FALSE(runsWith(u"a"_s, u"p"_s, 0));
    EXPECT_EQ(recordCount(), 0);
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::Any, Port));
    EXPECT_FALSE(runsWith(u"a"_s, u"p"_s, 70000));
    EXPECT_FALSE(runsWith(u"a"_s, u"p"_s, Port));
    options.RemoteAccessPort.Let(808); // as it is while another one is typed
    fake.clock.advance(30000);
    EXPECT_EQ(recordCount(), 2) << "one for each reason, not for each attempt";
    other.close();
    options.AdminPassword.Let({});
    fake.clock.advance(3000);
    EXPECT_FALSE(form.WebServerRunning());
    options.AdminPassword.Let(u"p"_s);
    fake.clock.advance(3000);
    EXPECT_TRUE(form.WebServerRunning());
    QTcpSocket open;
    connectTo(open);
    settle();
    form.StopWebServer();
    fake.clock.advance(3000);
    EXPECT_FALSE(form.WebServerRunning());
    open.write(LogIn);
    EXPECT_TRUE(ended(open));
    EXPECT_TRUE(open.readAll().contains("logon"));
}

TEST_F(ConnectionsTest, TheHundredAndFirstWaitsUnreadUntilOneEnds)
{
    startSite();
    const auto clients = connectMany(103);
    clients.at(100)->write(LogIn);
    QTcpSocket &finished = *clients.at(101); // with the rest of its data unread
    finished.write(LogIn + QByteArray(3000, 'x'));
    finished.flush();
    finishSending(finished.socketDescriptor());
    QTcpSocket &flooding = *clients.at(102);
    flooding.write("GET /" + QByteArray(qsizetype{64} * 1024 * 1024, 'x'));
    settle();
    EXPECT_GT(flooding.bytesToWrite(), 32 * 1024 * 1024);
    flooding.abort();
    EXPECT_EQ(clients.at(100)->bytesAvailable(), 0);
    clients.at(40)->write(LogIn);
    for (const std::size_t served : {40U, 100U, 101U}) {
        EXPECT_TRUE(ended(*clients.at(served)));
        EXPECT_EQ(clients.at(served)->readAll().count("</html>"), 1) << served;
    }
}

TEST_F(ConnectionsTest, SilentConnectionsMakePlaceAndThoseThatTakeNothingAreClosed)
{
    startSite();
    const QByteArray request = "GET /GETFILEsecret/large.rpf HTTP/1.1\r\nHost: a\r\n\r\n";
    writeReplay(u"large.rpf"_s, QByteArray(qsizetype{64} * 1024 * 1024, 'x'));
    auto clients = connectMany(103); // the last three wait
    clients.at(0)->setReadBufferSize(1);
    clients.at(0)->write(request);
    settle();
    fake.clock.advance(15000);
    clients.at(1)->write("HEAD / H\r\n\r\n"); // which is silent for less than the others
    settle();
    const auto &pool = root->GlobalForm()->webServer.wsckConnections;
    const auto ended = [&](std::size_t client) {
        settle();
        return clients.at(client)->state() == QTcpSocket::UnconnectedState;
    };
    fake.clock.advance(14999);
    EXPECT_FALSE(ended(2));
    fake.clock.advance(3000);
    EXPECT_TRUE(ended(2) && ended(3) && ended(4));
    EXPECT_FALSE(ended(1) || ended(5) || ended(99));
    for (std::size_t waiting = 100; waiting < 103; ++waiting) {
        clients.at(waiting)->write(LogIn);
        EXPECT_TRUE(WebTest::ended(*clients.at(waiting)));
        EXPECT_TRUE(clients.at(waiting)->readAll().contains("logon"));
    }

    fake.clock.advance(30000); // 60 s since the file was asked for
    settle();
    EXPECT_TRUE(pool.at(1)->isFree());
    EXPECT_FALSE(pool.at(2)->isFree() || pool.at(100)->isFree()) << "nobody waits";
}

TEST_F(ConnectionsTest, TheOneThatTakesItsAnswerForTheLongestMakesPlace)
{
    startSite();
    writeReplay(u"large.rpf"_s, QByteArray(qsizetype{64} * 1024 * 1024, 'x'));
    const auto reader = send({});
    fake.clock.advance(5000);
    reader->setReadBufferSize(1);
    reader->write("GET /GETFILEsecret/large.rpf HTTP/1.1\r\nHost: a\r\n\r\n");
    settle();
    fake.clock.advance(35000);
    reader->setReadBufferSize(0); // it takes some of it
    settle();
    reader->setReadBufferSize(1);
    const auto silent = connectMany(99);
    const auto visitor = send(LogIn);
    fake.clock.advance(24000);
    EXPECT_EQ(visitor->bytesAvailable(), 0);
    fake.clock.advance(4000);
    EXPECT_TRUE(ended(*visitor));
    EXPECT_TRUE(visitor->readAll().contains("logon"));
}

TEST_F(ConnectionsTest, AFormInPiecesIsOneRequest)
{
    startSite();
    const QByteArray body = "UserName=Admin&PW=secret&ReplayCount=7&x=" + QByteArray(4000, 'y');
    const QByteArray head = "POST /UpdateAdminReplaysConfig HTTP/1.1\r\nHost: a\r\n"
                            "content-length:  " +
                            QByteArray::number(body.size()) + "\r\n\r\n";
    const QByteArray form = head + body;
    for (const qsizetype size : {form.size(), head.size(), qsizetype{700}, qsizetype{1}}) {
        root->Options()->ReplayCount.Ex(0);
        QTcpSocket client;
        connectTo(client);
        for (qsizetype start = 0; start < form.size(); start += size) {
            fake.clock.advance(249);
            client.write(form.mid(start, size));
            client.flush();
            QCoreApplication::processEvents();
        }
        EXPECT_TRUE(ended(client)) << size;
        EXPECT_TRUE(client.readAll().contains("Configuration Updated")) << size;
        EXPECT_EQ(root->Options()->ReplayCount(), 7) << size;
    }
    EXPECT_EQ(recordCount(), 0);

    const auto cut = send(form.first(head.size() + 38)); // taken as it is when no more comes
    fake.clock.advance(249);
    settle();
    EXPECT_EQ(cut->bytesAvailable(), 0);
    fake.clock.advance(1);
    EXPECT_TRUE(ended(*cut));
    EXPECT_TRUE(cut->readAll().contains("Configuration Updated"));
}

TEST_F(ConnectionsTest, AListenerThatFailsIsMadeAnew)
{
    startSite();
    for (int failure = 1; failure <= 2; ++failure) {
        EXPECT_TRUE(get("/Login").contains("logon"));
        QTcpSocket client;
        connectTo(client);
        if (!withholdDescriptors(true)) {
            GTEST_SKIP() << "there is no such limit";
        }
        settle();
        fake.clock.advance(60000);
        settle();
        withholdDescriptors(false);
        fake.clock.advance(3000);
        EXPECT_TRUE(get("/Login").contains("logon"));
        EXPECT_EQ(recordCount(), failure);
    }
    EXPECT_TRUE(lastRecord().startsWith(u"Global Controls|ConnectionRequest|None|"_s));
}

TEST_F(ConnectionsTest, TheSiteIsHereAndNotAtTheProxyOfTheSystem)
{
    QNetworkProxy::setApplicationProxy({QNetworkProxy::Socks5Proxy, u"127.0.0.1"_s, 1});
    startSite();
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_TRUE(get("/Login").contains("logon"));
}

TEST_F(ConnectionsTest, AListenerThatTellsOfNothingIsMadeAnewOnceForARecord)
{
    startSite();
    const auto recordsAfterUntold = [this] {
        QTcpSocket client;
        connectTo(client); // without the loop, so nobody is told
        root->GlobalForm()->webServer.lookAfter();
        return recordCount();
    };
    const QByteArray first = listeningSocket();
    EXPECT_EQ(recordsAfterUntold(), 0) << "it may be chance";
    EXPECT_EQ(listeningSocket(), first);
    EXPECT_EQ(recordsAfterUntold(), 1);
#ifdef Q_OS_LINUX
    EXPECT_NE(listeningSocket(), first);
#endif
    EXPECT_EQ(recordsAfterUntold(), 1);
    EXPECT_EQ(recordsAfterUntold(), 1) << "told once as long as it lasts";
    EXPECT_TRUE(get("/Login").contains("logon"));
}

TEST_F(ConnectionsTest, ASlowReaderGetsAllOfALargeFileAlsoWhenItHasClosedItsOwnHalf)
{
    startSite();
    const QByteArray replay = QByteArray("0123456789abcdef").repeated(qsizetype{512} * 1024);
    writeReplay(u"large.rpf"_s, replay);
    QTcpSocket slow;
    slow.setReadBufferSize(qint64{64} * 1024);
    connectTo(slow);
    slow.write("GET /GETFILEsecret/large.rpf HTTP/1.1\r\nHost: a\r\n\r\n");
    slow.flush();
    settle();
    slow.write(QByteArray(4000, 'x')); // which nobody reads, and which must not reset it at the end
    slow.flush();
#ifndef Q_OS_WIN // where QTcpSocket, which is the reader here, may then stop before the end
    finishSending(slow.socketDescriptor());
#endif
    settle();
    EXPECT_TRUE(get("/Login").contains("logon")); // the others do not wait
    slow.setReadBufferSize(0);
    QByteArray answer;
    const auto all = [&] {
        answer += slow.readAll();
        return slow.state() == QTcpSocket::UnconnectedState && slow.bytesAvailable() == 0;
    };
    EXPECT_TRUE(QTest::qWaitFor(all, 30000));
    EXPECT_EQ(answer.size(), replay.size() + 49);
    EXPECT_TRUE(answer.endsWith("cdef\r\n\r\n"));
}
