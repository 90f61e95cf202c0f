#include "platform/CommandLine.h"

#include <gtest/gtest.h>

TEST(splitCommandLine, FollowsWindowsRules)
{
    const std::pair<const char *, QList<const char *>> cases[] = {
        {R"("/games/Ghost Recon/GhostRecon.exe" -autoserve )",
         {"/games/Ghost Recon/GhostRecon.exe", "-autoserve"}},
        {R"("p" -a  "b c"	d)", {"p", "-a", "b c", "d"}},
        {R"(p "a b""c d")", {"p", "a b\"c d"}},
        {R"(p "a""b c" d)", {"p", "a\"b c", "d"}},
        {R"(p "" x"y z"w)", {"p", "", "xy zw"}},
        {R"(p a\\b d"e f"g h)", {"p", "a\\\\b", "de fg", "h"}},
        {R"(p a\\\"b c d)", {"p", "a\\\"b", "c", "d"}},
        {R"(p a\\\\"b c" d e)", {"p", "a\\\\b c", "d", "e"}},
        {R"(p C:\dir\ x)", {"p", "C:\\dir\\", "x"}},
        {R"(p "unclosed arg)", {"p", "unclosed arg"}},
        {R"("C:\a\"p x)", {"C:\\a\\p", "x"}},
        {"", {""}}};
    for (const auto &[line, words] : cases) {
        QStringList expected;
        for (const char *word : words) {
            expected.append(QString::fromLatin1(word));
        }
        EXPECT_EQ(platform::splitCommandLine(QString::fromLatin1(line)), expected) << line;
    }
}
