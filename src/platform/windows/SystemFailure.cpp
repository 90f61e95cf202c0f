#include "platform/windows/SystemFailure.h"

#include "platform/SystemMessage.h"

#include <windows.h>

namespace platform {

Failure lastFailure(const QString &what)
{
    const DWORD code = GetLastError();
    return {static_cast<int>(code),
            QStringLiteral("%1: %2").arg(what, systemMessage(code).trimmed())};
}

} // namespace platform
