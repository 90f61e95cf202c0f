#include "World.h"

#include <QDeadlineTimer>
#include <QNetworkProxyFactory>

#include <cmath>
#include <exception>
#include <functional>
#include <iostream>
#include <optional>
#include <random>

// The tool through weeks of matches and mishaps, one for each seed: 52 have a year's 10,000
// matches, though a week's take some 30 hours of the clock only, for little happens between them.
// What must never be is shown with its seed, its step and a short history that leads to it, too.
// Usage: zebek_year SECONDS SEED..., which goes on from the last one while there is time

namespace {

/// What may happen. `longTailed`: most amounts are small, whatever the largest.
const struct Kind
{
    const char *name;
    int weight;
    int largest;
    bool longTailed;
    std::function<void(World &, int)> happens; ///< with the amount
} Kinds[] = {
    {"wait", 330, 1'800'000, true, &World::wait},
    {"late", 40, 20'000, false, &World::late},
    {"suspend", 20, 30'000, true, &World::suspend},
    {"match", 190, 1 << 20, false, &World::match},
    {"hang", 40, 1'000, false, &World::hang},
    {"recover", 15, 0, false, [](World &world, int) { world.game.mood.hangs = false; }},
    {"end", 30, 0, false, [](World &world, int) { world.game.end(); }},
    {"start by hand", 10, 0, false, [](World &world, int) { world.game.startByHand(); }},
    {"slow", 10, 4, false, [](World &world, int seconds) { world.game.mood.slowness = seconds; }},
    {"refuse starts", 14, 600, true, &World::refuseStarts},
    {"cannot be forced", 8, 600, true,
     [](World &world, int seconds) { world.game.mood.cannotBeForced = world.in(seconds); }},
    {"lose display", 5, 600, true,
     [](World &world, int seconds) { world.game.mood.hasNoDisplay = world.in(seconds); }},
    {"set", 80, 1'000, false, [](World &world, int amount) { world.set(amount); }},
    {"command", 12, 1, false, &World::command},
    {"fill disk", 20, 6, false, &World::fillDisk},
    {"lock", 20, 12, false, &World::lock},
    {"move folder", 8, 600, true, &World::moveFolder},
    {"end tool", 35, 1'000, false, &World::endTool},
    {"junk data", 15, 300, true, &World::sendJunk},
    {"junk visits", 8, 150, true, &World::visit},
};

struct Step
{
    std::size_t kind;
    int amount;
};

using History = std::vector<Step>;

/// What happens in the week of a seed.
History weekOf(unsigned seed)
{
    constexpr int Count = 920; // of which some 192 are matches: 10,000 in 52 weeks
    std::mt19937 random(seed);
    // No distribution of the library's, for each library has its own.
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    int weights = 0;
    for (const Kind &kind : Kinds) {
        weights += kind.weight;
    }
    History steps;
    while (steps.size() < Count) {
        int left = below(weights);
        std::size_t at = 0;
        for (; left >= Kinds[at].weight; ++at) {
            left -= Kinds[at].weight;
        }
        const int linear = below(Kinds[at].largest + 1);
        const double share = below(10'001) / 10'000.0;
        const double tailed = std::pow(Kinds[at].largest, share);
        steps.push_back({at, Kinds[at].longTailed ? static_cast<int>(tailed) : linear});
    }
    return steps;
}

struct Violation
{
    std::string what;
    std::size_t steps; ///< the last of which has shown it

    bool isLike(const Violation &other) const
    {
        return what.substr(0, what.find(':')) == other.what.substr(0, other.what.find(':'));
    }
};

std::optional<Violation> play(const History &history)
{
    std::size_t steps = 0;
    try {
        World world;
        for (const Step &step : history) {
            ++steps;
            Kinds[step.kind].happens(world, step.amount);
            world.wait(1);
        }
        world.endWell();
        return std::nullopt;
    } catch (const std::exception &error) {
        return Violation{error.what(), steps};
    }
}

/// A history that ends in the like, without as many steps as can be left out.
History shrink(History history, const Violation &violation)
{
    history.resize(violation.steps);
    for (std::size_t size = history.size(); size > 0; size /= 2) {
        for (std::size_t at = 0; at < history.size();) {
            History shorter = history;
            const auto begin = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            const std::size_t length = std::min(size, shorter.size() - at);
            shorter.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
            const std::optional<Violation> left = play(shorter);
            if (left && left->isLike(violation)) {
                history = shorter;
                history.resize(left->steps);
            } else {
                at += size;
            }
        }
    }
    return history;
}

bool playWeek(unsigned seed)
{
    const std::optional<Violation> violation = play(weekOf(seed));
    std::cout << "week " << seed;
    if (!violation) {
        std::cout << " passed" << std::endl;
        return true;
    }
    std::cout << ", step " << violation->steps << ": " << violation->what << std::endl;
    for (const Step &step : shrink(weekOf(seed), *violation)) {
        std::cout << "    " << Kinds[step.kind].name << ' ' << step.amount << std::endl;
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(throw_on_failure, true);
    const QApplication application(argc, argv);
    QNetworkProxyFactory::setUseSystemConfiguration(false); // the game's socket stays here
    const QStringList arguments = QApplication::arguments();
    const QDeadlineTimer end(1000 * arguments.value(1).toLongLong());
    bool passed = true;
    unsigned seed = 0;
    for (const QString &argument : arguments.mid(2)) {
        seed = argument.toUInt();
        passed = playWeek(seed) && passed;
    }
    while (!end.hasExpired()) {
        passed = playWeek(++seed) && passed;
    }
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
