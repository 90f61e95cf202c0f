#pragma once

#include "require.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>
#include <utility>

/// What must be true of the error log: it is whole, and each record has its cause.
class Log
{
public:
    /// The routine, "Module|Routine", may make so many more records, but not more than the most.
    void allow(const QString &routine, int count, int most = 1000)
    {
        int &allowed = m_routines[routine].allowed;
        allowed = std::min(allowed + count, most);
        disturb();
    }
    /// Two for each thing that is written, and anew for each match: there may be two replays
    /// meanwhile.
    void allowFileFailures()
    {
        for (const char *routine : {"Options|Class_Terminate", "clsReplays|ArchiveReplay",
                                    "clsReplays|MaintainReplayDirectory"}) {
            allow(QLatin1String(routine), 2);
        }
    }
    /// What has failed may take longer to be told.
    void disturb() { m_isDisturbed = true; }

    void look(const QByteArray &log, qint64 now)
    {
        const QByteArray end = "</Errors>\n";
        const qsizetype old = std::max<qsizetype>(m_log.size() - end.size(), 0);
        require(log.startsWith(m_log.first(old)), "the log has lost a record");
        require(log.isEmpty() || log.endsWith(end), "the log is cut off");
        static const QRegularExpression record(
            QStringLiteral(" Module=\"(.*?)\" Routine=\"(.*?)\" .*?>(.*?)<"));
        auto records = record.globalMatch(QString::fromUtf8(log.mid(old)));
        for (; records.hasNext(); ++m_records) {
            const QRegularExpressionMatch match = records.next();
            Routine &routine = m_routines[match.captured(1) + u'|' + match.captured(2)];
            routine.told = now;
            require(--routine.allowed >= 0, "a record too many: ", match.captured(0));
        }
        m_log = log;
    }
    /// After a long calm nothing may be told any more.
    void pass(qint64 now, bool isCalm)
    {
        constexpr qint64 Long = 600'000;
        if (!isCalm || std::exchange(m_isDisturbed, false)) {
            m_calmSince = now;
        } else if (now - m_calmSince > Long) {
            for (auto &[name, routine] : m_routines) {
                routine.allowed = 0;
            }
        }
    }

    int records() const { return m_records; }
    /// When the routine has made one last, or 0.
    qint64 told(const QString &routine) { return m_routines[routine].told; }

private:
    struct Routine
    {
        int allowed = 0;
        qint64 told = 0;
    };

    std::map<QString, Routine> m_routines;
    QByteArray m_log;
    int m_records = 0;
    qint64 m_calmSince = 0;
    bool m_isDisturbed = false;
};
