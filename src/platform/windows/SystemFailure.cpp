#include "platform/windows/SystemFailure.h"

#include "platform/SystemServices.h"

#include <windows.h>

using namespace Qt::StringLiterals;

namespace platform {

Failure systemFailure(std::uint32_t code, const QString &what)
{
    return {static_cast<int>(code), u"%1: %2"_s.arg(what, systemMessage(code).trimmed())};
}

Failure lastFailure(const QString &what)
{
    return systemFailure(GetLastError(), what);
}

} // namespace platform
