#include "core/basUtilities.h"

#include "core/PercentDecoder.h"
#include "core/basNumbers.h"
#include "core/basTraps.h"
#include "platform/Failure.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr std::int32_t ScrollMaximum = 32767;

/// Nothing when a 32-bit integer cannot hold the difference.
std::optional<std::int32_t> difference(std::int32_t sum, std::int32_t subtrahend)
{
    const std::int64_t result = std::int64_t{sum} - subtrahend;
    if (result < std::numeric_limits<std::int32_t>::min() ||
        result > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(result);
}

bool isAddressPart(const QString &text)
{
    constexpr std::int32_t Largest = 255;
    const std::optional<std::int32_t> value = fnIfInteger(text);
    return value && *value >= 0 && *value <= Largest;
}

} // namespace

QString fnParseURLValue(const QString &text)
{
    if (!text.contains(u'%')) {
        return text; // most are so, and spare the decoder
    }
    PercentDecoder decoder(text);
    if (!decoder.decode()) {
        recordFailure({"Utilities", "fnParseURLValue", "None", /*byStrangers=*/true},
                      {platform::Failure::TypeMismatch,
                       u"A \"%\" is not followed by a hexadecimal number"_s});
    }
    return decoder.text();
}

bool fnIsValidIP(const QString &text)
{
    constexpr int Dots = 3;
    qsizetype start = 0;
    for (int dot = 0; dot < Dots; ++dot) {
        const qsizetype end = text.indexOf(u'.', start);
        if (end < 0 || !isAddressPart(text.mid(start, end - start))) {
            return false;
        }
        start = end + 1;
    }
    return isAddressPart(text.mid(start));
}

QString fnScrollToText(std::int32_t position)
{
    return fnScrollToTextSum(position, ScrollMaximum);
}

std::int32_t fnTextToScroll(const QString &text)
{
    return fnTextToScrollSum(text, ScrollMaximum);
}

QString fnScrollToTextSum(std::int32_t position, std::int32_t sum)
{
    const std::optional<std::int32_t> number = difference(sum, position);
    return number ? QString::number(*number) : QString();
}

std::int32_t fnTextToScrollSum(const QString &text, std::int32_t sum)
{
    const std::optional<std::int32_t> number = fnIfInteger(text);
    return number ? difference(sum, *number).value_or(0) : 0;
}
