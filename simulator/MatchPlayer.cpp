#include "MatchPlayer.h"

#include "PseudoRandom.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

const std::array Scenes = {
    Scene{u"Castle"_s, u"Hold the Gate"_s, u"Team"_s},
    Scene{u"Harbour"_s, u"Night Shift"_s, u"Solo"_s},
    Scene{u"River Crossing"_s, u"Two Banks"_s, u"Team"_s},
    Scene{u"Old Mill"_s, u"Last Light"_s, u"Cooperative"_s},
};

const std::array Soldiers = {u"Rifleman"_s, u"Support"_s, u"Sniper"_s, u"Demolitions"_s};

/// The growth of a match without an end: the goals are reached after this many seconds.
constexpr double EndlessPaceSeconds = 600;

QStringList namesOf(int count, const QString &first)
{
    QStringList names = {first.isEmpty() ? u"Jäger"_s : first, u"Falcon"_s, u"[ZS]Otter"_s,
                         u"Lynx & Co"_s, u"Grünspan"_s};
    while (names.size() < count) {
        names.append(u"Recruit %1"_s.arg(names.size() + 1));
    }
    return names.mid(0, count);
}

int part(int goal, double progress)
{
    return static_cast<int>(goal * progress);
}

/// A player's score when that share of the way to the goal is done.
PlayerScore scoreAt(PlayerScore goal, double progress)
{
    for (int PlayerScore::*const member :
         {&PlayerScore::shotKills, &PlayerScore::blastKills, &PlayerScore::gunShots,
          &PlayerScore::blastShots, &PlayerScore::shotHits, &PlayerScore::blastHits,
          &PlayerScore::teamKills, &PlayerScore::deaths}) {
        goal.*member = part(goal.*member, progress);
    }
    goal.alive = goal.alive || progress < 1;
    return goal;
}

} // namespace

MatchPlayer::MatchPlayer(const Settings &settings)
    : m_names(namesOf(settings.players, settings.playerName)),
      m_length(settings.matchLength.value_or(0)), m_joining(settings.joining.value_or(0)),
      m_blank(settings.blankMatches)
{
    m_phase.setSingleShot(true);
    m_phase.setTimerType(Qt::PreciseTimer);
    connect(&m_phase, &QTimer::timeout, this, [this] {
        if (m_state == MatchState::Joining) {
            play();
        } else {
            end();
        }
    });
}

void MatchPlayer::start()
{
    join();
}

const Scene &MatchPlayer::scene() const
{
    return Scenes.at(static_cast<std::size_t>(std::max(m_matchNumber - 1, 0)) % Scenes.size());
}

double MatchPlayer::matchLengthSeconds() const
{
    return m_length / 1000.0;
}

double MatchPlayer::elapsedSeconds() const
{
    if (m_state != MatchState::Playing) {
        return 0;
    }
    const double elapsed = static_cast<double>(m_clock.elapsed()) / 1000.0;
    return m_length > 0 ? std::min(elapsed, matchLengthSeconds()) : elapsed;
}

QList<PlayerScore> MatchPlayer::scores() const
{
    const double pace = m_length > 0 ? matchLengthSeconds() : EndlessPaceSeconds;
    const double progress = m_blank ? 0 : elapsedSeconds() / pace;
    QList<PlayerScore> scores;
    for (const PlayerScore &goal : m_goals) {
        scores.append(scoreAt(goal, progress));
    }
    return scores;
}

QList<PlayerScore> MatchPlayer::finalScores() const
{
    return m_blank ? scores().mid(0, 1) : m_goals;
}

void MatchPlayer::join()
{
    ++m_matchNumber;
    m_state = MatchState::Joining;
    drawGoals();
    m_phase.start(m_joining);
}

void MatchPlayer::play()
{
    m_state = MatchState::Playing;
    m_clock.start();
    if (m_length > 0) {
        m_phase.start(m_length);
    }
    Q_EMIT started();
}

void MatchPlayer::end()
{
    Q_EMIT ended();
    join();
}

void MatchPlayer::drawGoals()
{
    PseudoRandom random(static_cast<quint32>(m_matchNumber));
    m_goals.clear();
    for (const QString &name : m_names) {
        PlayerScore goal;
        goal.name = name;
        goal.team = m_goals.size() % 2 == 0 ? u"Red"_s : u"Blue"_s;
        goal.soldier = Soldiers.at(random.next() % Soldiers.size());
        goal.shotKills = 1 + random.below(12);
        goal.blastKills = random.below(5);
        goal.shotHits = goal.shotKills + random.below(20);
        goal.blastHits = goal.blastKills + random.below(3);
        goal.gunShots = goal.shotHits + random.below(150);
        goal.blastShots = goal.blastHits + random.below(6);
        goal.teamKills = random.below(8) == 0 ? 1 : 0;
        goal.deaths = random.below(9);
        goal.alive = goal.deaths % 2 == 0;
        m_goals.append(goal);
    }
}
