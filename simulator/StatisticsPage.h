#pragma once

#include "MatchPlayer.h"

#include <QByteArray>
#include <QDateTime>
#include <QTimer>

class EventLog;

/// The page about a finished match, Windows-1252 with CR LF line ends:
///
///     line 1-3   head of the document
///     line 4     ... Mission Stats (Wed Jun 18 20:51:40 2003     <- the year ends the line
///     line 5     ) ... (map's name) ...
///     line 6-7   the table's begin and its headings
///     then three lines for each player:
///                <TR>
///                <TD>name</TD><TD>team</TD> ... fourteen cells
///                </TR>
///     last       </TABLE>, followed by the end of the document
///
/// The cells are: name, team, soldier, status, gun and blast kills, gun and blast shots, gun and
/// blast hits, gun and blast accuracy in per cent, team kills, deaths.
QByteArray statisticsPage(const QString &map, const QDateTime &ended,
                          const QList<PlayerScore> &scores);

/// Writes the page to its file, replacing it whole or, to show a page in progress, by halves.
class StatisticsPageWriter
{
public:
    /// A pause (milliseconds) between the halves makes the file hold the first half meanwhile.
    StatisticsPageWriter(EventLog &log, QString fileName, std::optional<int> pause);

    void write(const QByteArray &page);

private:
    void writeFirstHalf();
    void writeWhole();

    EventLog &m_log;
    QString m_fileName;
    std::optional<int> m_pause;
    QByteArray m_page;
    QTimer m_secondHalf;
};
