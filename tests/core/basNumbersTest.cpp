#include "core/basNumbers.h"

#include "platform/Failure.h"

#include <gtest/gtest.h>

using platform::Failure;

TEST(basNumbers, IntegersAreRoundedHalfToEvenAndWhatIsNoneIsRefused)
{
    struct Row
    {
        const char *text;
        int value;
        int failure = 0;
    };
    // clang-format off
    std::vector<Row> rows{
        {"0", 0}, {" 42 ", 42}, {"-7", -7}, {"+3", 3}, {"0.5", 0}, {"1.5", 2}, {"2.5", 2},
        {"-2.5", -2}, {"3.", 3}, {".6", 1}, {"1e3", 1000}, {"12.5E-1", 1}, {"007", 7},
        {"2147483647.4", 2147483647}, {"-2147483648.5", -2147483647 - 1}};
    // clang-format on
    for (const char *text : {"2147483647.5", "-2147483648.6", "1e10", "-1e400", "1e999999999"}) {
        rows.push_back({text, 0, Failure::Overflow});
    }
    for (const char *text : {"", " ", "abc", "1 2", "1,5", "inf", "nan", "0x10", "1e", "e5", ".",
                             "--1", "12a", "1e5.0", "\xBD"}) {
        rows.push_back({text, 0, Failure::TypeMismatch});
    }
    for (const auto &[text, value, failure] : rows) {
        const QString read = QString::fromLatin1(text);
        EXPECT_EQ(fnIsNumeric(read), failure != Failure::TypeMismatch) << text;
        try {
            EXPECT_EQ(fnToInteger(read), value) << text;
            EXPECT_EQ(failure, 0) << text;
        } catch (const Failure &thrown) {
            EXPECT_EQ(thrown.number(), failure) << text;
        }
    }
}
