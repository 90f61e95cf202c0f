#include "core/basNumbers.h"

#include "platform/Failure.h"

#include <gtest/gtest.h>

static int failureOf(const char *text)
{
    try {
        fnToInteger(QString::fromLatin1(text));
    } catch (const platform::Failure &failure) {
        return failure.number();
    }
    return 0;
}

TEST(basNumbers, IntegersAreRoundedHalfToEvenWithinTheirRange)
{
    // clang-format off
    const std::pair<const char *, int> cases[] = {
        {"0", 0}, {" 42 ", 42}, {"-7", -7}, {"+3", 3}, {"0.5", 0}, {"1.5", 2}, {"2.5", 2},
        {"-2.5", -2}, {"3.", 3}, {".6", 1}, {"1e3", 1000}, {"12.5E-1", 1}, {"007", 7},
        {"2147483647.4", 2147483647}, {"-2147483648.5", -2147483647 - 1}};
    // clang-format on
    for (const auto &[text, value] : cases) {
        EXPECT_EQ(fnToInteger(QString::fromLatin1(text)), value) << text;
    }
}

TEST(basNumbers, WhatIsNoNumberIsRefused)
{
    for (const char *text : {"", " ", "abc", "1 2", "1,5", "inf", "nan", "0x10", "1e", "e5", ".",
                             "--1", "12a", "1e5.0", "\xBD"}) {
        EXPECT_FALSE(fnIsNumeric(QString::fromLatin1(text))) << text;
        EXPECT_EQ(failureOf(text), platform::Failure::TypeMismatch) << text;
    }
    for (const char *text : {"2147483647.5", "1e10", "-1e400", "1e999999999"}) {
        EXPECT_TRUE(fnIsNumeric(QString::fromLatin1(text))) << text;
        EXPECT_EQ(failureOf(text), platform::Failure::Overflow) << text;
    }
}
