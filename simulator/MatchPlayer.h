#pragma once

#include "StatusReply.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

/// One player's numbers in a match. Hits never exceed shots, kills never exceed hits.
struct PlayerScore
{
    QString name;
    QString team;
    QString soldier;
    bool alive = true;
    int shotKills = 0;  ///< with guns
    int blastKills = 0; ///< with explosives
    int gunShots = 0;
    int blastShots = 0;
    int shotHits = 0;
    int blastHits = 0;
    int teamKills = 0;
    int deaths = 0;
};

/// A place where matches are played.
struct Scene
{
    QString map;
    QString mission;
    QString gameType;
};

/// Plays match after match: a joining phase, then a playing phase, on one scene after the other.
/// The final scores of a match are drawn from a pseudo random sequence when it begins and grow
/// evenly towards it, so the n-th match of every run ends alike, however long it lasts.
class MatchPlayer : public QObject
{
    Q_OBJECT

public:
    explicit MatchPlayer(const Settings &settings);

    void start();

    const Scene &scene() const;
    MatchState state() const { return m_state; }
    int matchNumber() const { return m_matchNumber; } ///< 1 for the first
    double matchLengthSeconds() const;                ///< 0: no limit
    double elapsedSeconds() const;                    ///< 0 while players join
    const QStringList &playerNames() const { return m_names; }
    QList<PlayerScore> scores() const;      ///< at this moment
    QList<PlayerScore> finalScores() const; ///< of those who are left when the match ends

Q_SIGNALS:
    void started();
    void ended(); ///< the match that is over is still the current one

private:
    void join();
    void play();
    void end();
    void drawGoals();

    QStringList m_names;
    int m_length;  ///< milliseconds; 0: no limit
    int m_joining; ///< milliseconds
    bool m_blank;
    int m_matchNumber = 0;
    MatchState m_state = MatchState::Joining;
    QList<PlayerScore> m_goals; ///< what the players will have at the end
    QTimer m_phase;
    QElapsedTimer m_clock; ///< runs since the match began
};
