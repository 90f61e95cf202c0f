#include "records/basParse.h"
#include "records/clsReplays.h"
#include "records/clsTrackStats.h"
#include "support/RootTest.h"

#include <limits>

const QByteArray Rows = "<TD>J\xE4ger</TD><TD>Red</TD><TD>Rifle</TD><TD>Alive</TD><TD>3</TD>"
                        "<TD>2</TD><TD>0</TD><TD>1</TD><TD>3</TD><TD>0</TD><TD>42%</TD><TD>0%</TD>"
                        "<TD>0</TD><TD>1</TD>\r\n</TR>\r\n<TR>\r\n"
                        "<td>no row</td>\r\n</TR>\r\n<TR>\r\n"
                        "<TD>B &amp; C</TD><TD>Blue\r\n</TR>\r\n";

static QByteArray page(const QByteArray &rows, const QByteArray &time = "Wed Jun 18 20:51:40 2003",
                       const QByteArray &map = "Castle")
{
    return "<HTML>\r\n\r\n\r\n<H1>Mission Stats (" + time + "\r\n<H2>Map (" + map +
           ")\r\n6\r\n7\r\n" + (rows.isEmpty() ? "" : "<TR>\r\n") + rows + "</TABLE>\r\n)";
}

/// A root object with the archive and the tracker, which looks every 45 s.
class RecordsRoot final : public FakeRoot
{
public:
    using FakeRoot::FakeRoot;

    void Start()
    {
        FakeRoot::Start();
        QDir(RootDirectory()).mkdir(u"Replays"_s);
        m_replays = std::make_unique<clsReplays>();
        m_tracker = std::make_unique<clsTrackStats>();
        m_timer.setInterval(45000);
        m_tracker->setTimerControl(&m_timer);
    }
    clsReplays *Replays() const override { return m_replays.get(); }

private:
    platform::Timer m_timer{Machine().clock};
    std::unique_ptr<clsReplays> m_replays;
    std::unique_ptr<clsTrackStats> m_tracker;
};

