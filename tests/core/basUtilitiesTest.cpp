#include "core/basUtilities.h"

#include "core/basVersion.h"
#include "core/config.h"
#include "platform/CodePage.h"
#include "support/RootTest.h"

using basUtilitiesTest = ServicesTest;

TEST_F(basUtilitiesTest, PercentEscapesAreDecodedAllAtOnceAndAgain)
{
    root->Start();
    // Text and what it decodes to, by turns.
    const QStringList cases =
        u"a%20b%20c|a b c|%41%61|Aa|%2541|A|a+b|a+b|%fc%FC%80|üü€|%252525|%|x%0|x\0|"
        "%3%341|%3%341|||50%|50%|50%z|50%z|%41%zz%41%42|A%zzA%42|%34%25%341|4A|%4 1%41|%4 1%41"_s
            .split(u'|');
    int failures = 0;
    for (qsizetype index = 0; index < cases.size(); index += 2) {
        const QString &decoded = cases.at(index + 1);
        EXPECT_EQ(fnParseURLValue(cases.at(index)), decoded);
        failures += decoded.contains(u'%') ? 1 : 0;
        EXPECT_EQ(recordCount(), failures);
    }
    EXPECT_EQ(lastRecord().section(u'|', 0, 2), u"Utilities|fnParseURLValue|None"_s);
}

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
