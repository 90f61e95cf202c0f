#include "SimulatedServer.h"

#include "EventLog.h"

#include <QCoreApplication>
#include <QSemaphore>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int TextInterval = 500; ///< milliseconds between two updates of the window
constexpr int OrdinarySlots = 16; ///< more players than that make the server larger
constexpr qsizetype PlayersShown = 12;

QString clockText(double seconds)
{
    const int whole = static_cast<int>(seconds);
    return u"%1:%2"_s.arg(whole / 60, 2, 10, QChar(u'0')).arg(whole % 60, 2, 10, QChar(u'0'));
}

QString timeText(const ServerStatus &status)
{
    if (status.matchState == MatchState::Joining) {
        return u"joining"_s;
    }
    return status.matchLengthSeconds > 0
               ? clockText(status.matchLengthSeconds - status.elapsedSeconds)
               : u"no limit"_s;
}

QString scoreLines(const QList<PlayerScore> &scores)
{
    QString text;
    for (const PlayerScore &score : scores.mid(0, PlayersShown)) {
        text += u"  %1 %2 kills %3 deaths\n"_s.arg(score.name.leftJustified(20))
                    .arg(score.shotKills + score.blastKills, 4)
                    .arg(score.deaths, 4);
    }
    if (scores.size() > PlayersShown) {
        text += u"  and %1 more\n"_s.arg(scores.size() - PlayersShown);
    }
    return text;
}

} // namespace

SimulatedServer::SimulatedServer(const Settings &settings, EventLog &log, const QString &directory)
    : m_settings(settings), m_log(log), m_files(log, directory), m_match(settings),
      m_responder(log, [this] { return statusReply(status(), m_settings.badReply); }),
      m_page(log, m_files.statisticsPageName(), settings.pageHalves), m_window(settings.caption),
      m_console(u"Ghost Recon Console"_s)
{
    connect(&m_window, &ServerWindow::closeRequested, this, &SimulatedServer::closeRequested);
    connect(&m_console, &ServerWindow::closeRequested, &m_console, &QWidget::hide);
    connect(&m_match, &MatchPlayer::started, this,
            [this] { m_log.record(u"match-started "_s + m_match.scene().map); });
    connect(&m_match, &MatchPlayer::ended, this, &SimulatedServer::matchEnded);
    connect(&m_textTimer, &QTimer::timeout, this, &SimulatedServer::updateText);
}

void SimulatedServer::start()
{
    m_files.createMissing();
    m_game = m_files.readSettings();
    if (m_settings.serve) {
        serve();
    }
    scheduleFaults();
    updateText();
    m_textTimer.start(TextInterval);
    if (m_settings.windowDelay) {
        after(m_settings.windowDelay, [this] { showWindows(); });
    } else {
        showWindows();
    }
}

void SimulatedServer::showWindows()
{
    m_window.show();
    if (m_settings.secondWindow) {
        m_console.setText(u"Console of the simulated server"_s);
        m_console.show();
        m_console.raise();
    }
}

void SimulatedServer::serve()
{
    if (!m_responder.listen()) {
        m_log.complain(u"port-taken"_s);
    }
    m_responder.setReady(!m_settings.startDelay);
    m_responder.setDelay(m_settings.answerDelay.value_or(0));
    m_match.start();
}

void SimulatedServer::scheduleFaults()
{
    after(m_settings.startDelay, [this] { m_responder.setReady(true); });
    after(m_settings.muteAfter, [this] {
        m_responder.mute();
        m_log.record(u"muted"_s);
    });
    after(m_settings.hangAfter, [this] { hang(); });
    after(m_settings.exitAfter, [this] { end(m_settings.exitCode); });
}

/// Nothing happens when there is no delay: that switch was not given.
void SimulatedServer::after(std::optional<int> delay, const std::function<void()> &action)
{
    if (!delay) {
        return;
    }
    auto *const timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, action);
    timer->start(*delay);
}

void SimulatedServer::closeRequested()
{
    m_log.record(u"close-request"_s);
    if (!m_settings.ignoreClose) {
        end(0);
    }
}

/// Blocks the event loop for ever, without using the processor: nobody releases the semaphore.
void SimulatedServer::hang()
{
    m_log.record(u"hanging"_s);
    QSemaphore never;
    never.acquire();
}

void SimulatedServer::end(int code)
{
    m_log.record(u"ending code=%1"_s.arg(code));
    QCoreApplication::exit(code);
}

/// The replay is written before the page: whoever sees the new page finds the match's replay.
void SimulatedServer::matchEnded()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QString map = m_match.scene().map;
    m_files.writeReplay(m_match, now);
    m_page.write(statisticsPage(map, now, m_match.finalScores()));
    m_log.record(u"match-ended "_s + map);
}

void SimulatedServer::updateText()
{
    m_window.setText(m_settings.serve ? describeServer()
                                      : u"Simulated game server\n\n"
                                        "Started without -autoserve: it serves "
                                        "nothing."_s);
}

ServerStatus SimulatedServer::status() const
{
    const Scene &scene = m_match.scene();
    ServerStatus status;
    status.serverName = m_settings.serverName.isEmpty() ? m_game.serverName : m_settings.serverName;
    status.map = scene.map;
    status.mission = scene.mission;
    status.gameType = scene.gameType;
    status.dedicated = m_settings.dedicated != 0;
    status.players = m_match.playerNames();
    status.maximumPlayers = std::max(m_settings.players, OrdinarySlots);
    if (status.dedicated) {
        status.players.prepend(u"Host"_s);
        ++status.maximumPlayers;
    }
    status.version = u"1.0 simulated"_s;
    status.mods = m_game.activeMods;
    status.matchState = m_match.state();
    status.elapsedSeconds = m_match.elapsedSeconds();
    status.messageOfTheDay = m_game.messageOfTheDay;
    status.matchLengthSeconds = m_match.matchLengthSeconds();
    return status;
}

QString SimulatedServer::describeServer() const
{
    const ServerStatus now = status();
    return u"Simulated game server, process %1\n\n"
           "Server:    %2\n"
           "Match:     %3\n"
           "Map:       %4 (%5, %6)\n"
           "Mods:      %7\n"
           "Time left: %8\n"
           "Queries:   %9 answered\n"_s.arg(
               QString::number(QCoreApplication::applicationPid()), now.serverName,
               QString::number(m_match.matchNumber()), now.map, now.mission, now.gameType, now.mods,
               timeText(now), QString::number(m_responder.answered())) +
           u"Players:   %1\n\n"_s.arg(m_match.playerNames().size()) + scoreLines(m_match.scores());
}
