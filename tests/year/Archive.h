#pragma once

#include "Settings.h"
#include "require.h"

#include <QByteArray>
#include <QMap>

#include <algorithm>
#include <optional>
#include <utility>

/// What must be true of the archive: the replay of every match that is wanted is kept, once and
/// whole, and the folder keeps within its size and gives up its oldest alone.
class Archive
{
public:
    using Folder = QMap<QString, QByteArray>; ///< the replays by name

    /// A match ends; its page and its replay come when they come. Where the tool may still be busy
    /// with the one before, or has not kept it, the replays may be taken for one another's.
    void matchEnds(qint64 now)
    {
        const Replay &before = m_replays[m_stamp];
        m_isClear = isCalm(now) && (before.kept || !before.wanted);
        m_missing = 2;
    }
    /// The game has written the match's whole page.
    void pageWritten(int players)
    {
        m_players = players;
        --m_missing;
        disturb();
    }
    /// The game has written its replay, or a part of it.
    void replayWritten(const QString &stamp, const QByteArray &content, bool whole)
    {
        m_stamp = stamp;
        m_replays[stamp].content = content;
        m_missing -= whole ? 1 : 0;
        disturb();
    }
    /// Bounds begin anew, and where the disk is full, room may be made once more.
    void disturb()
    {
        m_calmSince.reset();
        m_mayMakeRoom = true;
    }
    /// For a moment the match may not have been wanted.
    void settingChanges() { m_isClear = false; }

    /// `trouble`: nothing can be archived, or perhaps not.
    void look(qint64 now, const Settings &settings, bool trouble)
    {
        const bool records = settings[Record] != 0;
        const bool wanted = records && m_players > (settings[SkipBlank] != 0 ? 1 : 0);
        if (trouble || !records) {
            m_calmSince.reset();
        } else if (!m_calmSince) {
            m_calmSince = now;
        }
        Replay &replay = m_replays[m_stamp];
        replay.wanted = replay.wanted || (wanted && !replay.isPast);
        replay.isPast = replay.isPast || (isCalm(now) && m_missing == 0);
        require(!isCalm(now) || !m_isClear || m_missing > 0 || !wanted || replay.kept,
                "a replay is not kept: ", m_stamp);
    }
    /// The folder as it is now. A disk without room for a new replay may have cost the oldest, if
    /// its room, and that which is free, is enough.
    void lookAt(const Folder &folder, const Settings &settings, bool trouble, qint64 freeSpace)
    {
        const Folder before = std::exchange(m_folder, folder);
        qsizetype added = 0;
        for (const auto &[name, content] : folder.asKeyValueRange()) {
            require(content == before.value(name, content), "a kept replay has changed: ", name);
            if (!before.contains(name)) {
                ++added;
                lookAtNew(name, content);
            }
        }
        const qsizetype removed = before.size() + added - folder.size();
        for (const QString &name : before.keys().first(removed)) {
            require(!folder.contains(name), "the oldest replay is not gone");
        }
        const qsizetype limit = std::max(settings[ReplayCount], 1);
        const bool isFull = before.size() >= limit;
        require(removed == 0 || isFull || trouble, "the folder was not full");
        if (removed > added) {
            const qint64 room = freeSpace + before.first().size();
            require(trouble && removed == added + 1, "too many replays are gone");
            require(room >= m_replays[m_stamp].content.size(), "room is made in vain");
            require(isFull || std::exchange(m_mayMakeRoom, false), "room is made more than once");
        }
        require(added == 0 || folder.size() <= std::max(limit, before.size()),
                "the folder has become too large");
    }

private:
    static constexpr qint64 Look = 50'000; ///< from one at the page to the next, and a rest

    struct Replay
    {
        QByteArray content;
        bool wanted = false; ///< at some moment
        bool isPast = false; ///< the tool has kept it or not
        bool kept = false;
    };

    /// The tool has done all that there was to do.
    bool isCalm(qint64 now) const { return m_calmSince && now - *m_calmSince > Look; }
    void lookAtNew(const QString &name, const QByteArray &content)
    {
        Replay &replay = m_replays[name.left(QStringLiteral("yyyy_MM_dd_HH_mm_ss_").size())];
        require(replay.wanted, "a replay of no match that is wanted is kept: ", name);
        require(content == replay.content, "a replay is kept cut off: ", name);
        require(!std::exchange(replay.kept, true), "a replay is kept twice: ", name);
    }

    int m_players = -1; ///< on the page
    QString m_stamp;    ///< of the game's replay
    int m_missing = 0;  ///< of the last match's page and replay
    bool m_isClear = false;
    bool m_mayMakeRoom = true;
    QMap<QString, Replay> m_replays; ///< by stamp
    std::optional<qint64> m_calmSince;
    Folder m_folder;
};
