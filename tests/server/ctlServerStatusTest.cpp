#include "server/ctlServerStatus.h"

#include "support/ToolTest.h"

#include <QNetworkDatagram>
#include <QtTest/QTest>

#include <cstring>
#include <limits>

namespace {

/// Builds replies as the game server sends them.
class Reply
{
public:
    Reply &raw(qsizetype count, char fill = '\x5A')
    {
        bytes.append(count, fill);
        return *this;
    }
    Reply &text(const QByteArray &value) { return number(value.size() + 1).append(value + '\0'); }
    Reply &number(qsizetype first) // the other three bytes do not count
    {
        return append(QByteArray(1, static_cast<char>(first)) + "\x7F\x7F\x7F");
    }
    Reply &single(float value)
    {
        QByteArray little(4, '\0');
        std::memcpy(little.data(), &value, 4);
        return append(little);
    }
    Reply &append(const QByteArray &more)
    {
        bytes += more;
        return *this;
    }

    QByteArray bytes;
};

QByteArray fullReply(bool dedicated = true, int state = 4, float elapsed = 125, float length = 600)
{
    return Reply()
        .raw(25)
        .text("H\xFClle")
        .text("map")
        .text("mission")
        .text("type")
        .raw(2)
        .number(9)
        .number(3)
        .text("Host")
        .text("A")
        .text("B")
        .raw(17)
        .text("1.4")
        .text("mods")
        .raw(1, dedicated ? '\2' : '\0')
        .single(elapsed)
        .number(state)
        .raw(4)
        .text("motd")
        .raw(4)
        .single(length)
        .bytes;
}

/// The query and a server on the loopback address.
class ctlServerStatusTest : public ToolTest
{
protected:
    ctlServerStatusTest()
    {
        writeOptions("<AutoStartGRServer>False</AutoStartGRServer>");
        root->Start();
        query = std::make_unique<ctlServerStatus>();
        query->setIP(QStringLiteral("127.0.0.1"));
        EXPECT_TRUE(game.bind(QHostAddress(QHostAddress::LocalHost), 2348))
            << game.errorString().toStdString();
    }

    QNetworkDatagram takeRequest()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return game.hasPendingDatagrams(); }));
        return game.receiveDatagram();
    }
    void answer(const QByteArray &reply)
    {
        query->Refresh();
        game.writeDatagram(takeRequest().makeReply(reply));
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return query->Status() == ServerQueryStatus::Responding; }));
    }

    std::unique_ptr<ctlServerStatus> query;
    QUdpSocket game;
};

} // namespace

TEST_F(ctlServerStatusTest, AsksOnceAndReadsEveryField)
{
    query->Refresh();
    query->Refresh();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    const QNetworkDatagram request = takeRequest();
    EXPECT_EQ(request.data().toHex(), "c0def111420600f50300000000");
    game.writeDatagram(request.makeReply(fullReply()));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return query->Status() == ServerQueryStatus::Responding; }));
    EXPECT_FALSE(game.hasPendingDatagrams());

    EXPECT_EQ(query->Name(), QStringLiteral("Hülle"));
    EXPECT_EQ(query->Map(), QStringLiteral("map"));
    EXPECT_EQ(query->Mission(), QStringLiteral("mission"));
    EXPECT_EQ(query->GameType(), QStringLiteral("type"));
    EXPECT_EQ(query->Version(), QStringLiteral("1.4"));
    EXPECT_EQ(query->Mods(), QStringLiteral("mods"));
    EXPECT_EQ(query->MOTD(), QStringLiteral("motd"));
    EXPECT_TRUE(query->Dedicated());
    EXPECT_EQ(query->PlayerCount(), 2);
    EXPECT_EQ(query->PlayerCountString(), QStringLiteral("2/8"));
    ASSERT_EQ(query->Players().size(), 2U);
    EXPECT_EQ(query->Players()[0].key + query->Players()[0].name, QStringLiteral("R2A"));
    EXPECT_EQ(query->Players()[1].key + query->Players()[1].name, QStringLiteral("R3B"));
    EXPECT_EQ(query->Length(), QStringLiteral("600"));

    answer(fullReply(false));
    EXPECT_EQ(query->PlayerCountString(), QStringLiteral("3/9"));
    EXPECT_EQ(query->Players().size(), 3U);
}

