#pragma once

#include "Settings.h"
#include "require.h"

#include <algorithm>
#include <utility>

/// What is to be seen of the servers and the tool at one moment.
struct Sight
{
    qint64 now = 0;
    Settings settings = {};
    int servers = 0; ///< of this directory, that run
    int running = 0; ///< the process of one, or 0
    int held = 0;    ///< the process that the tool holds, or 0
    int started = 0; ///< by the tool, since the last look
    bool endedByOthers = false;
    bool answers = false;
    bool window = false;
    bool stoppable = true;
    bool startable = true;
    bool refused = false; ///< starting one fails, and can be told in the log
    qint64 told = 0;      ///< when the log last told so
    bool well = false;    ///< so the tool says
};

/// What must be true of the server's supervision: a server that hangs or ends is back within its
/// bound, one started by hand is held, none is started beside another or when nobody wants one,
/// none is stopped that answers, and a restart that fails is told.
class Supervision
{
public:
    void look(const Sight &sight)
    {
        require(sight.servers <= 1, "two servers of one directory");
        noteSettings(sight);
        noteEnd(sight);
        noteSilence(sight);
        const qint64 begin = 1000LL * m_slowest[Startup] + 2LL * m_slowest[Polling];
        const std::pair<qint64, const char *> bounds[] = {
            {0, ""},
            {Look + Slack, "an ended server is not started again"},
            {2 * Look + Slack, "a running server is not held"}, // an ended one may be held first
            {begin + Answer + 2 * Look, "an answering server is not known to be well"},
            {begin + 3 * Answer + 1000LL * m_slowest[Timeout] + Look,
             "a hung one is not restarted"},
            {Look + Slack, "a restart that fails is not told"}};
        const Need need = needOf(sight);
        const auto &[bound, violation] = bounds[static_cast<int>(need)];
        if (need != m_need || m_disturbed || sight.running != m_before.running ||
            sight.settings != m_before.settings) {
            m_need = need;
            m_due = sight.now + bound;
        }
        require(need == Need::Nothing || sight.now <= m_due, violation);
        m_before = sight;
        m_disturbed = m_commanded = false;
    }
    /// Something that bounds do not count: all begin anew.
    void disturb() { m_disturbed = true; }
    void operatorCommands(bool start)
    {
        m_commanded = true;
        m_owed = false; // a failing start of his is no promise to try on
        m_unwanted = !start;
    }
    void toolStarted(bool startsServer)
    {
        operatorCommands(startsServer);
        m_disturbed = true;
        m_before.held = 0;
    }

private:
    static constexpr qint64 Answer = 5000; ///< how long the tool waits for one
    static constexpr qint64 Look = 3000;   ///< from one look after the server to the next
    static constexpr qint64 Slack = 1000;
    static constexpr qint64 LongestInterval = 65'000;

    enum class Need { Nothing, Restart, Hold, Notice, Replace, Tell };

    void noteSettings(const Sight &sight)
    {
        if (sight.settings != m_before.settings) {
            m_changed = sight.now;
            std::ranges::transform(m_slowest, sight.settings, m_slowest.begin(),
                                   [](int one, int other) { return std::max(one, other); });
            m_shortestTimeout = std::min(m_shortestTimeout, sight.settings[Timeout]);
        } else if (m_need == Need::Nothing && sight.now - m_changed > LongestInterval) {
            m_slowest = sight.settings;
            m_shortestTimeout = sight.settings[Timeout];
        }
    }
    void noteSilence(const Sight &sight)
    {
        if (!sight.answers || m_disturbed) {
            m_answersSince = sight.now;
        }
        // One that answers for a moment may not have been asked.
        if (sight.now - m_answersSince > m_slowest[Polling] + Answer ||
            sight.running != m_before.running) {
            m_silentSince = sight.now;
        }
        if (!sight.answers) {
            m_silentUntil = sight.now;
            m_silentFor = sight.now - m_silentSince;
        }
        m_wasUnstoppable = !sight.stoppable || (m_wasUnstoppable && sight.running != 0);
    }
    void noteEnd(const Sight &sight)
    {
        require(sight.started == 0 || !m_unwanted, "a server nobody wants is started");
        if (m_before.running != 0 && m_before.running != sight.running) {
            const bool byTool = !sight.endedByOthers && !m_commanded;
            // A request of the silence may have been under way, and one more after it.
            require(!byTool || sight.now - m_silentUntil <= 2 * Answer + Slack || m_disturbed,
                    "a server is stopped that answers");
            require(!byTool || m_silentFor >= Answer + 1000LL * m_shortestTimeout - Slack,
                    "a server is stopped after a short silence");
            require(!byTool || m_before.settings[RestartHung] + sight.settings[RestartHung] > 0,
                    "a server is stopped that nobody wants to be restarted");
            m_owed = m_before.held == m_before.running && !m_commanded;
            m_owedBy = byTool ? RestartHung : RestartEnded;
            m_ended = sight.now;
        }
        if (sight.running != 0) {
            m_owed = m_unwanted = false;
        }
        const bool both = sight.settings[RestartHung] != 0 && sight.settings[RestartEnded] != 0;
        m_owed = m_owed && sight.settings[m_owedBy] != 0 && (both || !m_wasUnstoppable);
    }
    Need needOf(const Sight &sight) const
    {
        if (sight.running == 0) {
            const bool isTold = !sight.refused || sight.told >= m_ended;
            const Need need = sight.startable ? Need::Restart : isTold ? Need::Nothing : Need::Tell;
            return m_owed ? need : Need::Nothing;
        }
        if (sight.held != sight.running) {
            return sight.window && sight.settings[Find] != 0 ? Need::Hold : Need::Nothing;
        }
        if (sight.answers) {
            return sight.well ? Need::Nothing : Need::Notice;
        }
        return sight.settings[RestartHung] != 0 && sight.stoppable ? Need::Replace : Need::Nothing;
    }

    Sight m_before;
    Settings m_slowest = {}; ///< of those in force for a while: timers run on
    int m_shortestTimeout = 0;
    qint64 m_changed = 0;
    qint64 m_answersSince = 0;
    qint64 m_silentSince = 0;
    qint64 m_silentUntil = 0;
    qint64 m_silentFor = 0; ///< the last time
    qint64 m_ended = 0;
    Need m_need = Need::Nothing;
    qint64 m_due = 0;
    bool m_disturbed = true;
    bool m_commanded = false;
    bool m_unwanted = false;
    bool m_owed = false;
    bool m_wasUnstoppable = false;
    SettingIndex m_owedBy = RestartEnded;
};
