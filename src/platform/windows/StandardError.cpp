#include "platform/StandardError.h"

#include <cstdio>

namespace platform {

/// A program with windows has none unless it is given one.
void tellOnStandardError(const QString &text)
{
    static_cast<void>(std::fputs((text.toLocal8Bit() + '\n').constData(), stderr));
}

} // namespace platform
