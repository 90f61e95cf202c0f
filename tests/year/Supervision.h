#pragma once

#include "Settings.h"
#include "require.h"

#include <algorithm>
#include <utility>

/// What is to be seen of the servers and the tool at one moment.
struct Sight
{
    qint64 now = 0;
    int running = 0; ///< the server's process, or 0
    int started = 0; ///< by the tool, since the last look
    bool endedByOthers = false;
    bool answers = false;
    bool window = false;
    bool startable = true;
    bool refused = false; ///< starting one fails, and can be told in the log
    bool stoppable = true;
    qint64 told = 0; ///< when the log last told so
    Settings settings = {};
    int held = 0;      ///< the process that the tool holds, or 0
    bool well = false; ///< so the tool says
};

/// What must be true of the server's supervision: a server that hangs or ends is back within its
/// bound, one started by hand is held, none is started beside another or when nobody wants one,
/// none is stopped that answers, and a restart that fails is told.
class Supervision
{
public:
    void look(const Sight &sight)
    {
        require(sight.started == 0 || !m_unwanted, "a server nobody wants is started");
        if (!std::equal(m_before.settings.begin(), m_before.settings.begin() + IntervalCount,
                        sight.settings.begin())) {
            m_runOn = sight.now + LongestInterval;
        }
        if (m_before.running != 0 && m_before.running != sight.running) {
            lookAtEnd(sight);
        }
        m_unwanted = m_unwanted && sight.running == 0 &&
                     sight.settings[RestartEnded] <= m_before.settings[RestartEnded];
        m_owed = m_owed && sight.running == 0 && sight.settings[m_owedBy] != 0;
        noteSilence(sight);
        const qint64 begin = 1000LL * sight.settings[Startup] + 2LL * sight.settings[Polling];
        const std::pair<qint64, const char *> bounds[] = {
            {0, ""},
            {Look + Slack, "an ended server is not started again"},
            {2 * Look + Slack, "a running server is not held"}, // an ended one may be held first
            {begin + Answer + 2 * Look, "an answering server is not known to be well"},
            {begin + 3 * Answer + 1000LL * sight.settings[Timeout] + Look,
             "a hung server is not restarted"},
            {Look + Slack, "a restart that fails is not told"}};
        const Need need = needOf(sight);
        const auto &[bound, violation] = bounds[static_cast<int>(need)];
        if (need != m_need || m_disturbed || sight.running != m_before.running ||
            sight.settings != m_before.settings) {
            m_need = need;
            m_due = std::max(sight.now, m_runOn) + bound;
        }
        require(need == Need::Nothing || sight.now <= m_due, violation);
        m_before = sight;
        m_disturbed = false;
    }
    /// Something that bounds do not count: all begin anew.
    void disturb() { m_disturbed = true; }
    void operatorCommands(bool start)
    {
        m_owed = false; // a failing start of his is no promise to try on
        m_unwanted = !start;
        if (!start) {
            forgetServer();
        }
    }
    void toolStarted(bool startsServer)
    {
        operatorCommands(startsServer);
        forgetServer();
    }

private:
    static constexpr qint64 Answer = 5000; ///< how long the tool waits for one
    static constexpr qint64 Look = 3000;   ///< from one look after the server to the next
    static constexpr qint64 Slack = 1000;
    static constexpr qint64 LongestInterval = 80'000; ///< with what follows it
    static constexpr qint64 LongestPolling = 20'000;

    enum class Need { Nothing, Restart, Hold, Notice, Replace, Tell };

    /// Whatever becomes of it, now its silence counts anew.
    void forgetServer() { m_before.running = m_before.held = 0; }
    void lookAtEnd(const Sight &sight)
    {
        const bool byTool = !sight.endedByOthers;
        // A request of a silence may have been under way, and one more after it.
        const bool answered = sight.now - m_silentUntil > 2 * Answer + Slack;
        if (byTool) {
            const qint64 timeout = Answer + 1000LL * sight.settings[Timeout] - Slack;
            require(!answered || m_disturbed, "a server is stopped that answers");
            const qint64 seen = m_disturbed ? m_silentUntil : sight.now;
            require(seen - m_silentSince >= timeout || sight.now < m_runOn,
                    "a server is stopped after a short silence");
            require(m_before.settings[RestartHung] + sight.settings[RestartHung] > 0,
                    "a server is stopped that nobody wants to be restarted");
        }
        m_owed = m_before.held == m_before.running;
        m_owedBy = byTool ? RestartHung : RestartEnded;
        m_unwanted =
            m_owed && answered && sight.settings[m_owedBy] + m_before.settings[m_owedBy] == 0;
        m_ended = sight.now;
    }
    void noteSilence(const Sight &sight)
    {
        if (!sight.answers || m_disturbed) {
            m_answersSince = sight.now;
        }
        // One that answers for a moment may not have been asked.
        if (sight.now - m_answersSince > LongestPolling + Answer ||
            sight.running != m_before.running) {
            m_silentSince = sight.now;
        }
        if (!sight.answers) {
            m_silentUntil = sight.now;
        }
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
    qint64 m_runOn = 0; ///< so long may timers run that other settings have set
    qint64 m_answersSince = 0;
    qint64 m_silentSince = 0;
    qint64 m_silentUntil = 0;
    qint64 m_ended = 0;
    Need m_need = Need::Nothing;
    qint64 m_due = 0;
    bool m_disturbed = true;
    bool m_unwanted = false;
    bool m_owed = false;
    SettingIndex m_owedBy = RestartEnded;
};
