#pragma once

#include "World.h"

#include <cmath>
#include <functional>
#include <random>

/// What may happen. `longTailed`: most amounts are small, whatever the largest.
inline const struct Kind
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
    {"lose display", 5, 600, true,
     [](World &world, int seconds) { world.game.mood.hasNoDisplay = world.in(seconds); }},
    {"set", 80, 1'000, false, [](World &world, int amount) { world.set(amount); }},
    {"command", 12, 1, false, &World::command},
    {"fill disk", 20, 6, false, &World::fillDisk},
    {"lock", 20, 12, false, &World::lock},
    {"end tool", 35, 1'000, false, &World::endTool},
};

struct Step
{
    std::size_t kind;
    int amount;
};

/// What happens in the week of a seed.
inline std::vector<Step> weekOf(unsigned seed)
{
    constexpr int Count = 875; // of which some 192 are matches: 10,000 in 52 weeks
    std::mt19937 random(seed);
    // No distribution of the library's, for each library has its own.
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    int weights = 0;
    for (const Kind &kind : Kinds) {
        weights += kind.weight;
    }
    std::vector<Step> steps;
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

inline void play(World &world, const Step &step)
{
    Kinds[step.kind].happens(world, step.amount);
    world.wait(1);
}

inline QString textOf(const Step &step)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(Kinds[step.kind].name)).arg(step.amount);
}
