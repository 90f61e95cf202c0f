#pragma once

#include "Archive.h"
#include "Later.h"
#include "Log.h"

/// The game's matches, whose pages and replays come before, after or at the end, in pieces, or
/// never.
class Matches
{
public:
    /// As the game does, with the clock's time.
    using Write = std::function<void(const QString &name, const QByteArray &content)>;

    Matches(const TurnedClock &clock, Later &later, Archive &archive, Log &log, Write write)
        : m_clock(clock), m_later(later), m_archive(archive), m_log(log), m_write(std::move(write))
    {
    }

    /// One ends; the amount says how its page and its replay come, and when the match is over.
    void end(int amount)
    {
        constexpr int Never = -1;
        constexpr std::pair<int, int> Moments[] = {{20, 0}, {2, 0},  {0, 0},
                                                   {0, 10}, {0, 60}, {0, Never}};
        ++m_count;
        m_archive.matchEnds();
        const int players = 1 + amount % 5;
        const auto [page, replay] = Moments[amount / 5 % std::size(Moments)];
        const bool cut = amount / 30 % 4 == 1;
        const bool slow = amount / 120 % 3 == 1;
        in(page, [=, this] { writePage(players, !cut); });
        if (cut) {
            in(page + amount / 360 % 200, [=, this] { writePage(players, true); });
        }
        if (replay != Never) {
            in(replay, [=, this] { writeReplay(!slow); });
        }
        if (replay != Never && slow) {
            in(replay + 2, [this] { writeReplay(true); });
        }
    }
    bool isOver() const { return m_pending == 0; }

private:
    void in(int seconds, std::function<void()> event)
    {
        ++m_pending;
        m_later.in(1000LL * seconds, [this, event = std::move(event)] {
            event();
            --m_pending;
        });
    }
    void writePage(int players, bool whole)
    {
        const QByteArray row = "<TR>\r\n<TD>" + QByteArray::number(m_count) + "\r\n</TR>\r\n";
        m_write(QStringLiteral("missionstats.htm"),
                "<HTML>\r\n\r\n\r\n<H1>Mission Stats (Wed Jun 18 20:51:40 2003\r\n<H2>Map (" +
                    QByteArray(m_count % 2 == 0 ? "Castle" : "Farm") + ")\r\n6\r\n7\r\n" +
                    row.repeated(players) + (whole ? "</TABLE>\r\n)" : ""));
        if (whole) {
            m_archive.pageWritten(players, m_clock.milliseconds());
        } else {
            m_log.allow(QStringLiteral("Stats Track Class|RecordStatsFile"), 1);
        }
    }
    void writeReplay(bool whole)
    {
        const QByteArray content = "replay " + QByteArray::number(m_count) + QByteArray(100, '.');
        m_write(QStringLiteral("Data/Save/replay/defaultreplay.rpf"),
                whole ? content : content.first(50));
        m_archive.replayWritten(m_clock.now().toString(QStringLiteral("yyyy_MM_dd_HH_mm_ss_")),
                                content, whole, m_clock.milliseconds());
    }

    const TurnedClock &m_clock;
    Later &m_later;
    Archive &m_archive;
    Log &m_log;
    Write m_write;
    int m_count = 0;
    int m_pending = 0; ///< of the last one's events
};
