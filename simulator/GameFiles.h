#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QString>

class EventLog;
class MatchPlayer;

/// Replaces a file whole: a reader sees the old content or the new one, nothing between. A
/// failure is complained about in the log.
void replaceFile(EventLog &log, const QString &fileName, const QByteArray &content);

/// What the server takes from its own files when it starts.
struct GameSettings
{
    QString serverName;
    QString messageOfTheDay;
    QString activeMods; ///< folder names, joined by ", "
};

/// The files in the game's directory, which is the program's own:
///
///     options.xml                         the game's settings
///     modsset.txt                         the active mods
///     Mods/<name>/ModsCont.txt            one folder for each mod, with its description
///     Data/Save/replay/defaultreplay.rpf  replay of the last match
///     missionstats.htm                    statistics of the last match
///
/// The text files are Windows-1252 with CR LF line ends.
class GameFiles
{
public:
    GameFiles(EventLog &log, const QString &directory);

    /// Makes what is missing of the settings, the mods and the folders; overwrites nothing.
    void createMissing() const;

    GameSettings readSettings() const;

    QString statisticsPageName() const;

    /// Rewrites the replay file:
    ///
    ///     text lines, each ending in LF: "SIMULATED REPLAY", match number, time of its end
    ///     (ISO 8601, local), map, number of players, then a line for each: name, tab, kills
    ///     an empty line, then 2048 to 6143 pseudo random bytes
    void writeReplay(const MatchPlayer &match, const QDateTime &ended) const;

private:
    void createMissing(const QString &name, const QByteArray &content) const;
    QStringList readActiveMods() const;

    EventLog &m_log;
    QDir m_directory;
};
