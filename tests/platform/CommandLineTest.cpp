#include "platform/CommandLine.h"

#include <gtest/gtest.h>

TEST(splitCommandLine, FollowsWindowsRules)
{
    const std::pair<const char *, const char *> cases[] = {
        {R"("/games/Ghost Recon/GhostRecon.exe" -x )", "/games/Ghost Recon/GhostRecon.exe|-x"},
        {R"("p" -a  "b c"	d)", "p|-a|b c|d"},
        {R"(p "a b""c d")", R"(p|a b"c d)"},
        {R"(p "a""b c" d)", R"(p|a"b c|d)"},
        {R"(p "" x"y z"w)", "p||xy zw"},
        {R"(p a\\b d"e f"g h)", R"(p|a\\b|de fg|h)"},
        {R"(p a\\\"b c d)", R"(p|a\"b|c|d)"},
        {R"(p a\\\\"b c" d e)", R"(p|a\\b c|d|e)"},
        {R"(p C:\dir\ x)", R"(p|C:\dir\|x)"},
        {R"(p "unclosed arg)", "p|unclosed arg"},
        {R"("C:\a\"p x)", R"(C:\a\p|x)"},
        {"", ""}};
    for (const auto &[line, words] : cases) {
        EXPECT_EQ(platform::splitCommandLine(QString::fromLatin1(line)),
                  QString::fromLatin1(words).split(u'|'))
            << line;
    }
}
