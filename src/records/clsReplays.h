#pragma once

#include "platform/Timer.h"

#include <QByteArray>
#include <QString>

class QFileInfo;
struct Routine;

/// Keeps a copy of the replay of every match. The game overwrites its one replay file after each
/// match; a copy is named after the time of the replay's last change, so that the order of names
/// is the order of matches: "2004_03_15_21_07_09_Castle_replay.rpf". The folder holds at most as
/// many replays as the option `ReplayCount` says, one at least; the oldest makes place for a new
/// one, once that is written whole beside it. Where the disk is too full for that, the oldest makes
/// place before, once a match, unless its place is not enough.
///
/// A replay whose time stands in the name of an archived one, or that was archived in this run and
/// deleted since, is that of an earlier match.
class clsReplays
{
public:
    /// Archives the game's replay with the name of the match's map, which may be empty. True when
    /// the match's replay is kept now; so it is, too, when the tool was ended after it was
    /// archived and before the statistics cache was written.
    ///
    /// False means to try again until the next match's page comes. There may be no replay yet, or
    /// that of an earlier match, or one that was changed within the last 3 s, so that the game may
    /// still write it. Any other reason is recorded, once a match.
    ///
    /// The message loop runs once a file while the folder is listed, so timers, sockets and the
    /// operator act meanwhile.
    bool ArchiveReplay(const QString &Name);

    /// The path of the copy that was last archived.
    const QString &lastFile() const { return m_lastFile; }

    /// Nothing is archived any more.
    void Release();

    // Of the interface, without a user here.
    /// Deletes the oldest replay if the folder is full, which ArchiveReplay() does by itself. False
    /// when it failed, which is recorded, or when the archive was released meanwhile.
    bool MaintainReplayDirectory();
    /// A timer that is only stored.
    void setTimerControl(const platform::Timer *timer) { m_timer = timer; }

private:
    struct Folder
    {
        QString path = {};
        int replays = 0;
        QString smallestName = {};
        qint64 smallestSize = 0; ///< of the file of that name
        bool hasStamp = false;   ///< whether a replay's name begins with the stamp in question
    };

    bool archive(const QFileInfo &replay, const QString &stamp, const QString &target,
                 Routine &step);
    void write(const QByteArray &content, const QString &target, const Folder &folder,
               Routine &step);
    Folder listFolder(const QString &path, const QString &stamp = {}) const;
    Folder listOnce(const QString &path, const QString &stamp) const;
    static bool isFull(const Folder &folder);
    static bool helpsToDelete(const Folder &folder, qint64 wanted);
    static void deleteOldest(const Folder &folder);

    QString m_lastFile;
    // A stamp is a replay's time as the names of its copies begin with it.
    QString m_lastStamp;     ///< of the replay that was last archived, or found to be
    QString m_stampUnderWay; ///< of the one that is being archived, while the folder is listed
    QString m_roomMadeFor;   ///< the path that a replay was last deleted for on a full disk
    const platform::Timer *m_timer = nullptr;
    bool m_released = false;
};
