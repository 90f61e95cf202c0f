#include "program/GameDirectory.h"

#include <gtest/gtest.h>

TEST(Archive, ThePlayedMatchsReplayIsKeptUnderItsLocalTime)
{
    GameDirectory game;
    QProcessEnvironment elsewhere = QProcessEnvironment::systemEnvironment();
    elsewhere.insert(u"TZ"_s, u"XYZ-5:30"_s);
    game.tool().setProcessEnvironment(elsewhere);
    game.writeOptions("<AutoRestartOnProcessStop>False</AutoRestartOnProcessStop>",
                      "-joining 0 -match-length 5 -exit-after 9");
    game.startTool();
    constexpr int LooksAtThePageEvery = 45000;
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(game.path(u"ZEBEKSCache.dat"_s)); },
                          LooksAtThePageEvery + 2 * StartMilliseconds));
    EXPECT_EQ(game.events("match-ended"), 1);
    const QString replay = u"Data/Save/replay/defaultreplay.rpf"_s;
    const QString name = QFileInfo(game.path(replay))
                             .lastModified()
                             .toOffsetFromUtc(5 * 3600 + 1800)
                             .toString(u"yyyy_MM_dd_HH_mm_ss'_Castle_replay.rpf'"_s);
    EXPECT_EQ(QDir(game.path(u"Replays"_s)).entryList(QDir::Files), QStringList{name});
    EXPECT_EQ(game.read(u"Replays/"_s + name), game.read(replay));
    EXPECT_EQ(game.errorLog(), QByteArray());
}
