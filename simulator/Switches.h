#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// How the status reply is spoilt on purpose.
enum class ReplyShape { Whole, Short, Truncated, Huge };

/// What the command line asks for. Times are milliseconds; one that is not given never comes.
struct Settings
{
    bool serve = false; ///< "-autoserve" is the first argument
    bool help = false;
    bool ignoreClose = false;
    bool secondWindow = false;
    bool blankMatches = false;
    std::optional<int> hangAfter;
    std::optional<int> muteAfter;
    std::optional<int> exitAfter;
    std::optional<int> startDelay;
    std::optional<int> windowDelay;
    std::optional<int> answerDelay;
    std::optional<int> pageHalves;
    std::optional<int> matchLength = 600'000; ///< 0: a match without an end
    std::optional<int> joining = 5'000;
    int exitCode = 0;
    int players = 5; ///< not counting the dedicated server's own entry
    int dedicated = 1;
    QString caption = QStringLiteral("Ghost Recon");
    QString playerName; ///< of the first player; empty: an invented one
    QString serverName; ///< empty: the name in the game's options file
    QString logFile;
    ReplyShape badReply = ReplyShape::Whole;
};

struct CommandLine
{
    Settings settings;
    QStringList complaints; ///< "unknown-switch X", "bad-value X Y", "missing-value X"
};

/// Reads the arguments, the program's name not among them. Nothing in them is fatal: operators
/// hand the game's own arguments on, which mean nothing here.
CommandLine readCommandLine(const QStringList &arguments);

/// The table of the switches as text for a terminal.
QString switchHelp();
