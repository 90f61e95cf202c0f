#include "records/clsTrackStats.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "records/basParse.h"
#include "records/clsReplays.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr Routine Recording{"Stats Track Class", "RecordStatsFile", "Unknown"};

QString fnStatsFileName(const QDateTime &changed)
{
    return changed.toString(u"yyyy_M_d_H_m_s'_stats.htm'"_s);
}

/// Empty for a file that cannot be read.
QByteArray contentOf(const QString &path)
{
    QByteArray content;
    skipFailure([&] { content = platform::readFile(path, LargestStatisticsPage + 1); });
    return content;
}

/// Overwrites the heading with the match's time, so that it does not count in a comparison.
void fnBlankStatsHeader(QByteArray &page)
{
    const QByteArray heading = "Mission Stats ("_ba;
    const qsizetype start = page.indexOf(heading);
    const qsizetype end = start < 0 ? -1 : page.indexOf(')', start);
    if (end >= 0) {
        page.replace(start, end + 1 - start, QByteArray(end + 1 - start, ' '));
    }
}

bool fnStatsFilesEqual(QByteArray first, QByteArray second)
{
    fnBlankStatsHeader(first);
    fnBlankStatsHeader(second);
    return first == second;
}

/// The cache's time is when the match was settled, even where it could only be written later.
void writeCache(const QByteArray &page, const QDateTime &settled)
{
    const QString path = gRoot->StatsCacheFileName();
    platform::Replacement copy(gRoot->Machine().files, path, page,
                               platform::Durability::SurvivesPowerLoss);
    QFile file(platform::replacementName(path));
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        file.setFileTime(settled, QFileDevice::FileModificationTime);
        file.close();
    }
    copy.commit();
}

bool isWanted(const clsGame &game)
{
    const clsOptions &options = *gRoot->Options();
    return options.RecordReplays() && (!options.SkipBlankReplays() || game.PlayerCount() > 1);
}

/// A replay that comes some seconds behind its page is still that match's. One that is not wanted
/// would otherwise be taken for the next match's, whose own one would then be lost.
QDateTime settledAt(const QDateTime &pageChanged, bool replayIsThere)
{
    constexpr qint64 LateSeconds = 15;
    const QDateTime now = gRoot->Machine().clock.now();
    return !replayIsThere && pageChanged <= now ? std::max(now, pageChanged.addSecs(LateSeconds))
                                                : now;
}

bool archiveReplayOf(const clsGame &game)
{
    // While the replay is archived, another look may go on to the next match: these are copies.
    // NOLINTBEGIN(performance-unnecessary-copy-initialization)
    const QString map = game.Map();
    const QStringList players = game.PlayerNames();
    // NOLINTEND(performance-unnecessary-copy-initialization)
    if (!gRoot->Replays()->ArchiveReplay(map)) {
        return false;
    }
    tellHook(HookEvent::MatchArchived, {{"map", map},
                                        {"players", QString::number(players.size())},
                                        {"names", players.join(u", "_s)},
                                        {"file", gRoot->Replays()->lastFile()}});
    return true;
}

} // namespace

clsTrackStats::~clsTrackStats()
{
    setTimerControl(nullptr);
}

void clsTrackStats::setTimerControl(platform::Timer *timer)
{
    if (mobjTimer != nullptr) {
        mobjTimer->setTick([] {});
    }
    mobjTimer = timer;
    if (mobjTimer != nullptr) {
        mobjTimer->setTick([this] { mobjTimer_Timer(); });
    }
}

/// Where the machine was suspended in the midst of a match's end, the game has not gone on writing
/// for as long as its files seem to be at rest: a look that comes late is left to the next one, but
/// not two in a row, as they are on a machine that is always late.
void clsTrackStats::mobjTimer_Timer()
{
    constexpr qint64 Late = 1000;
    m_leftOut = !m_leftOut && mobjTimer->lateness() >= Late;
    if (gRoot->Options()->RecordReplays() && !m_leftOut) {
        RecordStatsFile();
    }
}

void clsTrackStats::RecordStatsFile()
{
    const QString path = fnGamePath(u"missionstats.htm"_s);
    const QFileInfo entry(path);
    if (!entry.isFile()) {
        return;
    }
    const QString key =
        clsOptions::StatsPath() + QDir::separator() + fnStatsFileName(entry.lastModified());
    if (key == m_lastRecordKey) {
        return;
    }
    const QByteArray page = contentOf(path);
    if (page.size() > LargestStatisticsPage) {
        m_lastRecordKey = key; // one record is enough for a page that stays as it is
        recordFailure(Recording, {platform::Failure::Overflow,
                                  u"%1: too large a page, more than %2 bytes"_s.arg(
                                      path, QString::number(LargestStatisticsPage))});
        return;
    }
    if (!isWhole(page, path) || fnStatsFilesEqual(contentOf(gRoot->StatsCacheFileName()), page)) {
        return;
    }
    if (!owes(page)) {
        m_owed.emplace(path, page);
    }
    const bool wanted = isWanted(m_owed->game);
    const bool settled = m_owed->settled.isValid() || !wanted || archiveReplayOf(m_owed->game);
    if (settled && owes(page)) {
        if (!m_owed->settled.isValid()) {
            m_owed->settled = settledAt(entry.lastModified(), wanted);
        }
        skipFailure([&] {
            writeCache(page, m_owed->settled);
            m_lastRecordKey = key;
            m_owed.reset();
        });
    }
}

bool clsTrackStats::isWhole(const QByteArray &page, const QString &path)
{
    constexpr int PatientLooks = 3;
    const bool whole = fnIsWholePage(page);
    m_cutLooks = whole ? 0 : m_cutLooks + 1;
    if (m_cutLooks == PatientLooks) {
        recordFailure(Recording, {platform::Failure::TypeMismatch,
                                  u"%1: no end of its table, in %2 looks in a row"_s.arg(
                                      path, QString::number(PatientLooks))});
    }
    return whole;
}

bool clsTrackStats::owes(const QByteArray &page) const
{
    return m_owed && fnStatsFilesEqual(m_owed->page, page);
}
