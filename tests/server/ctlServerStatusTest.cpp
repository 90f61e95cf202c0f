#include "server/ctlServerStatus.h"

#include "core/basAddress.h"
#include "support/RootTest.h"

#include <QNetworkDatagram>
#include <QNetworkProxy>

#include <limits>

/// A number of which the other three bytes do not count.
static QByteArray number(qsizetype first)
{
    return static_cast<char>(first) + "\x7F\x7F\x7F"_ba;
}
static QByteArray text(const QByteArray &value)
{
    return number(value.size() + 1) + value + '\0';
}
static QByteArray single(float value)
{
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

static QByteArray fullReply(bool dedicated = true, int state = 4, float elapsed = 125,
                            float length = 600)
{
    return QByteArray(25, 'x') + text("H\xFClle") + text("map") + text("mission") + text("type") +
           "xx" + number(9) + number(3) + text("Host") + text("A") + text("B") +
           QByteArray(17, 'x') + text("1.4") + text("mods") + (dedicated ? '\2' : '\0') +
           single(elapsed) + number(state) + "xxxx" + text("motd") + "xxxx" + single(length);
}

/// The query and a server on the loopback address.
class ctlServerStatusTest : public ServicesTest
{
protected:
    ctlServerStatusTest()
    {
        startIdle();
        query = std::make_unique<ctlServerStatus>();
        EXPECT_TRUE(game.bind(QHostAddress(QHostAddress::LocalHost), 2348))
            << game.errorString().toStdString();
    }

    QNetworkDatagram ask()
    {
        query->Refresh();
        EXPECT_TRUE(QTest::qWaitFor([this] { return game.hasPendingDatagrams(); }));
        return game.receiveDatagram();
    }
    void answer(const QNetworkDatagram &request, const QByteArray &reply)
    {
        game.writeDatagram(request.makeReply(reply));
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return query->Status() == ServerQueryStatus::Responding; }));
    }
    /// Lets what was sent before, which may be left unread, arrive and be looked at.
    void deliver()
    {
        QUdpSocket last;
        last.bind(QHostAddress(QHostAddress::LocalHost));
        game.writeDatagram("last", last.localAddress(), last.localPort());
        EXPECT_TRUE(QTest::qWaitFor([&] { return last.hasPendingDatagrams(); }));
        QCoreApplication::processEvents();
    }
    QString players() const
    {
        QString result = query->PlayerCountString();
        for (const auto &player : query->Players()) {
            result += u' ' + player.key + player.name;
        }
        return result;
    }

    std::unique_ptr<ctlServerStatus> query;
    QUdpSocket game;
};

TEST_F(ctlServerStatusTest, AsksThisMachineOnceAndReadsEveryField)
{
    EXPECT_EQ(query->IP(), u"127.0.0.1"_s) << "the tests run where this is the only address";
    const QNetworkDatagram request = ask();
    query->Refresh();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    EXPECT_EQ(request.data().toHex(), "c0def111420600f50300000000");
    EXPECT_GE(request.senderPort(), 1024) << "which takes no privileges";
    answer(request, fullReply());
    EXPECT_FALSE(game.hasPendingDatagrams());
    EXPECT_EQ((QStringList{query->Name(), query->Map(), query->Mission(), query->GameType(),
                           query->Version(), query->Mods(), query->MOTD(), query->Length()}),
              u"Hülle map mission type 1.4 mods motd 600"_s.split(u' '));
    EXPECT_TRUE(query->Dedicated());
    EXPECT_EQ(query->PlayerCount(), 2);
    EXPECT_EQ(players(), u"2/8 R2A R3B"_s);

    answer(ask(), fullReply(false));
    EXPECT_EQ(players(), u"3/9 R1Host R2A R3B"_s);
}

TEST_F(ctlServerStatusTest, TheTimeLeftFollowsTheMatch)
{
    // Match state, elapsed seconds, match length; seconds left and their text.
    const std::tuple<int, float, float, int, QString> cases[] = {
        {4, 125, 600, 475, u"07:55"_s},
        {4, 125, 0, 9990, u"--:--"_s},
        {3, 1, 600, 0, u"Joining"_s},
        {2, 1, 600, 9999, u"n/a"_s},
        {4, 601, 600, -1, u"-01:59"_s},
        {4, 0, 6000, 6000, u"100:00"_s},
        {4, 720, 600, -120, u"-02:00"_s},
        {4, 3e9F, 60, 60, u"01:00"_s},
        {4, 0, std::numeric_limits<float>::infinity(), 9990, u"--:--"_s}};
    for (const auto &[state, elapsed, length, seconds, time] : cases) {
        answer(ask(), fullReply(true, state, elapsed, length));
        EXPECT_EQ(query->SecondsRemaining(), seconds) << elapsed << '/' << length;
        EXPECT_EQ(query->TimeRemaining(), time) << elapsed << '/' << length;
    }
}

TEST_F(ctlServerStatusTest, SilenceIsDeathAndALateAnswerIsNotRead)
{
    const QNetworkDatagram request = ask();
    fake.clock.advance(4999);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    fake.clock.advance(1);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Dead);
    game.writeDatagram(request.makeReply(fullReply()));
    deliver();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Dead);
    EXPECT_EQ(query->Name(), QString());

    // A reply too short to read is a sign of life, after which a whole one is still taken.
    answer(ask(), fullReply());
    const QNetworkDatagram next = ask();
    answer(next, QByteArray(24, 'x'));
    EXPECT_EQ(query->Name(), u"Hülle"_s);
    game.writeDatagram(next.makeReply(fullReply(true, 3)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return query->SecondsRemaining() == 0; }));
    fake.clock.advance(10000);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Responding);
    // An answer that came while the program could not look is one.
    game.writeDatagram(ask().makeReply(fullReply()));
    fake.clock.advance(5000);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Responding);
    EXPECT_EQ(query->SecondsRemaining(), 475);
    query->StopMonitoring();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Unknown);
}

TEST_F(ctlServerStatusTest, AsksPastTheProxyOfTheSystem)
{
    QNetworkProxy::setApplicationProxy({QNetworkProxy::Socks5Proxy, u"127.0.0.1"_s, 1});
    query = std::make_unique<ctlServerStatus>();
    ask();
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

TEST_F(ctlServerStatusTest, WhatCameUnaskedNeitherBlocksNorCounts)
{
    const QNetworkDatagram request = ask();
    for (int copy = 0; copy < 3; ++copy) {
        game.writeDatagram(request.makeReply(fullReply()));
    }
    deliver();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Responding);
    ask();
    deliver();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    fake.clock.advance(5000);
    answer(ask(), fullReply());
}

#ifdef Q_OS_LINUX
TEST_F(ctlServerStatusTest, AsksTheAddressThatTheMachineHasByNow)
{
    const auto ip = [](const QString &arguments) {
        EXPECT_EQ(QProcess::execute(u"ip"_s, arguments.split(u' ')), 0);
    };
    const auto primary = [] { return fnPrimaryAddress().toString(); };
    ip(u"link add network type veth peer name neighbour"_s);
    ip(u"address add 192.0.2.1/24 dev network"_s);
    EXPECT_EQ(primary(), u"127.0.0.1"_s) << "the network is not up yet";
    ip(u"link set network up"_s);
    ip(u"link set neighbour up"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return primary() == u"192.0.2.1"_s; }));
    query->Refresh(); // which began without a network
    EXPECT_EQ(query->IP(), u"192.0.2.1"_s);
    fake.clock.advance(5000);
    ip(u"link delete network"_s);
    ask();
    EXPECT_EQ(query->IP(), u"127.0.0.1"_s);
}
#endif
