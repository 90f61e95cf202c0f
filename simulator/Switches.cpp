#include "Switches.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

struct Flag
{
    bool Settings::*member;
};

struct Time
{
    std::optional<int> Settings::*member;
    double unit; ///< milliseconds in one unit of the value
};

struct Number
{
    int Settings::*member;
    int least;
    int most;
};

struct Text
{
    QString Settings::*member;
};

struct Shape
{
    ReplyShape Settings::*member;
};

struct Switch
{
    const char *name;
    const char *value; ///< the value's name in the help; empty for a flag
    std::variant<Flag, Time, Number, Text, Shape> target;
    const char *help;
};

constexpr double Seconds = 1000;
constexpr double Milliseconds = 1;

using S = Settings;
const std::array Switches = {
    Switch{"-hang-after", "S", Time{&S::hangAfter, Seconds},
           "after S seconds neither answers nor reacts to anything, for ever"},
    Switch{"-mute-after", "S", Time{&S::muteAfter, Seconds},
           "after S seconds answers no more, but still closes on request"},
    Switch{"-ignore-close", "", Flag{&S::ignoreClose}, "ignores the request to close"},
    Switch{"-exit-after", "S", Time{&S::exitAfter, Seconds}, "ends by itself after S seconds"},
    Switch{"-exit-code", "N", Number{&S::exitCode, 0, 255}, "exit code of -exit-after (0)"},
    Switch{"-start-delay", "S", Time{&S::startDelay, Seconds},
           "answers nothing in the first S seconds"},
    Switch{"-window-delay", "S", Time{&S::windowDelay, Seconds},
           "shows its window only after S seconds"},
    Switch{"-answer-delay", "MS", Time{&S::answerDelay, Milliseconds},
           "answers each query MS milliseconds late"},
    Switch{"-caption", "TEXT", Text{&S::caption}, "caption of the window (Ghost Recon)"},
    Switch{"-second-window", "", Flag{&S::secondWindow},
           "opens a window \"Ghost Recon Console\" above the first"},
    Switch{"-match-length", "S", Time{&S::matchLength, Seconds},
           "playing time of a match (600); 0 is a match without an end"},
    Switch{"-joining", "S", Time{&S::joining, Seconds}, "joining time before each match (5)"},
    Switch{"-blank-matches", "", Flag{&S::blankMatches},
           "matches end without kills and with at most one player left"},
    Switch{"-page-halves", "MS", Time{&S::pageHalves, Milliseconds},
           "the whole statistics page follows its first half after MS milliseconds"},
    Switch{"-players", "N", Number{&S::players, 0, 200}, "number of players, 0 to 200 (5)"},
    Switch{"-player-name", "TEXT", Text{&S::playerName}, "name of the first player"},
    Switch{"-server-name", "TEXT", Text{&S::serverName},
           "name in the replies (MPGameName of options.xml)"},
    Switch{"-dedicated", "N", Number{&S::dedicated, 0, 1},
           "1 lists the server itself as first player, 0 does not (1)"},
    Switch{"-bad-reply", "KIND", Shape{&S::badReply},
           "spoils the replies: short, truncated or huge"},
    Switch{"-log", "FILE", Text{&S::logFile}, "appends one line per event to FILE"},
    Switch{"-help", "", Flag{&S::help}, "prints this table and ends"},
};

/// The number in the text when it is one and lies within the limits. "inf" and "nan" are none.
std::optional<double> numberWithin(const QString &text, double least, double most)
{
    bool isNumber = false;
    const double number = QLocale::c().toDouble(text, &isNumber);
    if (!isNumber || !std::isfinite(number) || number < least || number > most) {
        return std::nullopt;
    }
    return number;
}

/// Stores a switch's value; false when it is none of its kind.
struct Store
{
    Settings &settings;
    const QString &value;

    bool operator()(const Flag &flag) const
    {
        settings.*flag.member = true;
        return true;
    }

    bool operator()(const Time &time) const
    {
        constexpr int Longest = std::numeric_limits<int>::max();
        const auto number = numberWithin(value, 0, Longest / time.unit);
        if (number) {
            settings.*time.member = static_cast<int>(std::lround(*number * time.unit));
        }
        return number.has_value();
    }

    bool operator()(const Number &kind) const
    {
        const auto number = numberWithin(value, kind.least, kind.most);
        if (!number || *number != std::floor(*number)) {
            return false;
        }
        settings.*kind.member = static_cast<int>(*number);
        return true;
    }

    bool operator()(const Text &text) const
    {
        settings.*text.member = value;
        return true;
    }

    bool operator()(const Shape &shape) const
    {
        static const QStringList names = {u"whole"_s, u"short"_s, u"truncated"_s, u"huge"_s};
        const qsizetype index = names.indexOf(value);
        if (index >= 0) {
            settings.*shape.member = static_cast<ReplyShape>(index);
        }
        return index >= 0;
    }
};

const Switch *findSwitch(const QString &name)
{
    const auto *const found = std::ranges::find_if(
        Switches, [&name](const Switch &entry) { return name == QLatin1String(entry.name); });
    return found == Switches.end() ? nullptr : found;
}

QString complaint(const char *what, const QString &about)
{
    return QLatin1String(what) + u' ' + about;
}

} // namespace

CommandLine readCommandLine(const QStringList &arguments)
{
    CommandLine line;
    line.settings.serve = !arguments.isEmpty() && arguments.first() == "-autoserve"_L1;
    for (qsizetype i = line.settings.serve ? 1 : 0; i < arguments.size(); ++i) {
        const QString &name = arguments.at(i);
        const Switch *const entry = findSwitch(name);
        if (entry == nullptr) {
            line.complaints.append(complaint("unknown-switch", name));
            continue;
        }
        const bool takesValue = !std::holds_alternative<Flag>(entry->target);
        if (takesValue && i + 1 == arguments.size()) {
            line.complaints.append(complaint("missing-value", name));
            continue;
        }
        const QString value = takesValue ? arguments.at(++i) : QString();
        if (!std::visit(Store{line.settings, value}, entry->target)) {
            line.complaints.append(complaint("bad-value", name + u' ' + value));
        }
    }
    return line;
}

QString switchHelp()
{
    QString text = u"GhostRecon.exe -autoserve [switches]\n"
                   "A simulated game server. Without -autoserve as its first "
                   "argument it only shows its window.\n\n"_s;
    for (const Switch &entry : Switches) {
        const QString left = QLatin1String(entry.name) + u' ' + QLatin1String(entry.value);
        text += u"  "_s + left.leftJustified(20) + QLatin1String(entry.help) + u'\n';
    }
    return text;
}