TEST_F(ctlServerStatusTest, TheTimeLeftFollowsTheMatch)
{
    const struct
    {
        int state;
        float elapsed;
        float length;
        int seconds;
        const char *time;
    } cases[] = {
        {4, 125, 600, 475, "07:55"},
        {4, 125, 0, 9990, "--:--"},
        {3, 1, 600, 0, "Joining"},
        {2, 1, 600, 9999, "n/a"},
        {4, 601, 600, -1, "-01:59"},
        {4, 0, 6000, 6000, "100:00"},
        {4, 0.5F, 2.5F, 2, "00:02"},
        {4, -30, 600, 570, "09:30"},
        {4, 720, 600, -120, "-02:00"},
        {4, 3e9F, 60, 60, "01:00"},
        {4, 0, 1e-40F, 9990, "--:--"},
        {4, 0, std::numeric_limits<float>::infinity(), 9990, "--:--"},
    };
    for (const auto &row : cases) {
        answer(fullReply(true, row.state, row.elapsed, row.length));
        EXPECT_EQ(query->SecondsRemaining(), row.seconds) << row.elapsed << '/' << row.length;
        EXPECT_EQ(query->TimeRemaining(), QString::fromLatin1(row.time)) << row.elapsed;
    }
}

TEST_F(ctlServerStatusTest, SilenceIsDeathAndALateAnswerIsNotRead)
{
    query->Refresh();
    const QNetworkDatagram request = takeRequest();
    fake.clock.advance(4999);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    fake.clock.advance(1);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Dead);
    game.writeDatagram(request.makeReply(fullReply()));
    QTest::qWait(20);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Dead);
    EXPECT_EQ(query->Name(), QString());

    answer(fullReply());
    fake.clock.advance(10000);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Responding);
    query->StopMonitoring();
    EXPECT_EQ(query->Status(), ServerQueryStatus::Unknown);
}

TEST_F(ctlServerStatusTest, AShortReplyIsASignOfLifeAndTheNextDatagramIsStillTaken)
{
    answer(fullReply());
    query->Refresh();
    const QNetworkDatagram request = takeRequest();
    game.writeDatagram(request.makeReply(QByteArray(24, 'x')));
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return query->Status() == ServerQueryStatus::Responding; }));
    EXPECT_EQ(query->Name(), QStringLiteral("Hülle"));
    game.writeDatagram(request.makeReply(fullReply(true, 3)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return query->SecondsRemaining() == 0; }));
}

TEST_F(ctlServerStatusTest, WhatCameUnaskedNeitherBlocksNorCounts)
{
    query->Refresh();
    const QNetworkDatagram request = takeRequest();
    for (int copy = 0; copy < 3; ++copy) {
        game.writeDatagram(request.makeReply(fullReply()));
    }
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return query->Status() == ServerQueryStatus::Responding; }));
    QTest::qWait(20);
    query->Refresh();
    takeRequest();
    QTest::qWait(20);
    EXPECT_EQ(query->Status(), ServerQueryStatus::Probing);
    fake.clock.advance(5000);
    answer(fullReply());
}

TEST_F(ctlServerStatusTest, DamagedRepliesOfEveryLengthKeepTheFieldsBeforeTheDamage)
{
    const QByteArray whole = fullReply(false);
    for (qsizetype size = 25; size <= whole.size(); ++size) {
        const ServerStatusReply reply = ServerStatusReply::parse(whole.first(size));
        EXPECT_EQ(reply.name, size >= 25 + 4 + 6 ? QStringLiteral("Hülle") : QString());
        EXPECT_EQ(reply.matchLength, size == whole.size() ? 600 : 0);
        EXPECT_EQ(reply.players.size(), static_cast<std::size_t>(reply.playerCount));
    }
    const QByteArray unclosed = Reply().raw(25).append(QByteArray("\5\0\0\0Hello", 9)).bytes;
    EXPECT_EQ(ServerStatusReply::parse(unclosed + QByteArray(40, '\0')).name, QString());

    Reply crowd;
    crowd.raw(25).text("").text("").text("").text("").raw(2).number(255).number(200);
    EXPECT_EQ(ServerStatusReply::parse(crowd.bytes).players.size(), 200U);
}

TEST_F(ctlServerStatusTest, AsksThisMachinesOwnAddress)
{
    EXPECT_EQ(ctlServerStatus().IP(), QStringLiteral("127.0.0.1"))
        << "the tests run where the loopback address is the only one";
}