/// The game's directory with a replay, and the tracker's passes run by hand.
class recordsTest : public RootTest<RecordsRoot>
{
protected:
    recordsTest()
    {
        QDir(directory.path()).mkpath(u"data/SAVE/replay"_s);
        root->Start();
    }
    void writeReplay(const QDateTime &time, const QByteArray &content = "replay")
    {
        write(u"data/SAVE/replay/defaultreplay.rpf"_s, content, time);
    }
    void writeReplay(const QString &time, const QByteArray &content = "replay")
    {
        writeReplay(QDateTime::fromString(time, Qt::ISODate), content);
    }
    /// A page of a match; each one is changed a minute after the last.
    void writePage(const QByteArray &content)
    {
        m_pageTime = m_pageTime.addSecs(60);
        write(u"MissionStats.htm"_s, content, m_pageTime);
    }
    QStringList archive() const
    {
        return QDir(path(u"Replays"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void tick() { fake.clock.advance(45000); }

private:
    QDateTime m_pageTime{QDate(2004, 1, 5), QTime(9, 7, 3)};
};

TEST_F(recordsTest, ThePageBecomesARecord)
{
    auto document = xmlFromGamePage(page(Rows), u"/g/missionstats.htm"_s);
    const QByteArray text = document.toBytes();
    EXPECT_TRUE(text.contains("<Game Version=\"1.00\" Date=\"2003-06-18 20:51:40\" "
                              "DateDouble=\"37790.869212963\" DateAdded=\"46095.6315509259\" "
                              "SortKey2=\"631550.925929332\" Map=\"Castle\" GameType=\"\" "
                              "Inserts=\"\" TimeLimit=\"\" Winner=\"\" Loser=\"\" Draw1=\"\" "
                              "Draw2=\"\" OrigPath=\"/g/missionstats.htm\">"))
        << text.constData();
    EXPECT_TRUE(text.contains(
        "<Player Name=\"J\xC3\xA4ger\" Team=\"Red\" Soldier=\"Rifle\" Status=\"Alive\">"
        "<ShotKills>3</ShotKills><ExpKills>2</ExpKills><TotalKills>5</TotalKills>"
        "<GunShots>0</GunShots><ExpShots>1</ExpShots><TotalShots>1</TotalShots>"
        "<ShotHits>3</ShotHits><ExpHits>0</ExpHits><TotalHits>3</TotalHits>"
        "<ShotAccuracy>42%</ShotAccuracy><ExpAccuracy>0%</ExpAccuracy>"
        "<TotalAccuracy>3</TotalAccuracy><TKs>0</TKs><Deaths>1</Deaths></Player>"))
        << text.constData();
    EXPECT_EQ(document.findAll("Player").size(), 2U);
    EXPECT_TRUE(text.contains("Name=\"B &amp;amp; C\" Team=\"\""));
    EXPECT_TRUE(text.contains("<TotalAccuracy>0</TotalAccuracy>"));
    EXPECT_EQ(recordCount(), 0);

    for (const QByteArray &foreign :
         {QByteArray(), QByteArray("\n\n\n\n\n\n\n\n\n<TD>"), page(Rows).first(300)}) {
        EXPECT_FALSE(fnIsWholePage(foreign));
        xmlFromGamePage(foreign, {});
    }
    EXPECT_EQ(recordCount(), 2) << "the last one has a date";
    xmlFromGamePage(page({}, "never"), {});
    EXPECT_EQ(recordCount(), 3);
    EXPECT_EQ(lastRecord(), u"basParse|XMLFromGameFile|Global|13"_s);
}

TEST_F(recordsTest, EachNewMatchIsArchivedOnce)
{
    writeReplay(u"2034-03-15T21:07:09"_s);
    writePage(page(Rows));
    tick();
    const QString castle = u"2034_03_15_21_07_09_Castle_replay.rpf"_s;
    EXPECT_EQ(archive(), QStringList{castle});
    EXPECT_EQ(read(u"ZEBEKSCache.dat"_s), page(Rows));
    EXPECT_EQ(read(u"Replays/"_s + castle), "replay");
    EXPECT_EQ(fake.hooks.events,
              QStringList{u"match-archived|map=Castle|players=2|names=Jäger, B &amp; C|file="_s +
                          rootDirectory() + u"Replays"_s + QDir::separator() + castle});

    // The same match: the heading up to the first bracket does not count.
    writePage(page(Rows, "Wed Jun 18 20:55:00 2004", "Cellar"));
    writeReplay(u"2034-03-15T21:30:00"_s);
    tick();
    EXPECT_EQ(archive(), QStringList{castle});

    // Nothing is compared while replays are not recorded; then the last match counts.
    root->Options()->RecordReplays.Let(false);
    write(u"ZEBEKSCache.dat"_s, page(Rows), QDateTime({2100, 1, 1}, {})); // by a clock put back
    writePage(page(Rows + "<TR>\r\n" + Rows, "x", "Farm"));
    tick();
    EXPECT_EQ(archive().size(), 1);
    root->Options()->RecordReplays.Let(true);
    tick();
    EXPECT_EQ(archive().last(), u"2034_03_15_21_30_00_Farm_replay.rpf"_s);

    // One player is a blank match, whose replay is no later one's, also after a restart.
    writeReplay(u"2026-03-14T15:00:00"_s);
    writePage(page(Rows.first(Rows.indexOf("<TR>\r\n<td>"))));
    tick();
    startIdle();
    root->Options()->SkipBlankReplays.Let(false);
    writePage(page({}, "x", ""));
    tick();
    EXPECT_EQ(archive().size(), 2);
    writeReplay(u"2034-03-15T22:30:00"_s);
    tick();
    EXPECT_EQ(archive().last(), u"2034_03_15_22_30_00_replay.rpf"_s);
}

TEST_F(recordsTest, AFullArchiveGivesUpItsSmallestName)
{
    root->Options()->ReplayCount.Let(3);
    for (const char *name : {"Old.rpf", "2034_a.rpf", "1999_old.rpf", "0note.txt"}) {
        write(u"Replays/"_s + QString::fromLatin1(name), {});
    }
    write(u"Replays/9.rpf.zebek-new"_s, "left over");
    QDir(path(u"Replays"_s)).mkdir(u"0.rpf"_s);
    writeReplay(u"2026-03-14T15:09:00"_s, {}); // it is only begun
    EXPECT_FALSE(root->Replays()->ArchiveReplay(u"M"_s));
    writeReplay(u"2026-03-14T15:09:24"_s); // it may be written on
    EXPECT_FALSE(root->Replays()->ArchiveReplay(u"M"_s));
    writeReplay(u"2026-03-14T15:09:23"_s);
    root->Replays()->ArchiveReplay(u"M"_s);
    EXPECT_EQ(archive(), (QStringList{u"0note.txt"_s, u"2026_03_14_15_09_23_M_replay.rpf"_s,
                                      u"2034_a.rpf"_s, u"Old.rpf"_s}));
    EXPECT_TRUE(root->Replays()->MaintainReplayDirectory());
    writeReplay(u"2034-03-15T21:08:00"_s);
    root->Replays()->Release(); // as at the end of the tool
    EXPECT_FALSE(root->Replays()->ArchiveReplay(u"M"_s));
    EXPECT_FALSE(root->Replays()->MaintainReplayDirectory());
    EXPECT_EQ(archive(), (QStringList{u"0note.txt"_s, u"2034_a.rpf"_s, u"Old.rpf"_s}));
}

TEST_F(recordsTest, WhatIsOwedIsTriedAtEachLookAndEachReasonIsRecordedOnceAMatch)
{
    const auto lookThrice = [this] {
        fake.clock.advance(3 * 45000LL);
        return recordCount();
    };
    writePage(page(Rows, "never")); // it has no date, which is recorded
    EXPECT_EQ(lookThrice(), 1);
    root->Options()->ReplayFolder.Let(path(u"nowhere"_s));
    writeReplay(u"2034-03-15T21:07:09"_s);
    EXPECT_EQ(lookThrice(), 2);
    writePage(page(Rows, "", "Farm")); // nor has this
    EXPECT_EQ(lookThrice(), 4);
    EXPECT_EQ(lastRecord(), u"clsReplays|MaintainReplayDirectory|Root Object|75"_s);

    // A disk that stays full costs the archive one replay.
    root->Options()->ReplayFolder.Let(path(u"Replays"_s));
    write(u"Replays/1.rpf"_s, {});
    write(u"Replays/2.rpf"_s, {});
    fake.files.full = std::numeric_limits<int>::max();
    fake.files.space = 5; // for six bytes
    EXPECT_EQ(lookThrice(), 6) << "the replay, and the settings that were changed";
    EXPECT_EQ(archive(), (QStringList{u"1.rpf"_s, u"2.rpf"_s})) << "no room would be made";
    fake.files.space = 6;
    EXPECT_EQ(lookThrice(), 6);
    EXPECT_EQ(archive(), QStringList{u"2.rpf"_s});
    fake.files.full = 0;
    QDir(directory.path()).mkdir(u"ZEBEKSCache.dat"_s); // so that it cannot be written
    EXPECT_EQ(lookThrice(), 6);
    QDir(directory.path()).rmdir(u"ZEBEKSCache.dat"_s);
    tick();
    const QStringList kept{u"2.rpf"_s, u"2034_03_15_21_07_09_Farm_replay.rpf"_s};
    EXPECT_EQ(archive(), kept);
    EXPECT_EQ(read(u"ZEBEKSCache.dat"_s), page(Rows, "", "Farm"));
}

TEST_F(recordsTest, WhatHappensWhileTheFolderIsListedDoesNoHarm)
{
    root->Options()->ReplayCount.Let(2);
    for (const char *name : {"1.rpf", "2.rpf", "3.rpf"}) {
        write(u"Replays/"_s + QString::fromLatin1(name), {});
    }
    writeReplay(u"2034-03-15T21:07:09"_s);
    const auto duringTheListing = [](std::function<void()> event) {
        QMetaObject::invokeMethod(qApp, std::move(event), Qt::QueuedConnection);
    };
    duringTheListing([this] { QFile::remove(path(u"Replays/1.rpf"_s)); });
    root->Replays()->ArchiveReplay(u"M"_s);
    EXPECT_EQ(archive(),
              (QStringList{u"2.rpf"_s, u"2034_03_15_21_07_09_M_replay.rpf"_s, u"3.rpf"_s}));

    // The game goes on to the next match; each is archived with its own content.
    clsTrackStats tracker;
    const QByteArray next = page(Rows, "Thu Jun 19 20:51:40 2003", "Farm");
    writePage(page(Rows));
    writeReplay(u"2034-03-15T21:08:00"_s);
    duringTheListing([&] {
        writePage(next);
        tracker.RecordStatsFile(); // its replay is not there yet
        writeReplay(u"2034-03-15T21:09:00"_s, "next");
        tracker.RecordStatsFile();
    });
    tracker.RecordStatsFile();
    EXPECT_EQ(read(u"Replays/2034_03_15_21_08_00_Castle_replay.rpf"_s), "replay");
    EXPECT_EQ(read(u"Replays/2034_03_15_21_09_00_Farm_replay.rpf"_s), "next");
    EXPECT_EQ(archive().size(), 3);
    EXPECT_EQ(read(u"ZEBEKSCache.dat"_s), next);
    EXPECT_EQ(recordCount(), 0);
}
