#pragma once

#include "GameFiles.h"
#include "MatchPlayer.h"
#include "ServerWindow.h"
#include "StatisticsPage.h"
#include "StatusResponder.h"
#include "Switches.h"

#include <QObject>
#include <QTimer>

#include <functional>

class EventLog;

/// The simulated server: puts window, answers, matches and files together and misbehaves as the
/// switches ask.
class SimulatedServer : public QObject
{
public:
    SimulatedServer(const Settings &settings, EventLog &log, const QString &directory);

    /// From here on everything happens in the event loop.
    void start();

private:
    void showWindows();
    void serve();
    void scheduleFaults();
    void after(std::optional<int> delay, const std::function<void()> &action);
    void closeRequested();
    void hang();
    void end(int code);
    void matchEnded();
    void updateText();
    ServerStatus status() const;
    QString describeServer() const;

    Settings m_settings;
    EventLog &m_log;
    GameFiles m_files;
    GameSettings m_game;
    MatchPlayer m_match;
    StatusResponder m_responder;
    StatisticsPageWriter m_page;
    ServerWindow m_window;
    ServerWindow m_console;
    QTimer m_textTimer;
};
