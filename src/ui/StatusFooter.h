#pragma once

#include "ui/ServerState.h"

#include <QWidget>

class Link;
class ProblemLabel;
class QLabel;
class StateDot;

/// The line below the tabs that tells how the game server fares, and how many errors the log has,
/// with a link that opens it.
class StatusFooter : public QWidget
{
public:
    explicit StatusFooter(QWidget *parent = nullptr);

    void showState(const ServerState &state, const QString &toolTip);
    /// Why there is no server; nothing of it for an empty text.
    void showProblem(const QString &problem);
    /// Nothing of it for none.
    void showErrors(int count);
    /// What the keyboard can reach.
    QWidget *link() const;

private:
    StateDot *m_dot;
    QLabel *m_process;
    QLabel *m_network;
    Link *m_errors;
    ProblemLabel *m_problem;
    int m_count = 0;
};
