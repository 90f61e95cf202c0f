#include "platform/SystemClock.h"

#include <QtTest/QtTest>

#include <gtest/gtest.h>

TEST(SystemClock, AnAlarmThatIsSetAnewWhileItIsDueRingsNoSooner)
{
    platform::SystemClock clock;
    int early = 0;
    const auto second = clock.newAlarm([&] { ++early; });
    const auto first = clock.newAlarm([&] { second->start(60000); });
    first->start(1);
    second->start(1);
    QTest::qSleep(10); // until both are due
    QTest::qWait(10);
    EXPECT_EQ(early, 0);
}
