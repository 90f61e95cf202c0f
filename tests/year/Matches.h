#pragma once

#include "Archive.h"
#include "Log.h"
#include "support/TurnedClock.h"

#include <functional>
#include <map>

/// The game's matches, whose pages and replays come before, after or at the end, in pieces, or
/// never.
class Matches
{
public:
    /// Writes a file of the game's, with the clock's time.
    using Write = std::function<void(const QString &name, const QByteArray &content)>;

    Matches(const TurnedClock &clock, Archive &archive, Log &log, Write write)
        : m_clock(clock), m_archive(archive), m_log(log), m_write(std::move(write))
    {
    }

    /// One ends; the amount says how its page and its replay come, and when the match is over.
    void end(int amount)
    {
        constexpr int Never = -1;
        constexpr std::pair<int, int> Moments[] = {{20, 0}, {2, 0}, {0, 0}, {0, 12}, {0, Never}};
        ++m_count;
        m_archive.matchEnds(m_clock.milliseconds());
        const int players = 1 + amount % 5;
        const auto [page, replay] = Moments[amount / 5 % std::size(Moments)];
        const bool cut = amount / 25 % 4 == 1;
        const bool slow = amount / 100 % 3 == 1;
        if (cut) {
            in(page, [=, this] { writePage(players, false); });
        }
        in(page + (cut ? amount / 300 % 200 : 0), [=, this] { writePage(players, true); });
        if (replay != Never) {
            in(replay, [=, this] { writeReplay(!slow); });
        }
        if (replay != Never && slow) {
            in(replay + 2, [this] { writeReplay(true); });
        }
    }
    bool isOver() const { return m_events.empty(); }
    /// What has fallen due.
    void happen()
    {
        while (!isOver() && m_events.begin()->first <= m_clock.milliseconds()) {
            m_events.extract(m_events.begin()).mapped()();
        }
    }

private:
    void in(int seconds, std::function<void()> event)
    {
        m_events.emplace(m_clock.milliseconds() + 1000LL * seconds, std::move(event));
    }
    void writePage(int players, bool whole)
    {
        const QByteArray row = "<TR>\r\n<TD>" + QByteArray::number(m_count) + "\r\n</TR>\r\n";
        m_write(QStringLiteral("missionstats.htm"),
                "<HTML>\r\n\r\n\r\n<H1>Mission Stats (Wed Jun 18 20:51:40 2003\r\n<H2>Map (" +
                    QByteArray(m_count % 2 == 0 ? "Castle" : "Farm") + ")\r\n6\r\n7\r\n" +
                    row.repeated(players) + (whole ? "</TABLE>\r\n)" : ""));
        if (whole) {
            m_archive.pageWritten(players);
        } else {
            m_log.allow(QStringLiteral("Stats Track Class|RecordStatsFile"), 1);
        }
    }
    void writeReplay(bool whole)
    {
        const QByteArray content =
            "replay " + QByteArray::number(m_count) + QByteArray(100 + m_count * 7 % 50, '.');
        m_write(QStringLiteral("Data/Save/replay/defaultreplay.rpf"),
                whole ? content : content.first(50));
        m_archive.replayWritten(m_clock.now().toString(QStringLiteral("yyyy_MM_dd_HH_mm_ss_")),
                                content, whole);
    }

    const TurnedClock &m_clock;
    Archive &m_archive;
    Log &m_log;
    Write m_write;
    int m_count = 0;
    std::multimap<qint64, std::function<void()>> m_events; ///< of the last one, by their moments
};
