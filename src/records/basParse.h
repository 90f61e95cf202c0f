#pragma once

#include "platform/XmlDocument.h"

#include <QByteArray>
#include <QString>

/// Makes a record of a match from the game's statistics page.
///
/// The page, "missionstats.htm" in the game's directory, is text in the code page. The 4th line
/// has "Mission Stats (", weekday, month, day, time and, as its last four characters, the year; the
/// 5th the map's name in the first parentheses. Line 8, and then every third line, ends the table
/// when it is exactly "</TABLE>"; the line after each of them is a player's row when it begins with
/// "<TD>", with 14 cells of the form "<TD>text</TD>".
///
/// The record is a document with one element `Game` (attributes Version, Date, DateDouble,
/// DateAdded, SortKey2, Map, GameType, Inserts, TimeLimit, Winner, Loser, Draw1, Draw2, OrigPath)
/// and in it one `Player` a row (attributes Name, Team, Soldier, Status; elements ShotKills,
/// ExpKills, TotalKills, GunShots, ExpShots, TotalShots, ShotHits, ExpHits, TotalHits,
/// ShotAccuracy, ExpAccuracy, TotalAccuracy, TKs, Deaths). Dates are "yyyy-MM-dd HH:mm:ss" and day
/// numbers since 30 December 1899. A page without a match time has an empty Date, and no
/// DateDouble can be had of it.

/// A page of a thousand players has about half a MiB; more than this is none of the game's.
inline constexpr qint64 LargestStatisticsPage = 8LL * 1024 * 1024;

/// The record of the page with that content; `path` becomes the attribute OrigPath. A step that
/// fails is recorded and left out.
platform::XmlDocument xmlFromGamePage(const QByteArray &page, const QString &path);

/// Whether the page has the end of its table, which it lacks while the game still writes it.
bool fnIsWholePage(const QByteArray &page);
