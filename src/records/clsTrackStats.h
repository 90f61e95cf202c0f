#pragma once

#include "platform/Timer.h"
#include "records/clsGame.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <utility>

/// Watches the game's statistics page. When it tells of a match that has not been recorded yet,
/// also across restarts, the match's replay is archived under the name of its map. Two pages are
/// of one match when they differ in nothing but the time in their heading.
///
/// A match is recorded, which is to say its page is copied to "ZEBEKSCache.dat" in the game's
/// directory, when its replay is kept or not wanted; the copy's time tells when. Until then the
/// replay is owed: each look tries again, also after a restart, until the next match's page comes.
class clsTrackStats
{
public:
    clsTrackStats() = default;
    clsTrackStats(const clsTrackStats &) = delete;
    clsTrackStats &operator=(const clsTrackStats &) = delete;
    ~clsTrackStats();

    /// Takes the timer at whose ticks the page is looked at; null for none.
    void setTimerControl(platform::Timer *timer);
    void mobjTimer_Timer();

    /// One look at the page. What fails is skipped. A page without its table end is still being
    /// written, and looked at again the next time; one that lacks it at three looks in a row is
    /// recorded in the error log, and again only after a whole page was seen.
    void RecordStatsFile();

private:
    struct Match
    {
        Match(const QString &path, QByteArray content) : page(std::move(content))
        {
            game.LoadStatsFile(path, page);
        }

        QByteArray page;
        clsGame game;
        QDateTime settled; ///< since when the page can be recorded; invalid before
    };

    bool isWhole(const QByteArray &page, const QString &path);
    bool owes(const QByteArray &page) const;

    platform::Timer *mobjTimer = nullptr;
    bool m_leftOut = false; ///< the last look
    QString m_lastRecordKey;
    /// The match that is not recorded yet; its page is converted once only.
    std::optional<Match> m_owed;
    int m_cutLooks = 0; ///< in a row, at pages without a table end
};
