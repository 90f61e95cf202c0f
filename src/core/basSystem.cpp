#include "core/basSystem.h"

#include "core/basTraps.h"
#include "platform/SystemMessage.h"

namespace {

constexpr int MaximumLength = 4096;

} // namespace

QString FormatAPIResultMessage(std::uint32_t code)
{
    return Trap({"System Module", "FormatAPIResultMessage", "None"},
                [code] { return platform::systemMessage(code).left(MaximumLength); });
}
