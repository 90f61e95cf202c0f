#include "platform/SystemMessage.h"

#include "platform/linux/ErrorCodes.h"

#include <system_error>

namespace platform {

QString systemMessage(std::uint32_t code)
{
    const std::optional<int> error = errorOf(code);
    return error ? QString::fromStdString(std::generic_category().message(*error)) : QString();
}

} // namespace platform
