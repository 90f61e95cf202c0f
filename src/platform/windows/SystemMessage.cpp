#include "platform/SystemMessage.h"

#include "platform/windows/Ansi.h"

#include <windows.h>

#include <array>

namespace platform {

QString systemMessage(std::uint32_t code)
{
    std::array<char, 4096> text{};
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       text.data(), static_cast<DWORD>(text.size()), nullptr);
    return fromAnsi(text.data(), static_cast<qsizetype>(length));
}

} // namespace platform
