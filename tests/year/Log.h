#pragma once

#include "require.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>

/// What must be true of the error log: it is whole, and each record has its cause.
class Log
{
public:
    /// The routine, "Module|Routine", may make so many more records.
    void allow(const QString &routine, int count) { m_allowed[routine] += count; }
    /// Two for each thing that is written, and anew for each match: there may be two replays
    /// meanwhile.
    void allowFileFailures()
    {
        for (const char *routine : {"Options|Class_Terminate", "clsReplays|ArchiveReplay",
                                    "clsReplays|MaintainReplayDirectory"}) {
            allow(QLatin1String(routine), 2);
        }
    }
    void forgetCauses() { m_allowed.clear(); }

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
            const QString routine = match.captured(1) + u'|' + match.captured(2);
            m_told[routine] = now;
            require(--m_allowed[routine] >= 0, "a record too many: ", match.captured(0));
        }
        m_log = log;
    }

    int records() const { return m_records; }
    /// When the routine has made one last, or 0.
    qint64 told(const QString &routine) { return m_told[routine]; }

private:
    std::map<QString, int> m_allowed; ///< records, by routine
    std::map<QString, qint64> m_told; ///< when a routine has made its last
    QByteArray m_log;
    int m_records = 0;
};
