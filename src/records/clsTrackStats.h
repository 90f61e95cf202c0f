#pragma once

#include "platform/Timer.h"

#include <QDateTime>
#include <QString>

/// Watches the game's statistics page. When it tells of a match that has not been recorded yet,
/// also across restarts, the match's replay is archived under the name of its map. Two pages are
/// of one match when they differ in nothing but the time in their heading.
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
    /// written, and looked at again the next time.
    void RecordStatsFile();

private:
    platform::Timer *mobjTimer = nullptr;
    QString m_lastRecordKey;
};
