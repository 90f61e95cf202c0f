#include "platform/linux/SystemFailure.h"

#include <system_error>

namespace platform {

Failure systemFailure(int error, const QString &what)
{
    return {error, QStringLiteral("%1: %2").arg(
                       what, QString::fromStdString(std::generic_category().message(error)))};
}

} // namespace platform
