#include "platform/SystemClock.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

TEST(SystemClock, AnAlarmGoesOnInItsOwnEventLoopAndAStoppedOneIsSilentThoughDue)
{
    platform::SystemClock clock;
    int rings = 0;
    const auto nested = clock.newAlarm([&] {
        if (++rings == 1) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return rings == 3; }));
        }
    });
    nested->start(5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rings >= 3; }));
    nested->stop();

    rings = 0;
    const auto stopped = clock.newAlarm([&] { ++rings; });
    const auto stopper = clock.newAlarm([&] { stopped->stop(); });
    stopper->start(10);
    stopped->start(10);
    QTest::qSleep(20); // both are due when the event loop runs again
    QTest::qWait(30);
    EXPECT_EQ(rings, 0);
}

TEST(SystemClock, ALongAlarmComesBeforeTheTickOfAShortOneAtTheSameInstant)
{
    platform::SystemClock clock;
    for (int round = 0; round < 20; ++round) {
        int ticks = 0;
        int ticksBefore = 0;
        const auto dead = clock.newAlarm([&] { ticksBefore = ticks; });
        std::unique_ptr<platform::Alarm> polling;
        polling = clock.newAlarm([&] {
            if (++ticks == 1) {
                dead->start(300);
            }
            polling->start(30);
        });
        polling->start(30);
        ASSERT_TRUE(QTest::qWaitFor([&] { return ticksBefore > 0; }));
        EXPECT_LE(ticksBefore, 10) << round; // the eleventh tick is at the same instant
    }
}
