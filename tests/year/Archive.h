#pragma once

#include "Settings.h"
#include "require.h"

#include <QByteArray>
#include <QMap>

#include <algorithm>
#include <optional>

/// What must be true of the archive: the replay of every match that is wanted is kept, once and
/// whole, and the folder keeps within its size and gives up its oldest alone.
class Archive
{
public:
    using Folder = QMap<QString, QByteArray>; ///< the replays by name

    /// A match ends; its page and its replay come when they come.
    void matchEnds() { m_pageIsNew = m_replayIsNew = false; }
    /// The game has written the match's whole page.
    void pageWritten(int players, qint64 now)
    {
        const bool isDone = m_stamp.isEmpty() || m_kept.contains(m_stamp) ||
                            (m_pageIsSettled && m_written - m_pageWritten < LateReplay);
        m_isUnclear = m_isUnclear || (!m_replayIsNew && !isDone);
        m_players = players;
        m_pageWritten = now;
        m_pageIsNew = true;
        m_pageIsSettled = m_pageMayBeSettled = false;
        disturb();
    }
    /// The game has written its replay, or a part of it.
    void replayWritten(const QString &stamp, const QByteArray &content, bool whole, qint64 now)
    {
        const bool early = !m_pageIsNew && !m_pageIsSettled;
        m_stamp = stamp;
        m_replayIsNew = whole;
        m_written = now;
        m_replays[stamp] = {.content = content, .unclear = early || m_isUnclear};
        m_isUnclear = m_isUnclear && !whole;
        disturb();
    }
    /// Bounds begin anew.
    void disturb() { m_calmSince.reset(); }

    /// `trouble`: nothing can be archived, or perhaps not.
    void look(qint64 now, const Settings &settings, bool trouble)
    {
        const bool wanted =
            m_players >= 0 && settings[Record] != 0 && (m_players > 1 || settings[SkipBlank] == 0);
        if (trouble || settings[Record] == 0 || now - m_written < Rest) {
            m_calmSince.reset();
        } else if (!m_calmSince) {
            m_calmSince = now;
        }
        if (wanted && !m_stamp.isEmpty()) {
            m_replays[m_stamp].wanted = true;
        }
        m_pageMayBeSettled = m_pageMayBeSettled || (settings[Record] != 0 && !wanted);
        const bool calm = m_calmSince && now - *m_calmSince > Look;
        const bool kept = m_kept.contains(m_stamp);
        require(!calm || !wanted || kept || !m_pageIsNew || !m_replayIsNew || m_pageMayBeSettled ||
                    m_replays[m_stamp].unclear,
                "a replay is not kept: ", m_stamp);
        m_pageIsSettled = m_pageIsSettled || (calm && (kept || !wanted));
    }
    /// The folder as it is now.
    void lookAt(const Folder &folder, const Settings &settings, bool trouble)
    {
        qsizetype added = 0;
        for (const auto &[name, content] : folder.asKeyValueRange()) {
            if (!m_folder.contains(name)) {
                ++added;
                lookAtNew(name, content);
            }
            require(content == m_folder.value(name, content), "a kept replay has changed: ", name);
        }
        const qsizetype removed = m_folder.size() + added - folder.size();
        const qsizetype limit = std::max(settings[ReplayCount], 1);
        for (qsizetype index = 0; index < removed; ++index) {
            require(!folder.contains(m_folder.keys()[index]), "the oldest replay is not gone");
        }
        require(removed <= added + (trouble ? 1 : 0), "too many replays are gone");
        require(removed == 0 || trouble || m_folder.size() >= limit, "the folder was not full");
        require(added == 0 || folder.size() <= std::max(limit, m_folder.size()),
                "the folder has become too large");
        m_folder = folder;
    }

private:
    static constexpr qint64 Look = 46'000;       ///< from one look at the page to the next
    static constexpr qint64 Rest = 3'000;        ///< for which a replay is left alone
    static constexpr qint64 LateReplay = 14'000; ///< behind its page

    struct Replay
    {
        QByteArray content;
        bool wanted = false;  ///< at some moment
        bool unclear = false; ///< it may be taken for another match's, or another for its match's
    };

    void lookAtNew(const QString &name, const QByteArray &content)
    {
        const QString stamp = name.left(QStringLiteral("yyyy_MM_dd_HH_mm_ss_").size());
        require(m_replays.contains(stamp), "a replay of no match is kept: ", name);
        require(content == m_replays[stamp].content, "a replay is kept cut off: ", name);
        require(m_replays[stamp].wanted, "a replay that is not wanted is kept: ", name);
        require(!m_kept.contains(stamp), "a replay is kept twice: ", name);
        m_kept[stamp] = name;
    }

    int m_players = -1; ///< on the page
    qint64 m_pageWritten = 0;
    bool m_pageIsNew = false;
    bool m_pageIsSettled = true;     ///< it is certain that the tool is done with it
    bool m_pageMayBeSettled = false; ///< or possible
    QString m_stamp;                 ///< of the replay
    bool m_replayIsNew = false;
    qint64 m_written = 0;
    bool m_isUnclear = false;        ///< an earlier match's may be taken for this one's
    QMap<QString, Replay> m_replays; ///< by stamp
    QMap<QString, QString> m_kept;   ///< names by stamp
    std::optional<qint64> m_calmSince;
    Folder m_folder;
};
