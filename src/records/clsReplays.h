#pragma once

#include "platform/Timer.h"

#include <QDateTime>
#include <QString>

/// Keeps a copy of the replay of every match. The game overwrites its one replay file after each
/// match; a copy is named after the time of the replay's last change, so that the order of names
/// is the order of matches: "2004_03_15_21_07_09_Castle_replay.rpf". The folder holds at most as
/// many replays as the option `ReplayCount` says, one at least; the oldest makes place for a new
/// one.
class clsReplays
{
public:
    /// Keeps a reference to a timer, which is not used.
    void setTimerControl(const platform::Timer *timer) { m_timer = timer; }

    /// Archives the game's replay with the name of its map, which may be empty. Nothing happens
    /// when there is no replay or when it is archived already. A failure is recorded; no other
    /// replay is deleted for one that cannot be read.
    void ArchiveReplay(const QString &Name);

    /// Deletes the oldest replay if the folder is full. The message loop runs once a file while
    /// the folder is listed, so timers, sockets and the operator act meanwhile. False when it
    /// failed, which is recorded, or when the archive was released meanwhile.
    bool MaintainReplayDirectory();

    /// Nothing is archived any more.
    void Release();

private:
    struct Folder
    {
        int replays = 0;
        QString smallestName;
    };

    Folder listFolder(const QString &path) const;

    QString m_lastArchived;
    /// What is being archived while the folder is listed; the same match may be reported then.
    QString m_underWay;
    const platform::Timer *m_timer = nullptr;
    bool m_released = false;
};
