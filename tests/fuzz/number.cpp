#include "core/basNumbers.h"
#include "platform/Failure.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

/// The number as the C++ library reads it, which takes no sign "+", no blanks, and words.
static bool readByLibrary(std::string_view text, double &value)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    text = text.substr(0, text.find_last_not_of(" \t") + 1);
    if (text.starts_with("+")) {
        text.remove_prefix(1);
        if (text.starts_with("-")) {
            return false;
        }
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error != std::errc::invalid_argument && end == text.data() + text.size() &&
           text.find_first_not_of("+-.0123456789eE") == std::string_view::npos;
}

/// Why it is refused.
static bool isOverflow(const QString &text)
{
    try {
        fnToInteger(text);
        return false;
    } catch (const platform::Failure &failure) {
        return failure.number() == platform::Failure::Overflow;
    }
}

/// Texts of any content: they are numbers where the library says so, and of the same value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const QString text = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(size));
    constexpr double None = std::numeric_limits<double>::quiet_NaN();
    double value = None; // and so stays one that is too large or small for it
    const bool isNumber = readByLibrary(bytes, value);
    const double rounded = std::nearbyint(value);
    const bool fits = isNumber && rounded >= std::numeric_limits<std::int32_t>::min() &&
                      rounded <= std::numeric_limits<std::int32_t>::max();
    const std::optional<std::int32_t> integer = fnIfInteger(text);
    const bool isRight = isNumber && std::isnan(value)
                             ? integer.value_or(0) == 0
                             : integer.has_value() == fits && (!fits || *integer == rounded);
    if (!isRight || fnIsNumeric(text) != isNumber || (!integer && isOverflow(text) != isNumber)) {
        std::abort();
    }
    if (integer && fnToInteger(fnToText(*integer)) != *integer) {
        std::abort();
    }
    return 0;
}
