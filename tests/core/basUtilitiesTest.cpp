#include "core/basUtilities.h"

#include "core/basVersion.h"
#include "core/config.h"
#include "platform/CodePage.h"
#include "support/RootTest.h"

using basUtilitiesTest = ServicesTest;

TEST_F(basUtilitiesTest, AddressesAndScrollBarsReadNumbersGenerously)
{
    for (const auto address : {"192.168.0.1"_L1, "1.2.3.255.4"_L1, " 1.+2.3.4e0"_L1}) {
        EXPECT_TRUE(fnIsValidIP(address)) << address.data();
    }
    for (const auto address : {""_L1, "192.168.0"_L1, "256.1.1.1"_L1, "1.2..4"_L1, "a.2.3.4"_L1,
                               "1.2.3.255.6"_L1, "1.2.3.1e99"_L1}) {
        EXPECT_FALSE(fnIsValidIP(address)) << address.data();
    }
    EXPECT_EQ(fnVersionLine(), QString::asprintf("Zebek Suite v%d.%02d.%03d", config::VersionMajor,
                                                 config::VersionMinor, config::VersionRevision));
    EXPECT_EQ(fnScrollToText(-2147483647), QString());
    EXPECT_EQ(fnTextToScroll(u"2.5"_s), 32765);
    EXPECT_EQ(fnTextToScrollSum(u"-2147483648"_s, 64), 0);
}

TEST(CodePage, IsThatOfWindowsWithAQuestionMarkForTheRest)
{
    EXPECT_EQ(platform::fromCodePage(QByteArray("\x80\x9F\xFC")), u"€Ÿü"_s);
    EXPECT_EQ(platform::toCodePage(u"ł😀\u0085ü"_s), QByteArray("??\x85\xFC"));
}
