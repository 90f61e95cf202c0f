#include "program/GameDirectory.h"

#include <gtest/gtest.h>

/// The statistics page is looked at every 45 s.
constexpr int TickMilliseconds = 45000 + 10000;

static QStringList archive(const GameDirectory &game)
{
    return QDir(game.path(u"Replays"_s)).entryList({u"*.rpf"_s});
}

/// Two tools, so that both ticks serve two purposes: one sees a page that is half written and then
/// whole, the other a match that it has archived before a restart. The ticks of the one without
/// anything to show are known from those of the other, which come in the order of the starts.
TEST(Archive, AMatchIsArchivedOnceWhenItsPageIsWholeAlsoAcrossARestart)
{
    GameDirectory halfWritten;
    GameDirectory restarted;
    const auto start = [](GameDirectory &game, qsizetype servers) {
        game.startTool();
        EXPECT_TRUE(
            waitUntil([&] { return game.events("started") == servers; }, StartMilliseconds));
    };
    QProcessEnvironment elsewhere = QProcessEnvironment::systemEnvironment();
    elsewhere.insert(u"TZ"_s, u"XYZ-5:30"_s);
    halfWritten.tool().setProcessEnvironment(elsewhere);
    const QByteArray noRestart = "<ServerStartupTimeout>600</ServerStartupTimeout>"
                                 "<AutoRestartOnProcessStop>False</AutoRestartOnProcessStop>";
    halfWritten.writeOptions(noRestart,
                             "-joining 0 -match-length 35 -page-halves 20000 -exit-after 60");
    restarted.writeOptions(noRestart, "-joining 0 -match-length 5 -exit-after 9");
    start(halfWritten, 1);
    start(restarted, 1);

    // The cache is written last, so the tool may be killed then.
    const QString cache = restarted.path(u"ZEBEKSCache.dat"_s);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(cache); }, TickMilliseconds));
    EXPECT_EQ(archive(restarted).size(), 1);
    EXPECT_EQ(halfWritten.events("match-ended"), 1);
    EXPECT_FALSE(halfWritten.read(u"missionstats.htm"_s).contains("</TABLE>"));
    EXPECT_EQ(archive(halfWritten), QStringList());
    const QStringList before = archive(restarted);

    // The server of the next run plays the same match again, with another replay.
    restarted.killTool();
    start(restarted, 2);
    halfWritten.killTool();
    start(halfWritten, 1);
    ASSERT_TRUE(waitUntil([&] { return !archive(halfWritten).isEmpty(); }, TickMilliseconds));
    EXPECT_EQ(restarted.events("match-ended"), 2);
    EXPECT_EQ(archive(restarted), before);

    const QString replay = u"Data/Save/replay/defaultreplay.rpf"_s;
    const QDateTime changed = QFileInfo(halfWritten.path(replay)).lastModified();
    const QString name =
        changed.toOffsetFromUtc(5 * 3600 + 1800).toString(u"yyyy_MM_dd_HH_mm_ss"_s);
    EXPECT_EQ(archive(halfWritten), QStringList{name + u"_Castle_replay.rpf"_s});
    EXPECT_EQ(halfWritten.read(u"Replays/"_s + archive(halfWritten).first()),
              halfWritten.read(replay));
    EXPECT_EQ(halfWritten.errorLog() + restarted.errorLog(), QByteArray());
}
