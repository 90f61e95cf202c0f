#pragma once

#include "core/ErrorLogFile.h"
#include "platform/Timer.h"

#include <QDate>
#include <QHash>
#include <QSet>
#include <QString>

/// The error log: one record per failure, on disk at once.
///
/// The file "ZEBEK_Error.xml" in the game's directory is an XML document (UTF-8) with the root
/// element `Errors` and one `Error` element a record, the oldest first. A record has the attributes
/// `DateTime` (local, "yyyy-MM-dd HH:mm:ss"), `Module`, `Routine`, `ID` and `ErrorNo` (decimal), in
/// this order, and the description as its text. The file grows until the operator deletes it, which
/// he may do at any time.
///
/// Whoever reaches the web site can cause failures as fast as he likes. At most 60 of the records
/// that strangers cause are made in a minute. What comes on top is counted, and the minute ends
/// with a record of the module "Error Log" that tells the count.
class clsErrors
{
public:
    /// Continues an existing log, else begins one, which comes onto the disk with its first record
    /// (see ErrorLogFile).
    clsErrors();

    /// Appends a record. Never fails: a record that cannot be saved now is on disk after the next
    /// successful save.
    void RecordError(const QString &Module, const QString &Routine, const QString &ID, int ErrorNo,
                     const QString &Description) noexcept;

    const QString &path() const { return m_file.path(); }
    /// How many records the log has, those of former runs too.
    int count();

    /// Whether a failure that strangers cause may be recorded now, as 60 a minute and 1000 a day
    /// may; counts it.
    bool admitsOneOfStrangers();

    /// Whether the hook may be told of a routine's failure: it was told of none for a minute.
    bool admitsEventOf(const QString &routine);

    /// Whether a routine that is tried again and again has not failed for this reason yet, since
    /// its reasons were last forgotten. It counts as known from now on.
    bool isNewReason(const QString &routine, const QString &reason);
    void forgetReasons(const QString &routine) { m_reasons.remove(routine); }

private:
    void tmrMinute_Timer();

    ErrorLogFile m_file;
    int m_count = 0;                         ///< when the file could last be looked at
    QHash<QString, QSet<QString>> m_reasons; ///< by the routine that they made fail
    QHash<QString, qint64> m_told;           ///< the clock's millisecond of a routine's last event
    platform::Timer tmrMinute;               ///< runs from the first failure of strangers on
    int m_byStrangers = 0;                   ///< their failures that were recorded in this minute
    int m_leftOut = 0;                       ///< those that were not
    QDate m_day;                             ///< of their last one
    int m_thatDay = 0;                       ///< how many were recorded then
};
