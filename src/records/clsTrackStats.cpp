#include "records/clsTrackStats.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "records/basParse.h"
#include "records/clsGame.h"
#include "records/clsReplays.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString fnStatsFileName(const QDateTime &changed)
{
    return changed.toString(QStringLiteral("yyyy_M_d_H_m_s'_stats.htm'"));
}

/// Empty for a file that cannot be read.
QByteArray contentOf(const QString &path)
{
    QByteArray content;
    SkipFailure([&] { content = platform::readFile(path, LargestStatisticsPage + 1); });
    return content;
}

/// Overwrites the heading with the match's time, so that it does not count in a comparison.
void fnBlankStatsHeader(QByteArray &page)
{
    const QByteArray heading = QByteArrayLiteral("Mission Stats (");
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

void clsTrackStats::mobjTimer_Timer()
{
    if (gRoot->Options()->RecordReplays()) {
        RecordStatsFile();
    }
}

void clsTrackStats::RecordStatsFile()
{
    const QString path = fnGamePath(QStringLiteral("missionstats.htm"));
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
        gRoot->Errors()->RecordError(QStringLiteral("Stats Track Class"),
                                     QStringLiteral("RecordStatsFile"), QStringLiteral("Unknown"),
                                     platform::Failure::Overflow,
                                     QStringLiteral("%1: too large a page, more than %2 bytes")
                                         .arg(path, QString::number(LargestStatisticsPage)));
        return;
    }
    const QString cache = gRoot->StatsCacheFileName();
    if (fnStatsFilesEqual(contentOf(cache), page) || !fnIsWholePage(page)) {
        return;
    }
    SkipFailure([&] {
        platform::replaceFile(gRoot->Machine().files, cache, page,
                              platform::Durability::SurvivesPowerLoss);
    });
    m_lastRecordKey = key;
    clsGame game;
    game.LoadStatsFile(path, page);
    const clsOptions &options = *gRoot->Options();
    if (options.RecordReplays() && (!options.SkipBlankReplays() || game.PlayerCount() > 1)) {
        gRoot->Replays()->ArchiveReplay(game.Map());
    }
}
