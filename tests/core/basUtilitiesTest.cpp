#include "core/basUtilities.h"

#include "platform/CodePage.h"
#include "support/ToolTest.h"

#include <QElapsedTimer>

using basUtilitiesTest = ToolTest;

TEST_F(basUtilitiesTest, PercentEscapesAreDecodedAllAtOnceAndAgain)
{
    root->Start();
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u"a%20b%20c", u"a b c"},
        {u"%41%61", u"Aa"},
        {u"%2541", u"A"},
        {u"a+b", u"a+b"},
        {u"%fc%FC%80", u"üü€"},
        {u"%252525", u"%"},
        {u"x%4", u"x\u0004"},
        {u"%3%341", u"%3%341"},
        {u"", u""},
        {u"50%", u"50%"},
        {u"%41%zz%41%42", u"A%zzA%42"},
        {u"%34%25%341", u"4A"},
        {u"%4 1%41", u"%4 1%41"},
    };
    int failures = 0;
    for (const auto &[text, decoded] : cases) {
        EXPECT_EQ(fnParseURLValue(QString::fromUtf16(text)), QString::fromUtf16(decoded));
        failures += QString::fromUtf16(decoded).contains(u'%') ? 1 : 0;
        EXPECT_EQ(recordCount(), failures);
    }
    EXPECT_EQ(lastRecord().module, QStringLiteral("Utilities"));
    EXPECT_EQ(lastRecord().routine, QStringLiteral("fnParseURLValue"));
    EXPECT_EQ(lastRecord().id, QStringLiteral("None"));
}

TEST_F(basUtilitiesTest, DecodingIsLinearInTheLengthOfTheText)
{
    root->Start();
    const auto milliseconds = [](qsizetype repeats) {
        const QString chain = u'%' + QStringLiteral("25").repeated(repeats);
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(fnParseURLValue(chain), QStringLiteral("%"));
        return timer.nsecsElapsed() / 1e6;
    };
    milliseconds(1000);
    // Replacing literally would take 400 times as long, and minutes.
    EXPECT_LT(milliseconds(1000000), 100 * (milliseconds(50000) + 1));
}

TEST_F(basUtilitiesTest, AddressesAndScrollBarsReadNumbersGenerously)
{
    for (const char *address :
         {"192.168.0.1", "0.0.0.255", "1.2.3.4.5", "1.2.3.4 ", " 1.+2.3.4e0", "1.2.3.255.4"}) {
        EXPECT_TRUE(fnIsValidIP(QString::fromLatin1(address))) << address;
    }
    for (const char *address : {"", "192.168.0", "256.1.1.1", "1.2.3.", "1.2..4", "a.2.3.4",
                                "-1.2.3.4", "1.2.3.255.6", "1.2.3.4.5.6", "1.2.3.1e99"}) {
        EXPECT_FALSE(fnIsValidIP(QString::fromLatin1(address))) << address;
    }
    EXPECT_EQ(fnScrollToText(0), QStringLiteral("32767"));
    EXPECT_EQ(fnScrollToText(-2147483647), QString());
    EXPECT_EQ(fnTextToScroll(QStringLiteral("32767")), 0);
    EXPECT_EQ(fnTextToScroll(QStringLiteral("2.5")), 32765);
    EXPECT_EQ(fnTextToScroll(QStringLiteral("abc")), 0);
    EXPECT_EQ(fnScrollToTextSum(4, 64), QStringLiteral("60"));
    EXPECT_EQ(fnTextToScrollSum(QStringLiteral("60"), 64), 4);
    EXPECT_EQ(fnTextToScrollSum(QStringLiteral("-2147483648"), 64), 0);
}

TEST(CodePage, EveryByteComesBack)
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    EXPECT_EQ(platform::toCodePage(platform::fromCodePage(all)), all);
    EXPECT_EQ(platform::fromCodePage(QByteArray("\x80\x9F\xFC")), QStringLiteral("€Ÿü"));
    EXPECT_EQ(platform::toCodePage(QStringLiteral("ł😀\u0085ü")), QByteArray("??\x85\xFC"));
}
