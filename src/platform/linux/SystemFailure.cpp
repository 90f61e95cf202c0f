#include "platform/linux/SystemFailure.h"

#include <system_error>

using namespace Qt::StringLiterals;

namespace platform {

Failure systemFailure(int error, const QString &what)
{
    return {error,
            u"%1: %2"_s.arg(what, QString::fromStdString(std::generic_category().message(error)))};
}

} // namespace platform
