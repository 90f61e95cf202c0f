#include "platform/Timer.h"

#include "support/TurnedClock.h"

#include <gtest/gtest.h>

TEST(Timer, TellsHowLateEachTickCame)
{
    TurnedClock clock;
    std::vector<qint64> lateness;
    platform::Timer timer(clock, [&] { lateness.push_back(timer.lateness()); });
    timer.setInterval(1000);
    clock.advance(1500);
    clock.sleep(5000); // over five ticks, of which one is left
    clock.advance(0);
    clock.sleep(1100);
    timer.setInterval(1000);
    clock.advance(1000);
    EXPECT_EQ(lateness, (std::vector<qint64>{0, 4500, 0}));
}
