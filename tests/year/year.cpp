#include "Step.h"

#include <QDeadlineTimer>

#include <exception>
#include <iostream>
#include <optional>

// The tool through weeks of matches and mishaps, one for each seed: 52 have 10,000 matches. What
// must never be is shown with its seed, its step and a short history that leads to it, too.
// Usage: zebek_year SECONDS SEED..., which goes on from the last one while there is time

namespace {

using History = std::vector<Step>;

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
            play(world, step);
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
        std::cout << "    " << textOf(step).toStdString() << std::endl;
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
